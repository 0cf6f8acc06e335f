// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "TestFiles.h"
#include "UtilLog.h"
#include "WindowTest.h"

#include <QRegularExpression>
#include <QtTest>

#include <memory>

namespace {

const QString c_strLogFolder = u"/opt/vora/vora-printer-k507/tool"_s;

/// The log's lines as "function: message", without time and source position, which must be the main window's.
QStringList TakeLog()
{
    static const QRegularExpression c_prefix(
        u"^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] "
        "\\(\\.\\./VoraPrinterTool/voraprintertoolwidget\\.cpp@[1-9]\\d* (\\w+)\\) "_s);
    QStringList listLine;
    QDir folder(c_strLogFolder);
    for (const QString& strName : folder.entryList({u"log_tool_*.log"_s})) {
        listLine += QString::fromUtf8(ReadFile(folder.filePath(strName))).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        folder.remove(strName);
    }
    for (QString& strLine : listLine) {
        strLine.replace(c_prefix, u"\\1: "_s);
    }
    return listLine;
}

} // namespace

class tst_DiagnosticDump : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        SetLogEnable(true);
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
        m_pWindow->m_iStatusThreadCount = 10; // the list reports of these tests make no workers
    }

    void cleanup()
    {
        SetLogEnable(false);
        m_pWindow.reset();
    }

    void constructionSwitchesTheLogOff()
    {
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QStringList());
    }

    void initLogSwitchesTheLogOff()
    {
        SetLogEnable(true);
        m_pWindow->InitLog();
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QStringList());
    }

    void initialisationStepsLogTheirStartAndEnd()
    {
        SetLogEnable(true);
        m_pWindow->InitDeviceTable();
        QCOMPARE(TakeLog(),
                 QStringList({u"InitDeviceTable: InitDeviceTable start"_s, u"InitDeviceTable: InitDeviceTable end"_s}));
        m_pWindow->InitTrayIcon();
        QCOMPARE(TakeLog(), QStringList({u"InitTrayIcon: InitTrayIcon start"_s, u"InitTrayIcon: InitTrayIcon end"_s}));
    }

    void initThreadLogsItsStartAndEnd()
    {
        // A second worker takes the place of the first, which the window then no longer knows.
        const std::unique_ptr<QThread> pThread(m_pWindow->m_pManageThread);
        const std::unique_ptr<TrdDeviceManage> pWorker(m_pWindow->m_pTrdDeviceManage);
        SetLogEnable(true);
        m_pWindow->InitThread();
        QCOMPARE(TakeLog(), QStringList({u"InitThread: InitThread start"_s, u"InitThread: InitThread end"_s}));
    }

    void emptyListGivesOneLine()
    {
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QStringList(u"DebugOutputPrinterInfo: printer number=0"_s));
    }

    void twoPrintersGiveSevenLines()
    {
        stPrinterManager unknown = MakePrinter(u"二楼 %s%n"_s, 0, u"%d"_s);
        unknown.printerInfo.enType = u"-1"_s;
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s, 1, u"192.168.1.20"_s), unknown});
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QStringList({u"DebugOutputPrinterInfo: printer number=2"_s,
                                         u"DebugOutputPrinterInfo: printer[0] Office=192.168.1.20"_s,
                                         u"DebugOutputPrinterInfo: Office: enType=RA7QX"_s,
                                         u"DebugOutputPrinterInfo: Office: iConnectType=1"_s,
                                         u"DebugOutputPrinterInfo: printer[1] 二楼 %s%n=%d"_s,
                                         u"DebugOutputPrinterInfo: 二楼 %s%n: enType=-1"_s,
                                         u"DebugOutputPrinterInfo: 二楼 %s%n: iConnectType=0"_s}));
    }

    void listReportDumpsTheList()
    {
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s, 7)});
        SetLogEnable(true);
        m_pWindow->SlotUpdatePrinterList();
        QCOMPARE(TakeLog(), QStringList({u"DebugOutputPrinterInfo: printer number=1"_s,
                                         u"DebugOutputPrinterInfo: printer[0] Office="_s,
                                         u"DebugOutputPrinterInfo: Office: enType=RA7QX"_s,
                                         u"DebugOutputPrinterInfo: Office: iConnectType=7"_s}));
    }

    void freshStateDumpsItsDefaults()
    {
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s)});
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterStatus(0);
        QCOMPARE(TakeLog(), QStringList({u"DebugOutputPrinterStatus: printer[0]=Office"_s,
                                         u"DebugOutputPrinterStatus: Office: strPrinterSerialNumber="_s,
                                         u"DebugOutputPrinterStatus: Office: enCurrentStatus=2"_s,
                                         u"DebugOutputPrinterStatus: Office: strFWVersion="_s,
                                         u"DebugOutputPrinterStatus: Office: strVenderName="_s,
                                         u"DebugOutputPrinterStatus: Office: strProductName="_s,
                                         u"DebugOutputPrinterStatus: Office: iNumberOfError=0"_s,
                                         u"DebugOutputPrinterStatus: Office: iNumberOfWarning=0"_s,
                                         u"DebugOutputPrinterStatus: Office: error code="_s,
                                         u"DebugOutputPrinterStatus: Office: warning code="_s,
                                         u"DebugOutputPrinterStatus: Office: strSupplySerialNumber="_s,
                                         u"DebugOutputPrinterStatus: Office: enSpplyType=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwRemainingToner=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwWasteToner=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwBlackInkRemainer=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwBlueInkRemainer=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwRedInkRemainer=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwYellowInkRemainer=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwOPCRotation=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwNumberOfPages=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwNumberOfPrint=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwPrintDotsCount=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwPrinterNumOfPages=0"_s,
                                         u"DebugOutputPrinterStatus: Office: dwPrinterNumOfPrint=0"_s}));
    }

    void everyFieldOfAStateHasItsLine()
    {
        stPrinterManager printer = MakePrinter(u"%n楼"_s);
        printer.printerState = {u"SN%s1"_s,
                                8,
                                u"FW%n2"_s,
                                u"厂商"_s,
                                u"P%d4"_s,
                                {enErrorCyanInkEmpty, enErrorMagentaInkEmpty},
                                {enErrorBlackInkLow, enErrorUnknown, enErrorNetwork},
                                u"SUP%%5"_s,
                                6,
                                11,
                                12,
                                13,
                                14,
                                15,
                                16,
                                17,
                                18,
                                19,
                                4294967296UL,
                                21,
                                18446744073709551615UL,
                                9};
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s), printer});
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterStatus(1);
        QCOMPARE(TakeLog(),
                 QStringList({u"DebugOutputPrinterStatus: printer[1]=%n楼"_s,
                              u"DebugOutputPrinterStatus: %n楼: strPrinterSerialNumber=SN%s1"_s,
                              u"DebugOutputPrinterStatus: %n楼: enCurrentStatus=8"_s,
                              u"DebugOutputPrinterStatus: %n楼: strFWVersion=FW%n2"_s,
                              u"DebugOutputPrinterStatus: %n楼: strVenderName=厂商"_s,
                              u"DebugOutputPrinterStatus: %n楼: strProductName=P%d4"_s,
                              u"DebugOutputPrinterStatus: %n楼: iNumberOfError=2"_s,
                              u"DebugOutputPrinterStatus: %n楼: iNumberOfWarning=3"_s,
                              u"DebugOutputPrinterStatus: %n楼: error code=35,36,"_s,
                              u"DebugOutputPrinterStatus: %n楼: warning code=25,0,45,"_s,
                              u"DebugOutputPrinterStatus: %n楼: strSupplySerialNumber=SUP%%5"_s,
                              u"DebugOutputPrinterStatus: %n楼: enSpplyType=6"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwRemainingToner=11"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwWasteToner=12"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwBlackInkRemainer=13"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwBlueInkRemainer=14"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwRedInkRemainer=15"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwYellowInkRemainer=16"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwOPCRotation=17"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwNumberOfPages=18"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwNumberOfPrint=19"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwPrintDotsCount=4294967296"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwPrinterNumOfPages=21"_s,
                              u"DebugOutputPrinterStatus: %n楼: dwPrinterNumOfPrint=18446744073709551615"_s}));
    }

    void zeroInANameKeepsTheFields()
    {
        const QString strName = u"a"_s + QChar(0) + u"b\nc"_s;
        stPrinterManager printer = MakePrinter(strName, 2, strName);
        printer.printerInfo.enType = strName;
        printer.printerState.strFWVersion = strName;
        SetPrinterList(*m_pWindow, {printer});
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterInfo();
        QCOMPARE(TakeLog(), QStringList({u"DebugOutputPrinterInfo: printer number=1"_s,
                                         u"DebugOutputPrinterInfo: printer[0] a\\x00b\\x0Ac=a\\x00b\\x0Ac"_s,
                                         u"DebugOutputPrinterInfo: a\\x00b\\x0Ac: enType=a\\x00b\\x0Ac"_s,
                                         u"DebugOutputPrinterInfo: a\\x00b\\x0Ac: iConnectType=2"_s}));
        m_pWindow->DebugOutputPrinterStatus(0);
        const QStringList listLine = TakeLog();
        QCOMPARE(listLine.size(), 11 + GoldenNumberKeys().size());
        QCOMPARE(listLine.at(0), u"DebugOutputPrinterStatus: printer[0]=a\\x00b\\x0Ac"_s);
        QCOMPARE(listLine.at(3), u"DebugOutputPrinterStatus: a\\x00b\\x0Ac: strFWVersion=a\\x00b\\x0Ac"_s);
    }

    void statusReportDumpsTheRow()
    {
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s), MakePrinter(u"Home"_s)});
        m_pWindow->SlotUpdatePrinterList();
        SetLogEnable(true);
        m_pWindow->SlotUpdatePrinterStatus(1);
        const QStringList listLine = TakeLog();
        QCOMPARE(listLine.size(), 11 + GoldenNumberKeys().size());
        QCOMPARE(listLine.first(), u"DebugOutputPrinterStatus: printer[1]=Home"_s);
    }

    void rowOutsideTheListDumpsNothing_data()
    {
        QTest::addColumn<int>("row");
        QTest::newRow("negative") << -1;
        QTest::newRow("one beyond") << 1;
        QTest::newRow("far beyond") << 2147483647;
    }

    void rowOutsideTheListDumpsNothing()
    {
        QFETCH(int, row);
        SetPrinterList(*m_pWindow, {MakePrinter(u"Office"_s)});
        m_pWindow->SlotUpdatePrinterList();
        SetLogEnable(true);
        m_pWindow->DebugOutputPrinterStatus(row);
        m_pWindow->SlotUpdatePrinterStatus(row);
        QCOMPARE(TakeLog(), QStringList());
    }

private:
    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

QTEST_MAIN(tst_DiagnosticDump)

#include "tst_DiagnosticDump.moc"
