// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "ReplyLayout.h"
#include "UtilPrinterStatus.h"
#include "Verdict.h"

#include <QRandomGenerator>
#include <QtTest>

#include <map>

namespace {

/// Supplies data of unusual lengths.
QByteArray OddReply()
{
    return ReplyWithSupplies({{0x1000, QByteArray()},
                              {0x4043, QByteArray(60, 'a')},
                              {0x7777, QByteArray::fromHex("0907")},
                              {0x1001, QByteArray()},
                              {0x1002, QByteArray::fromHex("7F")},
                              {0x1101, QByteArray::fromHex("010203")},
                              {0x1102, QByteArray::fromHex("0506070809")},
                              {0x1004, QByteArray(65, 'b')}});
}

/// The numbers of the walker: the last field of each kind, and of supplies data the last of each key.
std::map<std::pair<int, unsigned long>, unsigned long> LastValues(const ReplyLayout& layout)
{
    std::map<std::pair<int, unsigned long>, unsigned long> values;
    for (const stFieldPlace& field : layout.Fields()) {
        const unsigned long dwKey = field.enField == enFieldSuppliesData ? field.dwKey : 0;
        values[{field.enField, dwKey}] = field.dwValue;
        if (field.enField == enFieldSuppliesData && field.dwKey == 0x1003) {
            values[{field.enField, 0x1004}] = field.dwValue;
        }
    }
    return values;
}

unsigned long Big(const UtilPrinterStatus::Raw2& raw)
{
    return static_cast<unsigned char>(raw[0]) * 256UL + static_cast<unsigned char>(raw[1]);
}

/// Empty when the walker's numbers are the decoder's, else what differs.
QByteArray Difference(const ReplyLayout& layout, const UtilPrinterStatus& decoder)
{
    auto values = LastValues(layout);
    const std::map<std::pair<int, unsigned long>, unsigned long> expected = {
        {{enFieldHeader, 0}, decoder.m_byHeader},
        {{enFieldHeaderField1, 0}, Big(decoder.m_headerField1)},
        {{enFieldHeaderField2, 0}, Big(decoder.m_headerField2)},
        {{enFieldVendorLength, 0}, decoder.m_dwVendorNameLength},
        {{enFieldProductLength, 0}, decoder.m_dwProductNameLength},
        {{enFieldSerialLength, 0}, decoder.m_dwSerialNumberLength},
        {{enFieldAfterSerial, 0}, Big(decoder.m_afterSerialNumber)},
        {{enFieldState, 0}, decoder.m_dwStatus},
        {{enFieldFirmwareLength, 0}, Big(decoder.m_firmwareVersionLength)},
        {{enFieldFifthStringLength, 0}, decoder.m_dwFifthStringLength},
        {{enFieldErrorCount, 0}, decoder.m_dwErrorCount},
        {{enFieldError, 0}, decoder.m_listErrorCode.empty() ? 0 : decoder.m_listErrorCode.back()},
        {{enFieldWarningCount, 0}, decoder.m_dwWarningCount},
        {{enFieldWarning, 0}, decoder.m_listWarningCode.empty() ? 0 : decoder.m_listWarningCode.back()},
        {{enFieldBeforeSupplies, 0}, decoder.m_byBeforeSupplies},
        {{enFieldBeforeSupplies1, 0}, Big(decoder.m_beforeSupplies1)},
        {{enFieldBeforeSupplies2, 0}, Big(decoder.m_beforeSupplies2)},
        {{enFieldSuppliesCount, 0}, decoder.m_dwSuppliesCount},
#define VORA_NUMBER(enKey, wKey, iBytes, Stem, ...) {{enFieldSuppliesData, wKey}, decoder.m_dw##Stem},
        VORA_SUPPLIES_OF_REPLY(VORA_NUMBER)
#undef VORA_NUMBER
    };
    for (const auto& [what, dwExpected] : expected) {
        if (values[what] != dwExpected) {
            return QByteArray("field ") + QByteArray::number(what.first) + " key " +
                   QByteArray::number(static_cast<quint64>(what.second), 16) + ": walker " +
                   QByteArray::number(static_cast<quint64>(values[what])) + ", decoder " +
                   QByteArray::number(static_cast<quint64>(dwExpected));
        }
    }
    return QByteArray();
}

/// Empty when the fields follow one another from the first byte on and end where they should.
QByteArray Gap(const ReplyLayout& layout, const QByteArray& reply)
{
    int iNext = 0;
    for (const stFieldPlace& field : layout.Fields()) {
        if (field.iOffset != iNext || field.iLength < 0) {
            return "gap at byte " + QByteArray::number(iNext);
        }
        iNext += field.iLength;
    }
    const stFieldPlace& broken = layout.BrokenField();
    switch (layout.Fault()) {
    case enReplyTruncated:
        return broken.iOffset == iNext && iNext + broken.iLength > reply.size() ? "" : "truncated field not at the end";
    case enReplyFatalSupplies:
        return broken.iOffset == iNext - 1 && static_cast<unsigned char>(reply.at(iNext - 1)) == broken.dwValue
                   ? ""
                   : "length byte not the last";
    default: return iNext == reply.size() ? "" : "bytes left over";
    }
}

/// Empty when the walker says what the decoder does. That the end by design is a signal is tst_UtilPrinterStatus's
/// matter; a process for each reply takes long.
QByteArray Disagreement(const QByteArray& reply)
{
    const ReplyLayout layout(reply);
    UtilPrinterStatus decoder;
    const enVerdict enResult = Decode(decoder, reinterpret_cast<const unsigned char*>(reply.constData()),
                                      static_cast<std::size_t>(reply.size()));
    const std::map<enReplyFault, enVerdict> expected = {
        {enReplyAccepted, enDecoded}, {enReplyTruncated, enRejected}, {enReplyFatalSupplies, enEnded}};
    if (enResult != expected.at(layout.Fault())) {
        return "the decoder's verdict is " + QByteArray::number(enResult);
    }
    return Gap(layout, reply) + (layout.IsAccepted() ? Difference(layout, decoder) : QByteArray());
}

QByteArray Mutated(QByteArray reply, QRandomGenerator& random)
{
    const auto place = [&] { return static_cast<int>(random.bounded(static_cast<int>(reply.size()))); };
    for (int i = random.bounded(1, 4); i > 0; --i) {
        const char byValue = static_cast<char>(random.bounded(3) == 0 ? random.bounded(256) : random.bounded(8));
        switch (random.bounded(6)) {
        case 0: reply.truncate(reply.size() - place() / 4); break;
        case 1: reply.insert(place(), QByteArray(random.bounded(70), byValue)); break;
        case 2: reply.remove(place(), random.bounded(4)); break;
        default: reply[place()] = byValue; break;
        }
        if (reply.isEmpty()) {
            break;
        }
    }
    return reply;
}

} // namespace

class tst_ReplyLayout : public QObject
{
    Q_OBJECT

private slots:
    void everyPrefix_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("bytes after the last record") << HandMadeReply() + "tail";
        QTest::newRow("odd supplies") << OddReply();
        for (const int iLength : {0, 64, 65, 66, 255}) { // too long only when it is complete
            QTest::addRow("%d bytes of supplies", iLength)
                << ReplyWithSupplies({{0x7777, "x"}, {0x4043, QByteArray(iLength, 'd')}});
        }
        stStatusReply full;
        full.vendorName = QByteArray(300, 'v');
        for (int i = 0; i < 255; ++i) {
            full.listErrorCode.append(static_cast<quint16>(0x6100 + i));
            full.listWarningCode.append(static_cast<quint16>(0x5200 + i));
            full.listSupplies.append({0x4043, QByteArray(1, static_cast<char>(i))});
        }
        QTest::newRow("full lists") << EncodeStatusReply(full);
    }

    void everyPrefix()
    {
        QFETCH(const QByteArray, reply);
        for (int i = 0; i <= reply.size(); ++i) {
            QCOMPARE(Disagreement(reply.left(i)), QByteArray());
        }
    }

    void mutatedReplies()
    {
        const QList<QByteArray> listOriginal = {HandMadeReply(), EncodeStatusReply(stStatusReply()), OddReply()};
        QRandomGenerator random(20260517);
        std::array<int, 3> count{};
        for (int i = 0; i < 20000; ++i) {
            const QByteArray reply = Mutated(listOriginal.at(i % static_cast<int>(listOriginal.size())), random);
            const QByteArray disagreement = Disagreement(reply);
            QVERIFY2(disagreement.isEmpty(), disagreement + ": " + reply.toHex());
            ++count.at(ReplyLayout(reply).Fault());
        }
        // Every outcome must have been there many times.
        QVERIFY(count.at(enReplyAccepted) > 2000);
        QVERIFY(count.at(enReplyTruncated) > 2000);
        QVERIFY(count.at(enReplyFatalSupplies) > 200);
    }
};

QTEST_APPLESS_MAIN(tst_ReplyLayout)

#include "tst_ReplyLayout.moc"
