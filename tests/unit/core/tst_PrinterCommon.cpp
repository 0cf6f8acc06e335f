// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrinterCommon.h"
#include "TrdDeviceManage.h"

#include <QtTest>

#include <iterator>

class tst_PrinterCommon : public QObject
{
    Q_OBJECT

private slots:
    void pathsOfTheDriverPackage();
    void resetInfo();
    void resetState();
    void newStateIsAResetState();
    void countersAreUnsigned64Bit();
    void catalogueIsComplete();
    void catalogue_data();
    void catalogue();
    void catalogueNamesFollowFromTheCode();
};

namespace {

/// A state with no field at its reset value.
stPrinterState FilledState()
{
    stPrinterState state;
    state.strPrinterSerialNumber = QStringLiteral("SN1");
    state.enCurrentStatus = 8;
    state.strFWVersion = QStringLiteral("1.2");
    state.strVenderName = QStringLiteral("Vora");
    state.strProductName = QStringLiteral("RA7QX");
    state.listErrorStatus = {enErrorNoPaper};
    state.listWarningStatus = {enErrorCyanInkLow, enErrorNetwork};
    state.strSupplySerialNumber = QStringLiteral("SN2");
    state.enSpplyType = 3;
    state.dwRemainingToner = 10;
    state.dwWasteToner = 11;
    state.dwBlackInkRemainer = 12;
    state.dwBlueInkRemainer = 13;
    state.dwRedInkRemainer = 14;
    state.dwYellowInkRemainer = 15;
    state.dwOPCRotation = 16;
    state.dwNumberOfPages = 17;
    state.dwNumberOfPrint = 18;
    state.dwPrintDotsCount = 19;
    state.dwPrinterNumOfPages = 20;
    state.dwPrinterNumOfPrint = 21;
    state.iReadFailCount = 22;
    return state;
}

void CompareWithReset(const stPrinterState& state)
{
    QCOMPARE(state.strPrinterSerialNumber, QString());
    QCOMPARE(state.enCurrentStatus, 2);
    QCOMPARE(state.strFWVersion, QString());
    QCOMPARE(state.strVenderName, QString());
    QCOMPARE(state.strProductName, QString());
    QVERIFY(state.listErrorStatus.isEmpty());
    QVERIFY(state.listWarningStatus.isEmpty());
    QCOMPARE(state.strSupplySerialNumber, QString());
    QCOMPARE(state.enSpplyType, 0);
    QCOMPARE(state.dwRemainingToner, 0ul);
    QCOMPARE(state.dwWasteToner, 0ul);
    QCOMPARE(state.dwBlackInkRemainer, 0ul);
    QCOMPARE(state.dwBlueInkRemainer, 0ul);
    QCOMPARE(state.dwRedInkRemainer, 0ul);
    QCOMPARE(state.dwYellowInkRemainer, 0ul);
    QCOMPARE(state.dwOPCRotation, 0ul);
    QCOMPARE(state.dwNumberOfPages, 0ul);
    QCOMPARE(state.dwNumberOfPrint, 0ul);
    QCOMPARE(state.dwPrintDotsCount, 0ul);
    QCOMPARE(state.dwPrinterNumOfPages, 0ul);
    QCOMPARE(state.dwPrinterNumOfPrint, 0ul);
    QCOMPARE(state.iReadFailCount, 0);
}

} // namespace

void tst_PrinterCommon::pathsOfTheDriverPackage()
{
    QCOMPARE(c_strToolPath, QStringLiteral("/opt/vora/vora-printer-k507/tool/"));
    QCOMPARE(c_strCfgPath, QStringLiteral("/opt/vora/vora-printer-k507/cfg/"));
    QCOMPARE(c_strBinPath, QStringLiteral("/opt/vora/vora-printer-k507/bin/"));
    QCOMPARE(c_strPrinterListName, QStringLiteral("printerlist.ini"));
    QCOMPARE(c_strStatusFileSuffix, QStringLiteral(".dat"));
}

void tst_PrinterCommon::resetInfo()
{
    stPrinterInfo info{QStringLiteral("Office"), QStringLiteral("RA7QX"), 1, QStringLiteral("10.0.0.7"),
                       QStringLiteral("socket://10.0.0.7")};
    TrdDeviceManage().InitStPrinterInfo(info);
    QCOMPARE(info.strPrinterName, QString());
    QCOMPARE(info.enType, QStringLiteral("-1"));
    QCOMPARE(info.iConnectType, 0);
    QCOMPARE(info.strPort, QString());
    QCOMPARE(info.strURI, QString());
}

void tst_PrinterCommon::resetState()
{
    stPrinterState state = FilledState();
    TrdDeviceManage().InitStPrinterState(state);
    CompareWithReset(state);
}

void tst_PrinterCommon::newStateIsAResetState()
{
    CompareWithReset(stPrinterState());
    CompareWithReset(stPrinterManager().printerState);
}

void tst_PrinterCommon::countersAreUnsigned64Bit()
{
    stPrinterState state;
    state.dwPrinterNumOfPrint = 0xFFFFFFFFFFFFFFFFul;
    QCOMPARE(QString::asprintf("%lu", state.dwPrinterNumOfPrint), QStringLiteral("18446744073709551615"));
}

void tst_PrinterCommon::catalogueIsComplete()
{
    QCOMPARE(std::size(c_stModelInfoList), std::size_t(7));
}

void tst_PrinterCommon::catalogue_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("displayName");
    QTest::addColumn<QString>("ppdName");
    QTest::addColumn<int>("productId");
    int iRow = 0;
    const auto add = [&iRow](const char* pModel, const char* pDisplayName, const char* pPpdName, int iProductId) {
        QTest::newRow(pModel) << iRow++ << QString::fromLatin1(pModel) << QString::fromLatin1(pDisplayName)
                              << QString::fromLatin1(pPpdName) << iProductId;
    };
    add("RA7QX", "Vora RA7QX", "Vora_RA7QX.ppd", 0x7105);
    add("RA7Q", "Vora RA7Q", "Vora_RA7Q.ppd", 0x7106);
    add("RA7X", "Vora RA7X", "Vora_RA7X.ppd", 0x7107);
    add("RB9QX", "Vora RB9QX", "Vora_RB9QX.ppd", 0x7108);
    add("RB9Q", "Vora RB9Q", "Vora_RB9Q.ppd", 0x7109);
    add("RB9X", "Vora RB9X", "Vora_RB9X.ppd", 0x710A);
    add("HV5520TP", "Vora HV5520TP", "Vora_HV5520TP.ppd", 0x7121);
}

void tst_PrinterCommon::catalogue()
{
    QFETCH(const int, row);
    QVERIFY(row < static_cast<int>(std::size(c_stModelInfoList)));
    const stModelInfo& info = c_stModelInfoList[row];
    QTEST(info.strModel, "model");
    QTEST(info.strDisplayName, "displayName");
    QTEST(info.strPPDName, "ppdName");
    QCOMPARE(info.iVendorId, 19068);
    QTEST(info.iProductId, "productId");
}

void tst_PrinterCommon::catalogueNamesFollowFromTheCode()
{
    for (const stModelInfo& info : c_stModelInfoList) {
        QCOMPARE(info.strDisplayName, QStringLiteral("Vora ") + info.strModel);
        QCOMPARE(info.strPPDName, QStringLiteral("Vora_") + info.strModel + QStringLiteral(".ppd"));
    }
}

QTEST_MAIN(tst_PrinterCommon)

#include "tst_PrinterCommon.moc"
