// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "PrinterCommon.h"
#include "TrdDeviceManage.h"

#include <QtTest>

#include <iterator>

namespace {

/// A state with no field at its reset value.
stPrinterState FilledState()
{
    stPrinterState state;
    state.strPrinterSerialNumber = u"SN1"_s;
    state.enCurrentStatus = 8;
    state.strFWVersion = u"1.2"_s;
    state.strVenderName = u"Vora"_s;
    state.strProductName = u"RA7QX"_s;
    state.listErrorStatus = {enErrorNoPaper};
    state.listWarningStatus = {enErrorCyanInkLow, enErrorNetwork};
    state.strSupplySerialNumber = u"SN2"_s;
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

class tst_PrinterCommon : public QObject
{
    Q_OBJECT

private slots:
    void pathsOfTheDriverPackage()
    {
        QCOMPARE(c_strToolPath, u"/opt/vora/vora-printer-k507/tool/"_s);
        QCOMPARE(c_strCfgPath, u"/opt/vora/vora-printer-k507/cfg/"_s);
        QCOMPARE(c_strBinPath, u"/opt/vora/vora-printer-k507/bin/"_s);
        QCOMPARE(c_strPrinterListName, u"printerlist.ini"_s);
        QCOMPARE(c_strStatusFileSuffix, u".dat"_s);
    }

    void resetInfo()
    {
        stPrinterInfo info{u"Office"_s, u"RA7QX"_s, 1, u"10.0.0.7"_s, u"socket://10.0.0.7"_s};
        TrdDeviceManage().InitStPrinterInfo(info);
        QCOMPARE(info.strPrinterName, QString());
        QCOMPARE(info.enType, u"-1"_s);
        QCOMPARE(info.iConnectType, 0);
        QCOMPARE(info.strPort, QString());
        QCOMPARE(info.strURI, QString());
    }

    void resetState()
    {
        stPrinterState state = FilledState();
        TrdDeviceManage().InitStPrinterState(state);
        CompareWithReset(state);
    }

    void newStateIsAResetState()
    {
        CompareWithReset(stPrinterState());
        CompareWithReset(stPrinterManager().printerState);
    }

    void countersAreUnsigned64Bit()
    {
        stPrinterState state;
        state.dwPrinterNumOfPrint = 0xFFFFFFFFFFFFFFFFul;
        QCOMPARE(QString::asprintf("%lu", state.dwPrinterNumOfPrint), u"18446744073709551615"_s);
    }

    void catalogueIsComplete()
    {
        QVERIFY(!GoldenModels().isEmpty());
        QCOMPARE(std::size(c_stModelInfoList), static_cast<std::size_t>(GoldenModels().size()));
    }

    void catalogue_data()
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

    void catalogue()
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

    void catalogueNamesFollowFromTheCode()
    {
        for (const stModelInfo& info : c_stModelInfoList) {
            QCOMPARE(info.strDisplayName, u"Vora "_s + info.strModel);
            QCOMPARE(info.strPPDName, u"Vora_"_s + info.strModel + u".ppd"_s);
        }
    }
};

QTEST_MAIN(tst_PrinterCommon)

#include "tst_PrinterCommon.moc"
