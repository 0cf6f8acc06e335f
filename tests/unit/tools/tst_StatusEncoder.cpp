// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "HandMadeReply.h"

#include <QtTest>

class tst_StatusEncoder : public QObject
{
    Q_OBJECT

private slots:
    void writesTheHandMadeBytes()
    {
        stStatusReply reply;
        reply.unexamined = QByteArray("VORA\0\1\2", 7);
        reply.byHeader = 0xA1;
        reply.wHeaderField1 = 0xB1B2;
        reply.wHeaderField2 = 0xC1C2;
        reply.vendorName = "Vora";
        reply.productName = "RA7QX";
        reply.serialNumber = "SN1234";
        reply.wAfterSerialNumber = 0xD1D2;
        reply.byStatus = 0x10;
        reply.firmwareVersion = "2.1.7";
        reply.fifthString = "xyz";
        reply.listErrorCode = {0x6110, 0x6156};
        reply.listWarningCode = {0x6160};
        reply.byBeforeSupplies = 0xE1;
        reply.wBeforeSupplies1 = 0xF1F2;
        reply.wBeforeSupplies2 = 0xF3F4;
        reply.listSupplies = {{enSuppliesSerialNumber, "INK42"},
                              MakeSuppliesRecord(enSuppliesType, 0x00010203),
                              MakeSuppliesRecord(enSuppliesRemainingToner, 300),
                              MakeSuppliesRecord(enSuppliesWasteToner, 7),
                              MakeSuppliesRecord(enSuppliesOPCRotation, 0x1234),
                              MakeSuppliesRecord(enSuppliesNumberOfPages, 256),
                              MakeSuppliesRecord(enSuppliesNumberOfPrint, 5),
                              MakeSuppliesRecord(enSuppliesPrintDotsCount, 1000),
                              MakeSuppliesRecord(enSuppliesPrinterNumOfPages, 65536),
                              MakeSuppliesRecord(enSuppliesPrinterNumOfPrint, 0x01020304),
                              MakeSuppliesRecord(enSuppliesBlackInk, 50),
                              MakeSuppliesRecord(enSuppliesBlueInk, 51),
                              MakeSuppliesRecord(enSuppliesRedInk, 52),
                              MakeSuppliesRecord(enSuppliesYellowInk, 53)};
        QCOMPARE(EncodeStatusReply(reply).toHex(), HandMadeReply().toHex());
    }

    void emptyReplyIsZeros() { QCOMPARE(EncodeStatusReply(stStatusReply()), QByteArray(33, '\0')); }

    void unexaminedBytesAreAlwaysSeven()
    {
        stStatusReply reply;
        reply.byHeader = 0xA1;
        reply.unexamined = "ab";
        QCOMPARE(EncodeStatusReply(reply).left(8), QByteArray("ab\0\0\0\0\0\xA1", 8));
        reply.unexamined = "abcdefghi";
        QCOMPARE(EncodeStatusReply(reply).left(8), QByteArray("abcdefg\xA1", 8));
    }

    void numberHasItsKeysWidth_data()
    {
        QTest::addColumn<quint16>("wKey");
        QTest::addColumn<QByteArray>("hex");
        for (const stGoldenKey& key : GoldenNumberKeys()) {
            QTest::newRow(qPrintable(key.strName)) << key.wKey << QByteArray("01020304").right(key.iBytes * 2);
        }
    }

    void numberHasItsKeysWidth()
    {
        QFETCH(quint16, wKey);
        const stSuppliesRecord record = MakeSuppliesRecord(static_cast<enSuppliesKey>(wKey), 0x01020304);
        QCOMPARE(record.wKey, wKey);
        QTEST(record.data.toHex(), "hex");
    }

    void longStringIsCut()
    {
        stStatusReply reply;
        reply.vendorName = QByteArray(0x10000, 'v');
        const QByteArray bytes = EncodeStatusReply(reply);
        QCOMPARE(bytes.size(), 33 + 0xFFFF);
        QCOMPARE(bytes.mid(12, 3), QByteArray("\xFF\xFFv"));
    }

    void longListsAreCut()
    {
        stStatusReply reply;
        for (int i = 0; i < 256; ++i) {
            reply.listErrorCode.append(0x6100);
            reply.listWarningCode.append(0x6160);
            reply.listSupplies.append(stSuppliesRecord{0x4043, "x"});
        }
        const QByteArray bytes = EncodeStatusReply(reply);
        QCOMPARE(bytes.size(), 33 + 255 * (2 + 2 + 4));
        QCOMPARE(bytes.mid(25, 3).toHex(), QByteArray("ff6100"));
        QCOMPARE(bytes.mid(26 + 255 * 2, 3).toHex(), QByteArray("ff6160"));
        QCOMPARE(bytes.mid(32 + 255 * 4, 5).toHex(), QByteArray("ff40430178"));
    }

    void longSuppliesDataAreCut()
    {
        stStatusReply reply;
        reply.listSupplies = {{0x0000, QByteArray(256, 's')}};
        const QByteArray bytes = EncodeStatusReply(reply);
        QCOMPARE(bytes.mid(33), QByteArray("\0\0\xFF", 3) + QByteArray(255, 's'));
    }
};

QTEST_APPLESS_MAIN(tst_StatusEncoder)

#include "tst_StatusEncoder.moc"
