// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusEncoder.h"

#include <QtTest>

/// What a reply cannot hold. The bytes of each field are tst_SimulatorTranscripts's matter.
class tst_StatusEncoder : public QObject
{
    Q_OBJECT

private slots:
    void unexaminedBytesAreAlwaysSeven()
    {
        stStatusReply reply;
        reply.byHeader = 0xA1;
        reply.unexamined = "ab";
        QCOMPARE(EncodeStatusReply(reply).left(8), QByteArray("ab\0\0\0\0\0\xA1", 8));
        reply.unexamined = "abcdefghi";
        QCOMPARE(EncodeStatusReply(reply).left(8), QByteArray("abcdefg\xA1", 8));
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
