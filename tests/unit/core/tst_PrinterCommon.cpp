// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
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
    unsigned long dwFigure = 10;
#define VORA_FILL(enKey, wKey, iBytes, Stem, ...) state.dw##Stem = dwFigure++;
    VORA_SUPPLIES_OF_STATE(VORA_FILL)
#undef VORA_FILL
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
#define VORA_COMPARE(enKey, wKey, iBytes, Stem, ...) QCOMPARE(state.dw##Stem, 0ul);
    VORA_SUPPLIES_OF_STATE(VORA_COMPARE)
#undef VORA_COMPARE
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
    QVERIFY(!GoldenModels().isEmpty());
    QCOMPARE(std::size(c_stModelInfoList), static_cast<std::size_t>(GoldenModels().size()));
}

void tst_PrinterCommon::catalogue_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("displayName");
    QTest::addColumn<QString>("ppdName");
    QTest::addColumn<int>("vendorId");
    QTest::addColumn<int>("productId");
    int iRow = 0;
    for (const stGoldenModel& model : GoldenModels()) {
        QTest::newRow(qPrintable(model.strModel)) << iRow++ << model.strModel << model.strDisplayName
                                                  << model.strPpdName << model.iVendorId << model.iProductId;
    }
}

void tst_PrinterCommon::catalogue()
{
    QFETCH(const int, row);
    QVERIFY(row < static_cast<int>(std::size(c_stModelInfoList)));
    const stModelInfo& info = c_stModelInfoList[row];
    QTEST(info.strModel, "model");
    QTEST(info.strDisplayName, "displayName");
    QTEST(info.strPPDName, "ppdName");
    QTEST(info.iVendorId, "vendorId");
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
