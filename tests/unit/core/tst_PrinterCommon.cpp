// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "PrinterText.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"

#include <QtTest>

#include <iterator>

class tst_PrinterCommon : public QObject
{
    Q_OBJECT

private slots:
    void pathsAndNumbersOfTheDriverPackage()
    {
        QCOMPARE(c_strToolPath, u"/opt/vora/vora-printer-k507/tool/"_s);
        QCOMPARE(c_strCfgPath, u"/opt/vora/vora-printer-k507/cfg/"_s);
        QCOMPARE(c_strBinPath, u"/opt/vora/vora-printer-k507/bin/"_s);
        QCOMPARE(c_strPrinterListName, u"printerlist.ini"_s);
        QCOMPARE(c_strStatusFileSuffix, u".dat"_s);
        QCOMPARE(c_iConnectUsb, 1);
    }

    void resetInfo()
    {
        stPrinterInfo info = Printers(u"Office|RA7QX|1|10.0.0.7|socket://10.0.0.7"_s).first();
        TrdDeviceManage().InitStPrinterInfo(info);
        QCOMPARE(Text(info), u"|-1|0||"_s);
    }

    void resetState()
    {
        TrdGetPrinterStatus worker;
        QByteArray reply = HandMadeReply(); // which leaves few fields as they are
        worker.CheckPrinterStatus(reinterpret_cast<unsigned char*>(reply.data()),
                                  static_cast<unsigned long>(reply.size()));
        stPrinterState& state = worker.m_printerManager.printerState;
        state.enSpplyType = 3;
        state.iReadFailCount = 22;
        TrdDeviceManage().InitStPrinterState(state);
        QCOMPARE(Text(state), c_strResetState);
        QCOMPARE(Text(stPrinterState()), c_strResetState);
        QCOMPARE(Text(stPrinterManager()), u"||0|| "_s + c_strResetState);
    }

    void catalogue_data()
    {
        const QList<stGoldenModel> listModel = GoldenModels();
        QVERIFY(!listModel.isEmpty());
        QCOMPARE(std::size(c_stModelInfoList), static_cast<std::size_t>(listModel.size()));
        QTest::addColumn<int>("row");
        for (int i = 0; i < listModel.size(); ++i) {
            QTest::newRow(qPrintable(listModel.at(i).strModel)) << i;
        }
    }

    void catalogue()
    {
        QFETCH(const int, row);
        const stModelInfo& info = c_stModelInfoList[row];
        const stGoldenModel model = GoldenModels().at(row);
        QCOMPARE(info.strModel, model.strModel);
        QCOMPARE(info.strDisplayName, model.strDisplayName);
        QCOMPARE(info.strDisplayName, u"Vora "_s + info.strModel);
        QCOMPARE(info.strPPDName, model.strPpdName);
        QCOMPARE(info.strPPDName, u"Vora_"_s + info.strModel + u".ppd"_s);
        QCOMPARE(info.iVendorId, 19068);
        QCOMPARE(model.iVendorId, 19068);
        QCOMPARE(info.iProductId, model.iProductId);
    }
};

QTEST_MAIN(tst_PrinterCommon)

#include "tst_PrinterCommon.moc"
