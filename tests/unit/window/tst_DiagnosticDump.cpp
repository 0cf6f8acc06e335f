// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFolder.h"
#include "UtilLog.h"
#include "WindowTest.h"

#include <QRegularExpression>
#include <QtTest>

namespace {

/// The log as lines "function: message", without time and source position, which must be the main window's.
QString TakeLog()
{
    static const QRegularExpression c_prefix(
        u"^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] "
        "\\(\\.\\./VoraPrinterTool/voraprintertoolwidget\\.cpp@[1-9]\\d* (\\w+)\\) "_s,
        QRegularExpression::MultilineOption);
    const QString strLog = QString::fromUtf8(LogText()).replace(c_prefix, u"\\1: "_s);
    QDir(ToolPath()).removeRecursively();
    return strLog;
}

} // namespace

class tst_DiagnosticDump : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        SetLogEnable(true);
        MakeWindow();
        m_pWindow->m_iStatusThreadCount = 10; // the list reports of these tests make no workers
    }

    void cleanup()
    {
        SetLogEnable(false);
        m_pWindow.reset();
    }

    void logIsSwitchedOff()
    {
        m_pWindow->DebugOutputPrinterInfo(); // by the constructor
        SetLogEnable(true);
        m_pWindow->InitLog();
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QString());
    }

    void startUpStepsLogTheirStartAndEnd()
    {
        // A second worker takes the place of the first, which the window then no longer knows.
        const std::unique_ptr<QThread> pThread(m_pWindow->m_pManageThread);
        const std::unique_ptr<TrdDeviceManage> pWorker(m_pWindow->m_pTrdDeviceManage);
        SetLogEnable(true);
        m_pWindow->InitDeviceTable();
        m_pWindow->InitTrayIcon();
        m_pWindow->InitThread();
        QCOMPARE(TakeLog(), u"InitDeviceTable: InitDeviceTable start\nInitDeviceTable: InitDeviceTable end\n"
                            "InitTrayIcon: InitTrayIcon start\nInitTrayIcon: InitTrayIcon end\n"
                            "InitThread: InitThread start\nInitThread: InitThread end\n"_s);
    }

    /// An empty list, then a list of a printer that was never reached, one with a value in every field, formats among
    /// them, and one with controls, of which a zero must not end the line; the states of all.
    void reportsDumpWhatTheyShow()
    {
        stPrinterManager filled = MakePrinter(u"二楼 %s%n"_s, 0, u"%d"_s);
        filled.printerInfo.enType = u"-1"_s;
        const QList<enErrorStatus> listError = {enErrorCyanInkEmpty, enErrorMagentaInkEmpty};
        const QList<enErrorStatus> listWarning = {enErrorBlackInkLow, enErrorUnknown, enErrorNetwork};
        constexpr unsigned long dwBig = 4294967296UL;
        constexpr unsigned long dwBiggest = 18446744073709551615UL;
        filled.printerState = {u"SN%s1"_s, 8,  u"FW%n2"_s, u"厂商"_s, u"P%d4"_s, listError, listWarning, u"SUP%%5"_s,
                               6,          11, 12,         13,        14,        15,        16,          17,
                               18,         19, dwBig,      21,        dwBiggest, 9};
        const QString strControls = u"a"_s + QChar(0) + u"b\nc"_s;
        stPrinterManager controls = MakePrinter(strControls, 2, strControls);
        controls.printerInfo.enType = strControls;
        controls.printerState.strFWVersion = strControls;
        SetLogEnable(true);
        m_pWindow->SlotUpdatePrinterList();
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s, 1, u"192.168.1.20"_s), filled, controls});
        m_pWindow->SlotUpdatePrinterList();
        for (const int iRow : {-1, 0, 1, 2, 3, 2147483647}) {
            m_pWindow->SlotUpdatePrinterStatus(iRow); // nothing for a row outside the list
        }
        QCOMPARE(TakeLog().split(QLatin1Char('\n')),
                 QString::fromUtf8(ReadFile(QStringLiteral(VORA_DUMP))).split(QLatin1Char('\n')));
        for (const int iRow : {-1, 3, 2147483647}) {
            m_pWindow->DebugOutputPrinterStatus(iRow);
        }
        QCOMPARE(TakeLog(), QString());
    }
};

QTEST_MAIN(tst_DiagnosticDump)

#include "tst_DiagnosticDump.moc"
