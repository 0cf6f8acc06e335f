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

const QString c_strLogFolder = QStringLiteral("/opt/vora/vora-printer-k507/tool");

/// The log's lines as "function: message", without time and source position, which must be the main window's.
QStringList TakeLog()
{
    static const QRegularExpression c_prefix(
        QStringLiteral("^\\[\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\] "
                       "\\(\\.\\./VoraPrinterTool/voraprintertoolwidget\\.cpp@[1-9]\\d* (\\w+)\\) "));
    QStringList listLine;
    QDir folder(c_strLogFolder);
    for (const QString& strName : folder.entryList({QStringLiteral("log_tool_*.log")})) {
        listLine += QString::fromUtf8(ReadFile(folder.filePath(strName))).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        folder.remove(strName);
    }
    for (QString& strLine : listLine) {
        strLine.replace(c_prefix, QStringLiteral("\\1: "));
    }
    return listLine;
}

} // namespace

class tst_DiagnosticDump : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void constructionSwitchesTheLogOff();
    void initLogSwitchesTheLogOff();
    void initialisationStepsLogTheirStartAndEnd();
    void initThreadLogsItsStartAndEnd();
    void emptyListGivesOneLine();
    void twoPrintersGiveSevenLines();
    void listReportDumpsTheList();
    void freshStateDumpsItsDefaults();
    void everyFieldOfAStateHasItsLine();
    void zeroInANameKeepsTheFields();
    void statusReportDumpsTheRow();
    void rowOutsideTheListDumpsNothing_data();
    void rowOutsideTheListDumpsNothing();

private:
    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

void tst_DiagnosticDump::init()
{
    QDir(QStringLiteral("/opt/vora")).removeRecursively();
    SetLogEnable(true);
    m_pWindow = std::make_unique<VoraPrinterToolWidget>();
    StopListWorker(*m_pWindow);
    m_pWindow->m_iStatusThreadCount = 10; // the list reports of these tests make no workers
}

void tst_DiagnosticDump::cleanup()
{
    SetLogEnable(false);
    m_pWindow.reset();
}

void tst_DiagnosticDump::constructionSwitchesTheLogOff()
{
    m_pWindow->DebugOutputPrinterInfo();
    QCOMPARE(TakeLog(), QStringList());
}

void tst_DiagnosticDump::initLogSwitchesTheLogOff()
{
    SetLogEnable(true);
    m_pWindow->InitLog();
    m_pWindow->DebugOutputPrinterInfo();
    QCOMPARE(TakeLog(), QStringList());
}

void tst_DiagnosticDump::initialisationStepsLogTheirStartAndEnd()
{
    SetLogEnable(true);
    m_pWindow->InitDeviceTable();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("InitDeviceTable: InitDeviceTable start"),
                                     QStringLiteral("InitDeviceTable: InitDeviceTable end")}));
    m_pWindow->InitTrayIcon();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("InitTrayIcon: InitTrayIcon start"),
                                     QStringLiteral("InitTrayIcon: InitTrayIcon end")}));
}

void tst_DiagnosticDump::initThreadLogsItsStartAndEnd()
{
    // A second worker takes the place of the first, which the window then no longer knows.
    const std::unique_ptr<QThread> pThread(m_pWindow->m_pManageThread);
    const std::unique_ptr<TrdDeviceManage> pWorker(m_pWindow->m_pTrdDeviceManage);
    SetLogEnable(true);
    m_pWindow->InitThread();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("InitThread: InitThread start"),
                                     QStringLiteral("InitThread: InitThread end")}));
}

void tst_DiagnosticDump::emptyListGivesOneLine()
{
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterInfo();
    QCOMPARE(TakeLog(), QStringList(QStringLiteral("DebugOutputPrinterInfo: printer number=0")));
}

void tst_DiagnosticDump::twoPrintersGiveSevenLines()
{
    stPrinterManager unknown = MakePrinter(QStringLiteral("二楼 %s%n"), 0, QStringLiteral("%d"));
    unknown.printerInfo.enType = QStringLiteral("-1");
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office"), 1, QStringLiteral("192.168.1.20")), unknown});
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterInfo();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("DebugOutputPrinterInfo: printer number=2"),
                                     QStringLiteral("DebugOutputPrinterInfo: printer[0] Office=192.168.1.20"),
                                     QStringLiteral("DebugOutputPrinterInfo: Office: enType=RA7QX"),
                                     QStringLiteral("DebugOutputPrinterInfo: Office: iConnectType=1"),
                                     QStringLiteral("DebugOutputPrinterInfo: printer[1] 二楼 %s%n=%d"),
                                     QStringLiteral("DebugOutputPrinterInfo: 二楼 %s%n: enType=-1"),
                                     QStringLiteral("DebugOutputPrinterInfo: 二楼 %s%n: iConnectType=0")}));
}

void tst_DiagnosticDump::listReportDumpsTheList()
{
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office"), 7)});
    SetLogEnable(true);
    m_pWindow->SlotUpdatePrinterList();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("DebugOutputPrinterInfo: printer number=1"),
                                     QStringLiteral("DebugOutputPrinterInfo: printer[0] Office="),
                                     QStringLiteral("DebugOutputPrinterInfo: Office: enType=RA7QX"),
                                     QStringLiteral("DebugOutputPrinterInfo: Office: iConnectType=7")}));
}

void tst_DiagnosticDump::freshStateDumpsItsDefaults()
{
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office"))});
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterStatus(0);
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("DebugOutputPrinterStatus: printer[0]=Office"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: strPrinterSerialNumber="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: enCurrentStatus=2"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: strFWVersion="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: strVenderName="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: strProductName="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: iNumberOfError=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: iNumberOfWarning=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: error code="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: warning code="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: strSupplySerialNumber="),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: enSpplyType=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwRemainingToner=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwWasteToner=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwBlackInkRemainer=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwBlueInkRemainer=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwRedInkRemainer=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwYellowInkRemainer=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwOPCRotation=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwNumberOfPages=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwNumberOfPrint=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwPrintDotsCount=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwPrinterNumOfPages=0"),
                                     QStringLiteral("DebugOutputPrinterStatus: Office: dwPrinterNumOfPrint=0")}));
}

void tst_DiagnosticDump::everyFieldOfAStateHasItsLine()
{
    stPrinterManager printer = MakePrinter(QStringLiteral("%n楼"));
    printer.printerState = {QStringLiteral("SN%s1"),
                            8,
                            QStringLiteral("FW%n2"),
                            QStringLiteral("厂商"),
                            QStringLiteral("P%d4"),
                            {enErrorCyanInkEmpty, enErrorMagentaInkEmpty},
                            {enErrorBlackInkLow, enErrorUnknown, enErrorNetwork},
                            QStringLiteral("SUP%%5"),
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
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office")), printer});
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterStatus(1);
    QCOMPARE(TakeLog(),
             QStringList({QStringLiteral("DebugOutputPrinterStatus: printer[1]=%n楼"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: strPrinterSerialNumber=SN%s1"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: enCurrentStatus=8"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: strFWVersion=FW%n2"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: strVenderName=厂商"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: strProductName=P%d4"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: iNumberOfError=2"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: iNumberOfWarning=3"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: error code=35,36,"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: warning code=25,0,45,"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: strSupplySerialNumber=SUP%%5"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: enSpplyType=6"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwRemainingToner=11"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwWasteToner=12"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwBlackInkRemainer=13"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwBlueInkRemainer=14"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwRedInkRemainer=15"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwYellowInkRemainer=16"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwOPCRotation=17"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwNumberOfPages=18"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwNumberOfPrint=19"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwPrintDotsCount=4294967296"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwPrinterNumOfPages=21"),
                          QStringLiteral("DebugOutputPrinterStatus: %n楼: dwPrinterNumOfPrint=18446744073709551615")}));
}

void tst_DiagnosticDump::zeroInANameKeepsTheFields()
{
    const QString strName = QStringLiteral("a") + QChar(0) + QStringLiteral("b\nc");
    stPrinterManager printer = MakePrinter(strName, 2, strName);
    printer.printerInfo.enType = strName;
    printer.printerState.strFWVersion = strName;
    SetPrinterList(*m_pWindow, {printer});
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterInfo();
    QCOMPARE(TakeLog(), QStringList({QStringLiteral("DebugOutputPrinterInfo: printer number=1"),
                                     QStringLiteral("DebugOutputPrinterInfo: printer[0] a\\x00b\\x0Ac=a\\x00b\\x0Ac"),
                                     QStringLiteral("DebugOutputPrinterInfo: a\\x00b\\x0Ac: enType=a\\x00b\\x0Ac"),
                                     QStringLiteral("DebugOutputPrinterInfo: a\\x00b\\x0Ac: iConnectType=2")}));
    m_pWindow->DebugOutputPrinterStatus(0);
    const QStringList listLine = TakeLog();
    QCOMPARE(listLine.size(), 11 + GoldenNumberKeys().size());
    QCOMPARE(listLine.at(0), QStringLiteral("DebugOutputPrinterStatus: printer[0]=a\\x00b\\x0Ac"));
    QCOMPARE(listLine.at(3), QStringLiteral("DebugOutputPrinterStatus: a\\x00b\\x0Ac: strFWVersion=a\\x00b\\x0Ac"));
}

void tst_DiagnosticDump::statusReportDumpsTheRow()
{
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office")), MakePrinter(QStringLiteral("Home"))});
    m_pWindow->SlotUpdatePrinterList();
    SetLogEnable(true);
    m_pWindow->SlotUpdatePrinterStatus(1);
    const QStringList listLine = TakeLog();
    QCOMPARE(listLine.size(), 11 + GoldenNumberKeys().size());
    QCOMPARE(listLine.first(), QStringLiteral("DebugOutputPrinterStatus: printer[1]=Home"));
}

void tst_DiagnosticDump::rowOutsideTheListDumpsNothing_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("negative") << -1;
    QTest::newRow("one beyond") << 1;
    QTest::newRow("far beyond") << 2147483647;
}

void tst_DiagnosticDump::rowOutsideTheListDumpsNothing()
{
    QFETCH(int, row);
    SetPrinterList(*m_pWindow, {MakePrinter(QStringLiteral("Office"))});
    m_pWindow->SlotUpdatePrinterList();
    SetLogEnable(true);
    m_pWindow->DebugOutputPrinterStatus(row);
    m_pWindow->SlotUpdatePrinterStatus(row);
    QCOMPARE(TakeLog(), QStringList());
}

QTEST_MAIN(tst_DiagnosticDump)

#include "tst_DiagnosticDump.moc"
