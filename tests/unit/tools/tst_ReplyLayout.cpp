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

stSuppliesRecord Record(quint16 wKey, const QByteArray& data)
{
    return {wKey, data};
}

/// Every kind of field, and supplies data of every length class.
stStatusReply RichReply()
{
    stStatusReply reply;
    reply.unexamined = QByteArray::fromHex("A5000C50E07408");
    reply.byHeader = 0x03;
    reply.wHeaderField1 = 0x1234;
    reply.wHeaderField2 = 0x5678;
    reply.vendorName = "Vora";
    reply.productName = "Vora RA7QX";
    reply.serialNumber = "SN1";
    reply.wAfterSerialNumber = 0x9ABC;
    reply.byStatus = 0x22;
    reply.firmwareVersion = "1.02";
    reply.fifthString = "five";
    reply.listErrorCode = {0x6100, 0x9201};
    reply.listWarningCode = {0x6163, 0x6800, 0x0001};
    reply.byBeforeSupplies = 0xDE;
    reply.wBeforeSupplies1 = 0xF012;
    reply.wBeforeSupplies2 = 0x3456;
    reply.listSupplies = {Record(0x0000, "INK7"),
                          Record(0x1003, QByteArray::fromHex("00000100")),
                          Record(0x4043, QByteArray::fromHex("0032")),
                          Record(0x1000, QByteArray::fromHex("7F")),
                          Record(0x1001, QByteArray()),
                          Record(0x7777, "unknown"),
                          Record(0x1101, QByteArray::fromHex("010203")),
                          Record(0x1102, QByteArray::fromHex("0506070809"))};
    return reply;
}

bool Decode(QByteArray reply, UtilPrinterStatus& decoder)
{
    return decoder.parseRecvBuf(reinterpret_cast<unsigned char*>(reply.data()),
                                static_cast<unsigned long>(reply.size()));
}

/// That the end by design is a signal is tst_UtilPrinterStatus's matter; a process for each reply takes long.
bool DecoderEndsTheProcess(const QByteArray& reply)
{
    UtilPrinterStatus decoder;
    return Decode(decoder, reinterpret_cast<const unsigned char*>(reply.constData()),
                  static_cast<std::size_t>(reply.size())) == enEnded;
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
        {{enFieldSuppliesData, 0x0001}, decoder.m_dwSupplyType},
        {{enFieldSuppliesData, 0x1000}, decoder.m_dwRemainingToner},
        {{enFieldSuppliesData, 0x1001}, decoder.m_dwWasteToner},
        {{enFieldSuppliesData, 0x1002}, decoder.m_dwOPCRotation},
        {{enFieldSuppliesData, 0x1003}, decoder.m_dwNumberOfPages},
        {{enFieldSuppliesData, 0x1004}, decoder.m_dwNumberOfPrint},
        {{enFieldSuppliesData, 0x1100}, decoder.m_dwPrintDotsCount},
        {{enFieldSuppliesData, 0x1101}, decoder.m_dwPrinterNumOfPages},
        {{enFieldSuppliesData, 0x1102}, decoder.m_dwPrinterNumOfPrint},
        {{enFieldSuppliesData, 0x4043}, decoder.m_dwBlackInkRemainer},
        {{enFieldSuppliesData, 0x4143}, decoder.m_dwBlueInkRemainer},
        {{enFieldSuppliesData, 0x4243}, decoder.m_dwRedInkRemainer},
        {{enFieldSuppliesData, 0x4343}, decoder.m_dwYellowInkRemainer},
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

/// Empty when the walker says what the decoder does.
QByteArray Disagreement(const QByteArray& reply)
{
    const ReplyLayout layout(reply);
    const QByteArray gap = Gap(layout, reply);
    if (!gap.isEmpty()) {
        return gap;
    }
    if (layout.Fault() == enReplyFatalSupplies) {
        return DecoderEndsTheProcess(reply) ? "" : "the decoder survives";
    }
    UtilPrinterStatus decoder;
    if (Decode(reply, decoder) != layout.IsAccepted()) {
        return layout.IsAccepted() ? "the decoder rejects" : "the decoder accepts";
    }
    return layout.IsAccepted() ? Difference(layout, decoder) : QByteArray();
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

/// The bytes up to the end of the last field.
int UsedLength(const ReplyLayout& layout)
{
    return layout.Fields().back().iOffset + layout.Fields().back().iLength;
}

} // namespace

class tst_ReplyLayout : public QObject
{
    Q_OBJECT

private slots:
    void fields()
    {
        struct stExpected
        {
            enReplyPart enField;
            int iIndex;
            int iOffset;
            int iLength;
            unsigned long dwKey;
            unsigned long dwValue;
        };
        // clang-format off
        const std::vector<stExpected> listExpected = {
            {enFieldHeader, 0, 7, 1, 0, 0x03},
            {enFieldHeaderField1, 0, 8, 2, 0, 0x1234},
            {enFieldHeaderField2, 0, 10, 2, 0, 0x5678},
            {enFieldVendorLength, 0, 12, 2, 0, 4},
            {enFieldProductLength, 0, 18, 2, 0, 10},
            {enFieldSerialLength, 0, 30, 2, 0, 3},
            {enFieldAfterSerial, 0, 35, 2, 0, 0x9ABC},
            {enFieldState, 0, 37, 1, 0, 0x22},
            {enFieldFirmwareLength, 0, 38, 2, 0, 4},
            {enFieldFifthStringLength, 0, 44, 2, 0, 4},
            {enFieldErrorCount, 0, 50, 1, 0, 2},
            {enFieldError, 0, 51, 2, 0, 0x6100},
            {enFieldError, 1, 53, 2, 0, 0x9201},
            {enFieldWarningCount, 0, 55, 1, 0, 3},
            {enFieldWarning, 0, 56, 2, 0, 0x6163},
            {enFieldWarning, 1, 58, 2, 0, 0x6800},
            {enFieldWarning, 2, 60, 2, 0, 0x0001},
            {enFieldBeforeSupplies, 0, 62, 1, 0, 0xDE},
            {enFieldBeforeSupplies1, 0, 63, 2, 0, 0xF012},
            {enFieldBeforeSupplies2, 0, 65, 2, 0, 0x3456},
            {enFieldSuppliesCount, 0, 67, 1, 0, 8},
            {enFieldSuppliesKey, 0, 68, 2, 0x0000, 0x0000},
            {enFieldSuppliesLength, 0, 70, 1, 0x0000, 4},
            {enFieldSuppliesKey, 1, 75, 2, 0x1003, 0x1003},
            {enFieldSuppliesLength, 1, 77, 1, 0x1003, 4},
            {enFieldSuppliesData, 1, 78, 4, 0x1003, 256},
            {enFieldSuppliesData, 2, 85, 2, 0x4043, 50},
            {enFieldSuppliesData, 3, 90, 1, 0x1000, 0x7F},
            {enFieldSuppliesData, 4, 94, 0, 0x1001, 0x7F},
            {enFieldSuppliesKey, 5, 94, 2, 0x7777, 0x7777},
            {enFieldSuppliesData, 6, 107, 3, 0x1101, 0x010203},
            {enFieldSuppliesData, 7, 113, 5, 0x1102, 5},
        };
        // clang-format on
        const ReplyLayout layout(EncodeStatusReply(RichReply()));
        QVERIFY(layout.IsAccepted());
        QCOMPARE(UsedLength(layout), 118);
        QCOMPARE(layout.Fields().size(), std::size_t(51));
        for (const stExpected& expected : listExpected) {
            const bool bFound =
                std::any_of(layout.Fields().begin(), layout.Fields().end(), [&expected](const stFieldPlace& field) {
                    return field.enField == expected.enField && field.iIndex == expected.iIndex &&
                           field.iOffset == expected.iOffset && field.iLength == expected.iLength &&
                           field.dwKey == expected.dwKey && field.dwValue == expected.dwValue;
                });
            QVERIFY2(bFound, qPrintable(u"field %1 at %2"_s.arg(expected.enField).arg(expected.iOffset)));
        }
        const auto text = [&layout](enReplyPart enField) {
            const auto found = std::find_if(layout.Fields().begin(), layout.Fields().end(),
                                            [enField](const stFieldPlace& field) { return field.enField == enField; });
            return std::make_pair(found->iOffset, found->iLength);
        };
        QCOMPARE(text(enFieldUnexamined), std::make_pair(0, 7));
        QCOMPARE(text(enFieldVendor), std::make_pair(14, 4));
        QCOMPARE(text(enFieldProduct), std::make_pair(20, 10));
        QCOMPARE(text(enFieldSerial), std::make_pair(32, 3));
        QCOMPARE(text(enFieldFirmware), std::make_pair(40, 4));
        QCOMPARE(text(enFieldFifthString), std::make_pair(46, 4));
    }

    void everyPrefix_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("needed");

        QTest::newRow("rich") << EncodeStatusReply(RichReply()) << 118;
        QTest::newRow("nothing but counts") << EncodeStatusReply(stStatusReply()) << 33;
        QTest::newRow("bytes after the last record") << EncodeStatusReply(RichReply()) + "tail" << 118;

        stStatusReply longTexts = RichReply();
        longTexts.vendorName = QByteArray(300, 'v');
        longTexts.fifthString = QByteArray(700, 'f');
        QTest::newRow("long texts") << EncodeStatusReply(longTexts) << 118 + 296 + 696;

        stStatusReply full;
        for (int i = 0; i < 255; ++i) {
            full.listErrorCode.append(static_cast<quint16>(0x6100 + i));
            full.listWarningCode.append(static_cast<quint16>(0x5200 + i));
            full.listSupplies.append(Record(0x4043, QByteArray(1, static_cast<char>(i))));
        }
        QTest::newRow("full lists") << EncodeStatusReply(full) << 33 + 255 * 8;
        QTest::newRow("largest record") << ReplyWithSupplies({Record(0x0000, QByteArray(65, 's'))}) << 33 + 3 + 65;
    }

    void everyPrefix()
    {
        QFETCH(const QByteArray, reply);
        QFETCH(const int, needed);

        for (int i = 0; i <= reply.size(); ++i) {
            const QByteArray prefix = reply.left(i);
            QCOMPARE(ReplyLayout(prefix).IsAccepted(), i >= needed);
            QCOMPARE(Disagreement(prefix), QByteArray());
        }
    }

    void mutatedReplies()
    {
        const QList<QByteArray> listOriginal = {
            EncodeStatusReply(RichReply()),
            EncodeStatusReply(stStatusReply()),
            ReplyWithSupplies(
                {Record(0x4043, QByteArray(60, 'a')), Record(0x1004, QByteArray(65, 'b')), Record(0x0001, "c")}),
        };
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

    void suppliesLength_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("accepted");

        QTest::newRow("0") << 0 << true;
        QTest::newRow("64") << 64 << true;
        QTest::newRow("65") << 65 << true;
        QTest::newRow("66") << 66 << false;
        QTest::newRow("255") << 255 << false;
    }

    void suppliesLength()
    {
        QFETCH(const int, length);
        QFETCH(const bool, accepted);

        const QByteArray reply = ReplyWithSupplies({Record(0x7777, "x"), Record(0x4043, QByteArray(length, 'd'))});
        const ReplyLayout layout(reply);
        QCOMPARE(layout.Fault(), accepted ? enReplyAccepted : enReplyFatalSupplies);
        QCOMPARE(DecoderEndsTheProcess(reply), !accepted);
        if (!accepted) {
            QCOMPARE(layout.BrokenField().enField, enFieldSuppliesLength);
            QCOMPARE(layout.BrokenField().iIndex, 1);
            QCOMPARE(layout.BrokenField().iOffset, 33 + 4 + 2);
            QCOMPARE(layout.BrokenField().dwValue, static_cast<unsigned long>(length));
            QCOMPARE(UsedLength(layout), 33 + 4 + 3);
        }
    }

    void fatalRecordThatIsNotComplete()
    {
        // The decoder looks for the data first, and so rejects.
        const QByteArray reply = ReplyWithSupplies({Record(0x4043, QByteArray(66, 'd'))});
        const ReplyLayout layout(reply.left(reply.size() - 1));
        QCOMPARE(layout.Fault(), enReplyTruncated);
        QCOMPARE(layout.BrokenField().enField, enFieldSuppliesData);
        QCOMPARE(layout.BrokenField().iOffset, 36);
        QCOMPARE(layout.BrokenField().iLength, 66);
    }

    void bytesAfterTheLastRecord()
    {
        const ReplyLayout layout(EncodeStatusReply(stStatusReply()) + "tail");
        QVERIFY(layout.IsAccepted());
        QCOMPARE(layout.Fields().back().enField, enFieldIgnored);
        QCOMPARE(layout.Fields().back().iOffset, 33);
        QCOMPARE(layout.Fields().back().iLength, 4);
    }

    void recordWithoutData()
    {
        const ReplyLayout layout(
            ReplyWithSupplies({Record(0x1000, QByteArray()), Record(0x7777, QByteArray::fromHex("0907")),
                               Record(0x1001, QByteArray()), Record(0x1002, QByteArray())}));
        std::vector<unsigned long> listValue;
        for (const stFieldPlace& field : layout.Fields()) {
            if (field.enField == enFieldSuppliesData) {
                listValue.push_back(field.dwValue);
            }
        }
        QCOMPARE(listValue, (std::vector<unsigned long>{0, 0x0907, 9, 9}));
    }

    void suppliesKeys()
    {
        const ReplyLayout layout(EncodeStatusReply(RichReply()));
        QVERIFY(layout.HasSupplies(0x0000));
        QVERIFY(layout.HasSupplies(0x4043));
        QVERIFY(layout.HasSupplies(0x7777));
        QVERIFY(!layout.HasSupplies(0x4143));
        QVERIFY(!ReplyLayout(EncodeStatusReply(stStatusReply())).HasSupplies(0x0000));
    }
};

QTEST_APPLESS_MAIN(tst_ReplyLayout)

#include "tst_ReplyLayout.moc"
