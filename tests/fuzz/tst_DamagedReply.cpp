// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TestFiles.h"
#include "Verdict.h"

#include <QtTest>

#include <vector>

namespace {

/// Judges a copy that ends with its last byte, so that a memory checker sees a read beyond it.
enVerdict JudgeCopy(const QByteArray& reply)
{
    const std::vector<unsigned char> bytes(reply.begin(), reply.end());
    return Judge(bytes.data(), bytes.size());
}

} // namespace

/// Replies that were cut or changed on their way. The end by design: tst_UtilPrinterStatus.
class tst_DamagedReply : public QObject
{
    Q_OBJECT

private slots:
    void everyPrefixIsRejected_data()
    {
        QTest::addColumn<QByteArray>("reply");
        const QFileInfoList listSeed = QDir(QStringLiteral(VORA_REPLY_SEEDS)).entryInfoList(QDir::Files);
        QVERIFY(listSeed.size() > 20);
        for (const QFileInfo& seed : listSeed) {
            QTest::newRow(qPrintable(seed.fileName())) << ReadFile(seed.filePath());
        }
    }

    void everyPrefixIsRejected()
    {
        QFETCH(QByteArray, reply);
        for (int iLength = 0; iLength < reply.size(); ++iLength) {
            QVERIFY2(JudgeCopy(reply.left(iLength)) == enRejected, qPrintable(QString::number(iLength)));
        }
        QCOMPARE(JudgeCopy(reply), enDecoded);
    }

    void flippedBitIsWrongValueOrRejection_data() { everyPrefixIsRejected_data(); }
    void flippedBitIsWrongValueOrRejection()
    {
        QFETCH(QByteArray, reply);
        int iDecoded = 0;
        for (int iBit = 0; iBit < reply.size() * 8; ++iBit) {
            QByteArray damaged = reply;
            damaged[iBit / 8] = static_cast<char>(damaged.at(iBit / 8) ^ (1 << iBit % 8));
            const enVerdict enResult = JudgeCopy(damaged);
            QVERIFY2(enResult != enDisputed, qPrintable(QString::number(iBit)));
            iDecoded += enResult == enDecoded ? 1 : 0;
        }
        QVERIFY(iDecoded >= 8 * 7); // at least with the bits of the bytes that nobody examines
    }
};

QTEST_APPLESS_MAIN(tst_DamagedReply)

#include "tst_DamagedReply.moc"
