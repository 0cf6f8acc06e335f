// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyLayout.h"
#include "Seeds.h"
#include "StatusEncoder.h"
#include "TrdGetPrinterStatus.h"
#include "Verdict.h"

#include <QtTest>

namespace {

/// Decodes a copy that ends with its last byte, so that a memory checker sees a read beyond it.
enVerdict DecodeCopy(const QByteArray& reply)
{
    UtilPrinterStatus decoder;
    const std::vector<unsigned char> bytes(reply.begin(), reply.end());
    return Decode(decoder, bytes.data(), bytes.size());
}

/// Converts into a state that already counts one failed read.
int Convert(const QByteArray& reply, stPrinterState& state)
{
    std::vector<unsigned char> bytes(reply.begin(), reply.end());
    TrdGetPrinterStatus worker;
    worker.m_printerManager.printerState.iReadFailCount = 1;
    const int iResult = worker.CheckPrinterStatus(bytes.data(), bytes.size());
    state = worker.m_printerManager.printerState;
    return iResult;
}

} // namespace

/// Replies that were cut or changed on their way.
class tst_DamagedReply : public QObject
{
    Q_OBJECT

private slots:
    void everyPrefixIsRejected_data()
    {
        QTest::addColumn<QByteArray>("reply");
        const QMap<QString, QByteArray> seeds = ReplySeeds();
        for (auto seed = seeds.begin(); seed != seeds.end(); ++seed) {
            QTest::newRow(qPrintable(seed.key())) << seed.value();
        }
    }

    void everyPrefixIsRejected()
    {
        QFETCH(QByteArray, reply);
        stPrinterState state;
        for (int iLength = 0; iLength < reply.size(); ++iLength) {
            const QByteArray prefix = reply.left(iLength);
            QVERIFY2(DecodeCopy(prefix) == enRejected, qPrintable(QString::number(iLength)));
            QCOMPARE(Convert(prefix, state), -1);
            QCOMPARE(state.iReadFailCount, 1);
            QCOMPARE(state.enCurrentStatus, 2); // off-line, as before
            QVERIFY(state.strVenderName.isEmpty() && state.listErrorStatus.isEmpty());
        }
        QCOMPARE(DecodeCopy(reply), enDecoded);
        QCOMPARE(Convert(reply, state), 0);
        QVERIFY(IsWithinBounds(state));
    }

    void flippedBitIsWrongValueOrRejection_data() { everyPrefixIsRejected_data(); }

    void flippedBitIsWrongValueOrRejection()
    {
        QFETCH(QByteArray, reply);
        int iDecoded = 0;
        for (int iBit = 0; iBit < reply.size() * 8; ++iBit) {
            QByteArray damaged = reply;
            damaged[iBit / 8] = static_cast<char>(damaged.at(iBit / 8) ^ (1 << iBit % 8));
            const QByteArray bit = QByteArray::number(iBit);
            // The layout is read by code of its own, which survives every reply: the two must agree.
            stPrinterState state;
            switch (ReplyLayout(damaged).Fault()) {
            case enReplyAccepted:
                QVERIFY2(DecodeCopy(damaged) == enDecoded, bit.constData());
                QCOMPARE(Convert(damaged, state), 0);
                QVERIFY2(IsWithinBounds(state), bit.constData());
                ++iDecoded;
                break;
            case enReplyTruncated:
                QVERIFY2(DecodeCopy(damaged) == enRejected, bit.constData());
                QCOMPARE(Convert(damaged, state), -1);
                QCOMPARE(state.iReadFailCount, 1);
                break;
            case enReplyFatalSupplies: QVERIFY2(DecodeCopy(damaged) == enEnded, bit.constData()); break;
            }
        }
        QVERIFY(iDecoded >= 8 * 7); // at least with the bits of the bytes that nobody examines
    }

    void endByDesignIsToldApart_data()
    {
        QTest::addColumn<int>("iDataLength");
        QTest::addColumn<int>("iMissing");
        QTest::addColumn<int>("enResult");
        QTest::newRow("65 bytes") << 65 << 0 << int(enDecoded);
        QTest::newRow("66 bytes") << 66 << 0 << int(enEnded);
        QTest::newRow("255 bytes") << 255 << 0 << int(enEnded);
        QTest::newRow("66 bytes, one missing") << 66 << 1 << int(enRejected);
    }

    void endByDesignIsToldApart()
    {
        QFETCH(int, iDataLength);
        QFETCH(int, iMissing);
        stStatusReply reply;
        reply.listSupplies = {{enSuppliesBlackInk, "42"}, {enSuppliesSerialNumber, QByteArray(iDataLength, 's')}};
        QTEST(int(DecodeCopy(EncodeStatusReply(reply).chopped(iMissing))), "enResult");
    }
};

QTEST_APPLESS_MAIN(tst_DamagedReply)

#include "tst_DamagedReply.moc"
