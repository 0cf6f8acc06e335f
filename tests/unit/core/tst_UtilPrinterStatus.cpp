// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndingSignal.h"
#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "PrinterText.h"
#include "Rows.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <stdexcept>

namespace {

/// Decodes a copy that ends with its last byte, so that a memory checker sees a read beyond it.
bool Decode(UtilPrinterStatus& decoder, const QByteArray& reply)
{
    std::vector<unsigned char> bytes(reply.begin(), reply.end());
    bytes.shrink_to_fit();
    return decoder.parseRecvBuf(bytes.data(), bytes.size());
}

int Check(TrdGetPrinterStatus& worker, const QByteArray& reply)
{
    std::vector<unsigned char> bytes(reply.begin(), reply.end());
    return worker.CheckPrinterStatus(bytes.data(), bytes.size());
}

QString Word(unsigned long dwNumber)
{
    return QString::number(dwNumber, 16);
}

QString Word(const std::vector<unsigned long>& listNumber)
{
    QStringList listWord;
    std::transform(listNumber.begin(), listNumber.end(), std::back_inserter(listWord),
                   [](unsigned long dwNumber) { return Word(dwNumber); });
    return listWord.join(QLatin1Char(','));
}

/// All bytes of a raw field, which are two or four and a zero; all of a text but for the zeros at its end.
template <std::size_t iSize>
QString Word(const std::array<char, iSize>& text)
{
    const QByteArray bytes(text.data(), static_cast<int>(iSize));
    return iSize <= 5 ? QString::fromLatin1(bytes.toHex())
                      : QString::fromLatin1(bytes).remove(QRegularExpression(u"\\x00+\\z"_s));
}

template <typename... Fields>
QString Words(const Fields&... fields)
{
    return QStringList{Word(fields)...}.join(QLatin1Char(' '));
}

/// Every field but the numbers of supplies, in the order of the reply.
QString FieldsOf(const UtilPrinterStatus& d)
{
    return Words(d.m_byHeader, d.m_headerField1, d.m_headerField2, d.m_vendorNameLength, d.m_dwVendorNameLength,
                 d.m_vendorName, d.m_productNameLength, d.m_dwProductNameLength, d.m_productName,
                 d.m_serialNumberLength, d.m_dwSerialNumberLength, d.m_serialNumber, d.m_afterSerialNumber,
                 d.m_byStatus, d.m_dwStatus, d.m_firmwareVersionLength, d.m_firmwareVersion, d.m_fifthStringLength,
                 d.m_dwFifthStringLength, d.m_fifthString) +
           u" | "_s +
           Words(d.m_byErrorCount, d.m_dwErrorCount, d.m_lastErrorCode, d.m_listErrorCode, d.m_byWarningCount,
                 d.m_dwWarningCount, d.m_lastWarningCode, d.m_listWarningCode, d.m_byBeforeSupplies,
                 d.m_beforeSupplies1, d.m_beforeSupplies2, d.m_bySuppliesCount, d.m_dwSuppliesCount,
                 d.m_supplySerialNumber);
}

/// The numbers of supplies that are not 0: the end of their members' names, number and raw bytes.
QStringList SuppliesOf(const UtilPrinterStatus& decoder)
{
    QStringList listNumber;
#define VORA_ADD(enKey, wKey, iBytes, Stem, ...)                                                                       \
    if (decoder.m_dw##Stem != 0 || decoder.m_raw##Stem != decltype(decoder.m_raw##Stem){}) {                           \
        listNumber.append(u"" #Stem " "_s + Words(decoder.m_dw##Stem, decoder.m_raw##Stem));                           \
    }
    VORA_SUPPLIES_OF_REPLY(VORA_ADD)
#undef VORA_ADD
    return listNumber;
}

const QStringList c_listHandMadeSupplies =
    u"SupplyType 10203 0001020300|RemainingToner 12c 012c00|WasteToner 7 000700|OPCRotation 1234 123400|"
    "NumberOfPages 100 0000010000|NumberOfPrint 5 0000000500|PrintDotsCount 3e8 03e800|"
    "PrinterNumOfPages 10000 0001000000|PrinterNumOfPrint 1020304 0102030400|BlackInkRemainer 32 003200|"
    "BlueInkRemainer 33 003300|RedInkRemainer 34 003400|YellowInkRemainer 35 003500"_s.split(QLatin1Char('|'));

} // namespace

class tst_UtilPrinterStatus : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_worker.m_printerManager = stPrinterManager(); }

    void newDecoderIsZero()
    {
        // Memory that was something else before shows a field that nobody sets.
        alignas(UtilPrinterStatus) std::array<unsigned char, sizeof(UtilPrinterStatus)> memory;
        memory.fill(0xEE);
        auto* pDecoder = new (memory.data()) UtilPrinterStatus;
        QCOMPARE(SuppliesOf(*pDecoder), QStringList());
        QCOMPARE(
            FieldsOf(*pDecoder),
            u"0 000000 000000 000000 0  000000 0  000000 0  000000 0 0 000000  000000 0  | 0 0 000000  0 0 000000  "
            "0 000000 000000 0 0 "_s);
        pDecoder->~UtilPrinterStatus();
    }

    void storesEveryRawField()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, HandMadeReply() + QByteArray(1000, '\xFF'))); // bytes behind the reply are ignored
        QCOMPARE(
            FieldsOf(decoder),
            u"a1 b1b200 c1c200 000400 4 Vora 000500 5 RA7QX 000600 6 SN1234 d1d200 10 10 000500 2.1.7 000300 3 xyz "
            "| 2 2 615600 6110,6156 1 1 616000 6160 e1 f1f200 f3f400 e e INK42"_s);
        QCOMPARE(SuppliesOf(decoder), c_listHandMadeSupplies);
    }

    void givesAddressOfStatusByte()
    {
        UtilPrinterStatus decoder;
        QCOMPARE(decoder.getPrinterStatusValue(), &decoder.m_byStatus);
    }

    void everyNumberHasItsKey()
    {
        const QList<stGoldenKey> listKey = GoldenNumberKeys();
        QCOMPARE(static_cast<int>(listKey.size()), static_cast<int>(c_listHandMadeSupplies.size())); // which are all
        QCOMPARE(static_cast<int>(listKey.size()), static_cast<int>(c_enSuppliesNumberList.size()));
        for (int i = 0; i < listKey.size(); ++i) {
            const stGoldenKey& key = listKey.at(i);
            // The log calls one member otherwise.
            const QString strField = key.strField == u"enSpplyType"_s ? u"SupplyType"_s : key.strField.mid(2);
            QVERIFY2(c_listHandMadeSupplies.at(i).startsWith(strField + QLatin1Char(' ')), qPrintable(strField));
            if (key.wKey != 0x1003) { // it sets prints, too
                UtilPrinterStatus decoder;
                QVERIFY(Decode(decoder, ReplyWithSupplies({{key.wKey, "\xF1\xF2\xF3\xF4"}})));
                const QString strRaw = u"f1f2f3f4"_s.left(key.iBytes * 2) + u"00"_s;
                QCOMPARE(SuppliesOf(decoder), QStringList{strField + u" f1f2f3f4 "_s + strRaw});
            }
        }
    }

    void unknownSuppliesKeyIsSkipped()
    {
        QList<quint16> listKey = {0xFFFF};
        for (const stGoldenKey& key : GoldenKeys()) {
            listKey.append(static_cast<quint16>(key.wKey ^ 0x8000));
        }
        QVERIFY(listKey.size() > 1);
        for (const quint16 wKey : std::as_const(listKey)) {
            UtilPrinterStatus decoder; // its bytes are consumed: the record that follows is found
            QVERIFY(Decode(decoder, ReplyWithSupplies({{wKey, "\x7F\x7F"}, {0x4043, QByteArray("\0\x32", 2)}})));
            QCOMPARE(SuppliesOf(decoder), QStringList{u"BlackInkRemainer 32 003200"_s});
            QCOMPARE(Word(decoder.m_supplySerialNumber), QString());
        }
    }

    /// Records in hexadecimal digits, with a stroke between them.
    void supplies_data() { AddRows(u"supplies-records.json"_s, {"records", "numbers"}); }
    void supplies()
    {
        QFETCH(const QString, records);
        const char chCount = static_cast<char>(records.count(QLatin1Char('|')) + 1);
        UtilPrinterStatus decoder; // before the count it is the empty reply: 32 bytes
        QVERIFY(Decode(decoder, QByteArray(32, '\0') + chCount + QByteArray::fromHex(records.toLatin1())));
        QTEST(SuppliesOf(decoder).join(QLatin1Char('|')), "numbers");
    }

    void longTextIsCut()
    {
        for (const int iSize : {254, 255, 256, 65535}) {
            stStatusReply reply;
            reply.vendorName = QByteArray(iSize, 'v');
            reply.productName = QByteArray(iSize, 'p');
            reply.serialNumber = QByteArray(iSize, 's');
            reply.firmwareVersion = QByteArray(iSize, 'f');
            reply.fifthString = QByteArray(iSize, 'x');
            reply.listErrorCode = {0x6100};
            UtilPrinterStatus decoder;
            QVERIFY(Decode(decoder, EncodeStatusReply(reply)));
            const auto kept = [iSize](char ch) { return QString(std::min(iSize, 255), QLatin1Char(ch)); };
            QCOMPARE(FieldsOf(decoder),
                     u"0 000000 000000 %1 %2 %3 %1 %2 %4 %1 %2 %5 000000 0 0 %1 %6 %1 %2 %7 "
                     "| 1 1 610000 6100 0 0 000000  0 000000 000000 0 0 "_s.arg(
                         QString::asprintf("%04x00", static_cast<unsigned>(iSize)), QString::number(iSize, 16),
                         kept('v'), kept('p'), kept('s'), kept('f'), kept('x')));
            QCOMPARE(Check(m_worker, EncodeStatusReply(reply)), 0);
            QCOMPARE(m_state.strFWVersion, kept('f'));
        }
    }

    void supplySerialNumberIsCutTo64Bytes()
    {
        for (const int iSize : {63, 64, 65}) {
            QCOMPARE(Check(m_worker, ReplyWithSupplies({{0x0000, QByteArray(iSize, 'a')}})), 0);
            QCOMPARE(m_state.strSupplySerialNumber, QString(std::min(iSize, 64), QLatin1Char('a')));
        }
    }

    void rejectedReplyKeepsWhatWasStored()
    {
        const auto rejected = [](const QByteArray& reply) {
            UtilPrinterStatus decoder;
            return Decode(decoder, reply) ? throw std::logic_error("accepted") : decoder;
        };
        QVERIFY(FieldsOf(rejected(HandMadeReply().left(7))).startsWith(u"0 000000 "_s));
        QVERIFY(FieldsOf(rejected(HandMadeReply().left(8))).startsWith(u"a1 000000 "_s));
        QCOMPARE(SuppliesOf(rejected(HandMadeReply().chopped(1))), c_listHandMadeSupplies.mid(0, 12));
        const QByteArray head(25, '\0'); // before the error count it is the empty reply
        QCOMPARE(rejected(head + QByteArray::fromHex("03 6100 6105")).m_listErrorCode,
                 (std::vector<unsigned long>{0x6100, 0x6105}));
        // Half a code is no number of warnings.
        QCOMPARE(rejected(head + QByteArray::fromHex("01 61")).m_byWarningCount, 0);
    }

    void serialNumberMayBeAbsent()
    {
        UtilPrinterStatus decoder;
        decoder.setSuppliesData(0x0000, nullptr, 0); // no number is computed of it, which would end the program
        QCOMPARE(Word(decoder.m_supplySerialNumber), QString());
    }

    void oversizedSuppliesRecordEndsTheProcess()
    {
        const auto ending = [](const QByteArray& reply) {
            return EndingSignal([&reply] {
                UtilPrinterStatus decoder;
                Decode(decoder, reply);
            });
        };
        const QByteArray tooLong(66, 's');
        QCOMPARE(ending(ReplyWithSupplies({{0x0000, tooLong.left(65)}})), 0);
        QCOMPARE(ending(ReplyWithSupplies({{0x0000, tooLong}})), SIGABRT);
        QCOMPARE(ending(ReplyWithSupplies({{0x7777, tooLong}})), SIGABRT); // an unknown key
        QCOMPARE(ending(ReplyWithSupplies({{0x1000, "x"}, {0x4043, QByteArray(255, 's')}})), SIGABRT);
        QCOMPARE(ending(ReplyWithSupplies({{0x0000, tooLong}}).chopped(1)), 0); // not all there
    }

    void textEndsAtItsFirstZero()
    {
        stStatusReply reply;
        reply.vendorName = QByteArray("Vo\0ra", 5);
        reply.productName = QByteArray("\0RA7", 4);
        reply.firmwareVersion = "2.1";
        reply.listSupplies = {{0x0000, QByteArray("IN\0K", 4)}};
        QCOMPARE(Check(m_worker, EncodeStatusReply(reply)), 0);
        QCOMPARE(Text(m_state), u"|3|2.1|Vo||||IN|0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s);
    }

    void eachReplyReplacesTheWholeState()
    {
        m_worker.m_printerManager.printerInfo.strPrinterName = u"Queue"_s;
        QCOMPARE(Check(m_worker, HandMadeReply()), 0);
        QCOMPARE(Text(m_worker.m_printerManager), u"Queue||0|| "_s + c_strHandMadeState);

        m_state.iReadFailCount = 4;
        m_state.enSpplyType = 9;
        QCOMPARE(Check(m_worker, ReplyInState(c_iNoState)), 0);
        QCOMPARE(Text(m_worker.m_printerManager), u"Queue||0|| |0|||||||0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s);
    }

private:
    TrdGetPrinterStatus m_worker;
    stPrinterState& m_state = m_worker.m_printerManager.printerState;
};

QTEST_APPLESS_MAIN(tst_UtilPrinterStatus)

#include "tst_UtilPrinterStatus.moc"
