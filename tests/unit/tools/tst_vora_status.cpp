// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What docs/status-reply.md says of codes and keys, and what the program prints of them. tst_Transcripts has the rest.

#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "ReplyLabels.h"
#include "UtilStatusIdParser.h"
#include "VoraStatusTest.h"

namespace {

QByteArray Text(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray Text(const stGoldenCode& code)
{
    return Text({{u"code"_s, code.iRawCode},
                 {u"value"_s, code.iValue},
                 {u"english"_s, code.strEnglish},
                 {u"chinese"_s, code.strChinese}});
}

} // namespace

class tst_vora_status : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void errors()
    {
        const QList<stGoldenCode> listError = Sent(GoldenErrors());
        QCOMPARE(static_cast<std::size_t>(listError.size()), c_stErrorCodeList.size());
        for (const stGoldenCode& code : listError) {
            const QJsonArray listFound =
                Decoded(WithError(static_cast<quint16>(code.iRawCode))).value(u"errors"_s).toArray();
            QCOMPARE(Text(listFound.at(0).toObject()), Text(code));
        }
    }

    void states()
    {
        const QList<stGoldenCode> listState = Sent(GoldenStates());
        QCOMPARE(static_cast<std::size_t>(listState.size()), c_stStatusCodeList.size());
        for (const stGoldenCode& code : listState) {
            const QJsonObject reply = Decoded(ReplyInState(static_cast<quint8>(code.iRawCode)));
            QCOMPARE(Text(reply.value(u"state"_s).toObject()), Text(code));
        }
    }

    /// Each has a sample, the present one's is 1.
    void statesAsMetrics()
    {
        StatusFolder().WritePrinterList({{u"Office"_s, u"RA7QX"_s, 2, QString(), QString()}});
        QList<stGoldenCode> listState = Sent(GoldenStates());
        listState.append({0, c_iNoState, u"unknown"_s, QString(), QString()});
        for (const stGoldenCode& present : listState) {
            StatusFolder().WriteStatus(u"Office"_s, ReplyInState(static_cast<quint8>(present.iRawCode)));
            QByteArray expected;
            for (const stGoldenCode& code : GoldenStates()) {
                expected += "\nvora_printer_state{queue=\"Office\",state=\"" + code.strName.toUtf8() +
                            (code.strName == present.strName ? "\"} 1" : "\"} 0");
            }
            const QByteArray output = Run({u"--prometheus"_s}).output;
            QVERIFY2(output.contains(" gauge" + expected + '\n'), output);
        }
    }

    void keys()
    {
        QVERIFY(GoldenKeys().size() > 1);
        QCOMPARE(static_cast<std::size_t>(GoldenNumberKeys().size()), c_enSuppliesNumberList.size());
        for (const stGoldenKey& key : GoldenKeys()) {
            const QJsonObject reply = Decoded(ReplyWithSupplies({{key.wKey, "A"}}));
            QCOMPARE(reply.value(key.strName), key.iBytes == 0 ? QJsonValue(u"A"_s) : QJsonValue(65));
            QVERIFY(key.iBytes == 0 ||
                    MakeSuppliesRecord(static_cast<enSuppliesKey>(key.wKey), 1).data.size() == key.iBytes);
            const stReplyLabel* pLabel = SuppliesLabel(key.wKey);
            QVERIFY2(pLabel != nullptr, qPrintable(key.strName));
            QCOMPARE(pLabel->Key(), key.strName);
            QCOMPARE(QString::fromUtf8(pLabel->Name(enLanguageEnglish)), key.strEnglish);
            QCOMPARE(QString::fromUtf8(pLabel->Name(enLanguageChinese)), key.strChinese);
        }
    }

private:
    static QJsonObject Decoded(const QByteArray& reply)
    {
        WriteFile(u"reply.dat"_s, reply);
        return Run({u"--json"_s, u"reply.dat"_s}).Report().value(u"reply"_s).toObject();
    }
};

QTEST_GUILESS_MAIN(tst_vora_status)

#include "tst_vora_status.moc"
