// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndingSignal.h"
#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "PrinterText.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <QtTest>

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

template <typename Raw>
QString Hex(const Raw& raw)
{
    return QString::fromLatin1(QByteArray(raw.data(), static_cast<int>(raw.size())).toHex());
}

/// The text with all that stands in its array, but for the zeros at the end.
template <typename Array>
QString All(const Array& text)
{
    const auto iEnd = std::find_if(text.rbegin(), text.rend(), [](char ch) { return ch != '\0'; }) - text.rbegin();
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()) - static_cast<int>(iEnd));
}

QString Numbers(const std::vector<unsigned long>& listNumber)
{
    QStringList listText;
    for (const unsigned long dwNumber : listNumber) {
        listText.append(QString::number(dwNumber, 16));
    }
    return listText.join(QLatin1Char(' '));
}

/// Every field but the numbers of supplies: in the order of the reply, raw bytes and numbers in hexadecimal digits.
QStringList Fields(const UtilPrinterStatus& decoder)
{
    const auto line = [](const QStringList& listField) { return listField.join(QLatin1Char(' ')); };
    const UtilPrinterStatus& d = decoder;
    return {
        line({Numbers({d.m_byHeader}), Hex(d.m_headerField1), Hex(d.m_headerField2)}),
        line({Hex(d.m_vendorNameLength), Numbers({d.m_dwVendorNameLength}), All(d.m_vendorName)}),
        line({Hex(d.m_productNameLength), Numbers({d.m_dwProductNameLength}), All(d.m_productName)}),
        line({Hex(d.m_serialNumberLength), Numbers({d.m_dwSerialNumberLength}), All(d.m_serialNumber)}),
        line({Hex(d.m_afterSerialNumber), Numbers({d.m_byStatus, d.m_dwStatus})}),
        line({Hex(d.m_firmwareVersionLength), All(d.m_firmwareVersion)}),
        line({Hex(d.m_fifthStringLength), Numbers({d.m_dwFifthStringLength}), All(d.m_fifthString)}),
        line({Numbers({d.m_byErrorCount, d.m_dwErrorCount}), Hex(d.m_lastErrorCode), Numbers(d.m_listErrorCode)}),
        line({Numbers({d.m_byWarningCount, d.m_dwWarningCount}), Hex(d.m_lastWarningCode),
              Numbers(d.m_listWarningCode)}),
        line({Numbers({d.m_byBeforeSupplies}), Hex(d.m_beforeSupplies1), Hex(d.m_beforeSupplies2)}),
        line({Numbers({d.m_bySuppliesCount, d.m_dwSuppliesCount}), All(d.m_supplySerialNumber)}),
    };
}

/// The numbers of supplies that are not 0: the end of their members' names, number and raw bytes.
QStringList Supplies(const UtilPrinterStatus& decoder)
{
    QStringList listNumber;
    const auto add = [&listNumber](const QString& strName, unsigned long dwNumber, const QString& strRaw) {
        if (dwNumber != 0 || strRaw.count(QLatin1Char('0')) != strRaw.size()) {
            listNumber.append(strName + QLatin1Char(' ') + QString::number(dwNumber) + QLatin1Char(' ') + strRaw);
        }
    };
#define VORA_ADD(enKey, wKey, iBytes, Stem, ...) add(u"" #Stem##_s, decoder.m_dw##Stem, Hex(decoder.m_raw##Stem));
    VORA_SUPPLIES_OF_REPLY(VORA_ADD)
#undef VORA_ADD
    return listNumber;
}

QStringList SuppliesOf(const QList<stSuppliesRecord>& listSupplies)
{
    UtilPrinterStatus decoder;
    return Decode(decoder, ReplyWithSupplies(listSupplies)) ? Supplies(decoder) : QStringList{u"rejected"_s};
}

const QStringList c_listHandMadeSupplies = {u"SupplyType 66051 0001020300"_s,
                                            u"RemainingToner 300 012c00"_s,
                                            u"WasteToner 7 000700"_s,
                                            u"OPCRotation 4660 123400"_s,
                                            u"NumberOfPages 256 0000010000"_s,
                                            u"NumberOfPrint 5 0000000500"_s,
                                            u"PrintDotsCount 1000 03e800"_s,
                                            u"PrinterNumOfPages 65536 0001000000"_s,
                                            u"PrinterNumOfPrint 16909060 0102030400"_s,
                                            u"BlackInkRemainer 50 003200"_s,
                                            u"BlueInkRemainer 51 003300"_s,
                                            u"RedInkRemainer 52 003400"_s,
                                            u"YellowInkRemainer 53 003500"_s};

/// The log calls one member otherwise.
QString DecoderField(const stGoldenKey& key)
{
    return key.strField == QLatin1String("enSpplyType") ? u"SupplyType"_s : key.strField.mid(2);
}

} // namespace

class tst_UtilPrinterStatus : public QObject
{
    Q_OBJECT

private slots:
    void newDecoderIsZero()
    {
        // Memory that was something else before shows a field that nobody sets.
        alignas(UtilPrinterStatus) std::array<unsigned char, sizeof(UtilPrinterStatus)> memory;
        memory.fill(0xEE);
        auto* pDecoder = new (memory.data()) UtilPrinterStatus;
        QCOMPARE(Supplies(*pDecoder), QStringList());
        QCOMPARE(Fields(*pDecoder).join(QLatin1Char('|')),
                 u"0 000000 000000|000000 0 |000000 0 |000000 0 |000000 0 0|000000 |000000 0 |0 0 000000 |0 0 000000 |"
                 "0 000000 000000|0 0 "_s);
        pDecoder->~UtilPrinterStatus();
    }

    void storesEveryRawField()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, HandMadeReply() + QByteArray(1000, '\xFF'))); // bytes behind the reply are ignored
        QCOMPARE(Fields(decoder).join(QLatin1Char('|')),
                 u"a1 b1b200 c1c200|000400 4 Vora|000500 5 RA7QX|000600 6 SN1234|d1d200 10 10|000500 2.1.7|"
                 "000300 3 xyz|2 2 615600 6110 6156|1 1 616000 6160|e1 f1f200 f3f400|e e INK42"_s);
        QCOMPARE(Supplies(decoder), c_listHandMadeSupplies);
    }

    void givesAddressOfStatusByte()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyInState(0x23)));
        QCOMPARE(*decoder.getPrinterStatusValue(), 0x23);
        *decoder.getPrinterStatusValue() = 0x11;
        QCOMPARE(decoder.m_byStatus, 0x11);
    }

    void numberOfSuppliesValue()
    {
        const std::array<unsigned char, 65> data{0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6};
        const std::array<unsigned long, 7> listNumber{0xF1, 0xF1, 0xF1F2, 0xF1F2F3, 0xF1F2F3F4, 0xF1, 0xF1};
        for (std::size_t i = 0; i < listNumber.size(); ++i) {
            QCOMPARE(UtilPrinterStatus::byteToDWORD(data.data(), i), listNumber.at(i));
        }
        QCOMPARE(UtilPrinterStatus::byteToDWORD(data.data(), 65), 0xF1UL);
    }

    void everyNumberHasItsKey()
    {
        QStringList listField;
        for (const stGoldenKey& key : GoldenNumberKeys()) {
            listField.append(DecoderField(key));
        }
        QStringList listMember;
        for (const QString& strNumber : c_listHandMadeSupplies) { // which are all, see storesEveryRawField
            listMember.append(strNumber.section(QLatin1Char(' '), 0, 0));
        }
        QCOMPARE(listMember, listField);
        QCOMPARE(static_cast<int>(c_enSuppliesNumberList.size()), static_cast<int>(listField.size()));
    }

    void suppliesKey_data()
    {
        QTest::addColumn<quint16>("wKey");
        QTest::addColumn<QString>("strNumber");
        for (const stGoldenKey& key : GoldenNumberKeys()) {
            if (key.wKey != 0x1003) { // see pagesSetPrintsToo
                const QString strRaw = u"f1f2f3f4"_s.left(key.iBytes * 2) + u"00"_s;
                QTest::newRow(qPrintable(key.strName)) << key.wKey << DecoderField(key) + u" 4059231220 "_s + strRaw;
            }
        }
    }

    void suppliesKey()
    {
        QFETCH(quint16, wKey);
        QFETCH(QString, strNumber);
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{wKey, "\xF1\xF2\xF3\xF4"}})));
        QCOMPARE(Supplies(decoder), QStringList{strNumber});
        QCOMPARE(All(decoder.m_supplySerialNumber), QString());
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
            QCOMPARE(Supplies(decoder), QStringList{u"BlackInkRemainer 50 003200"_s});
            QCOMPARE(All(decoder.m_supplySerialNumber), QString());
        }
    }

    void pagesSetPrintsToo()
    {
        const stSuppliesRecord pages{0x1003, QByteArray("\0\0\1\0", 4)};
        const stSuppliesRecord prints{0x1004, QByteArray("\0\0\0\5", 4)};
        const QString strPages = u"NumberOfPages 256 0000010000"_s;
        const QString strSamePrints = u"NumberOfPrint 256 0000010000"_s;
        QCOMPARE(SuppliesOf({pages}), (QStringList{strPages, strSamePrints}));
        QCOMPARE(SuppliesOf({pages, prints}), (QStringList{strPages, u"NumberOfPrint 5 0000000500"_s}));
        QCOMPARE(SuppliesOf({prints, pages}), (QStringList{strPages, strSamePrints}));
    }

    void longCounterYieldsItsFirstByte()
    {
        QCOMPARE(SuppliesOf({{0x1000, "\1\x2C"}, {0x1001, "\x7F"}, {0x1102, "\1\2\3\4\5\6"}}),
                 (QStringList{u"RemainingToner 300 012c00"_s, u"WasteToner 127 7f0000"_s,
                              u"PrinterNumOfPrint 1 0102030400"_s}));
    }

    void emptyRecordHasFirstByteOfTheOneBefore()
    {
        QCOMPARE(SuppliesOf({{0x4043, ""}}), QStringList());
        // Known key or not, and across a record that is empty itself.
        QCOMPARE(SuppliesOf({{0x1000, "\x21\x22"}, {0x4143, ""}, {0x4243, ""}, {0x7777, "\x31"}, {0x4343, ""}}),
                 (QStringList{u"RemainingToner 8482 212200"_s, u"BlueInkRemainer 33 000000"_s,
                              u"RedInkRemainer 33 000000"_s, u"YellowInkRemainer 49 000000"_s}));
    }

    void longTextIsCut_data()
    {
        QTest::addColumn<int>("iSize");
        QTest::addColumn<int>("iKept");
        QTest::addColumn<QString>("strLength");
        QTest::newRow("254 bytes") << 254 << 254 << u"00fe00"_s;
        QTest::newRow("255 bytes") << 255 << 255 << u"00ff00"_s;
        QTest::newRow("256 bytes") << 256 << 255 << u"010000"_s;
        QTest::newRow("65535 bytes") << 65535 << 255 << u"ffff00"_s;
    }

    void longTextIsCut()
    {
        QFETCH(int, iSize);
        QFETCH(int, iKept);
        QFETCH(QString, strLength);
        stStatusReply reply;
        reply.vendorName = QByteArray(iSize, 'v');
        reply.productName = QByteArray(iSize, 'p');
        reply.serialNumber = QByteArray(iSize, 's');
        reply.firmwareVersion = QByteArray(iSize, 'f');
        reply.fifthString = QByteArray(iSize, 'x');
        reply.wAfterSerialNumber = 0xD1D2;
        reply.byStatus = 0x21;
        reply.listErrorCode = {0x6100};
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, EncodeStatusReply(reply)));
        const auto kept = [&](char ch) { return QString(iKept, QLatin1Char(ch)); };
        const QString strBoth = strLength + QLatin1Char(' ') + QString::number(iSize, 16) + QLatin1Char(' ');
        QCOMPARE(Fields(decoder).mid(1, 7),
                 (QStringList{strBoth + kept('v'), strBoth + kept('p'), strBoth + kept('s'), u"d1d200 21 21"_s,
                              strLength + QLatin1Char(' ') + kept('f'), strBoth + kept('x'), u"1 1 610000 6100"_s}));
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, EncodeStatusReply(reply)), 0);
        QCOMPARE(worker.m_printerManager.printerState.strFWVersion, kept('f'));
    }

    void supplySerialNumberIsCutTo64Bytes()
    {
        for (const int iSize : {63, 64, 65}) {
            TrdGetPrinterStatus worker;
            QCOMPARE(Check(worker, ReplyWithSupplies({{0x0000, QByteArray(iSize, 'a')}})), 0);
            QCOMPARE(worker.m_printerManager.printerState.strSupplySerialNumber,
                     QString(std::min(iSize, 64), QLatin1Char('a')));
        }
        QCOMPARE(SuppliesOf({{0x0000, "INK42"}}), QStringList()); // it is no number
    }

    void rejectedReplyKeepsWhatWasStored()
    {
        UtilPrinterStatus seven;
        QVERIFY(!Decode(seven, HandMadeReply().left(7)));
        QCOMPARE(Fields(seven).first(), u"0 000000 000000"_s);
        UtilPrinterStatus eight;
        QVERIFY(!Decode(eight, HandMadeReply().left(8)));
        QCOMPARE(Fields(eight).first(), u"a1 000000 000000"_s);
        UtilPrinterStatus shortened;
        QVERIFY(!Decode(shortened, HandMadeReply().chopped(1)));
        QCOMPARE(Supplies(shortened), c_listHandMadeSupplies.mid(0, 12));
    }

    void missingErrorCodeIsRejected()
    {
        // Up to the error count it is the empty reply: 25 bytes.
        UtilPrinterStatus decoder;
        QVERIFY(!Decode(decoder, QByteArray(25, '\0') + QByteArray::fromHex("03 6100 6105")));
        QCOMPARE(decoder.m_listErrorCode, (std::vector<unsigned long>{0x6100, 0x6105}));
        UtilPrinterStatus half; // half a code is no number of warnings
        QVERIFY(!Decode(half, QByteArray(25, '\0') + QByteArray::fromHex("01 61")));
        QCOMPARE(half.m_byWarningCount, 0);
    }

    void fullListsAreDecoded()
    {
        stStatusReply reply;
        for (quint16 i = 0; i < 255; ++i) {
            reply.listErrorCode.append(0x6100 + i);
            reply.listWarningCode.append(0x9200 + i);
            reply.listSupplies.append(MakeSuppliesRecord(enSuppliesBlackInk, i));
        }
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, EncodeStatusReply(reply)));
        QCOMPARE(decoder.m_listErrorCode.size(), std::size_t(255));
        QCOMPARE(decoder.m_listErrorCode.back(), 0x61FEUL);
        QCOMPARE(decoder.m_listWarningCode.size(), std::size_t(255));
        QCOMPARE(decoder.m_listWarningCode.back(), 0x92FEUL);
        QCOMPARE(decoder.m_dwSuppliesCount, 255UL);
        QCOMPARE(decoder.m_dwBlackInkRemainer, 254UL);
    }

    void serialNumberMayBeAbsent()
    {
        const auto store = [] {
            UtilPrinterStatus decoder;
            decoder.setSuppliesData(0x0000, nullptr, 0); // no number is computed of it
        };
        QCOMPARE(EndingSignal(store), 0);
    }

    void oversizedSuppliesRecordEndsTheProcess_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("iSignal");
        const QByteArray tooLong(66, 's');
        QTest::newRow("65 bytes") << ReplyWithSupplies({{0x0000, tooLong.left(65)}}) << 0;
        QTest::newRow("66 bytes") << ReplyWithSupplies({{0x0000, tooLong}}) << SIGABRT;
        QTest::newRow("66 bytes, unknown key") << ReplyWithSupplies({{0x7777, tooLong}}) << SIGABRT;
        QTest::newRow("66 bytes, second record") << ReplyWithSupplies({{0x1000, "x"}, {0x4043, tooLong}}) << SIGABRT;
        QTest::newRow("255 bytes") << ReplyWithSupplies({{0x1000, QByteArray(255, 's')}}) << SIGABRT;
        QTest::newRow("66 bytes that are not all there") << ReplyWithSupplies({{0x0000, tooLong}}).chopped(1) << 0;
    }

    void oversizedSuppliesRecordEndsTheProcess()
    {
        QFETCH(QByteArray, reply);
        const auto decode = [&] {
            UtilPrinterStatus decoder;
            Decode(decoder, reply);
        };
        QTEST(EndingSignal(decode), "iSignal");
    }

    void replyWithoutCountsIsEmptyState()
    {
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, QByteArray(33, '\0')), 0);
        QCOMPARE(Text(worker.m_printerManager.printerState), u"|3|||||||0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s);
    }

    void textEndsAtItsFirstZero()
    {
        stStatusReply reply;
        reply.vendorName = QByteArray("Vo\0ra", 5);
        reply.productName = QByteArray("\0RA7", 4);
        reply.firmwareVersion = "2.1";
        reply.listSupplies = {{0x0000, QByteArray("IN\0K", 4)}};
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, EncodeStatusReply(reply)), 0);
        QCOMPARE(Text(worker.m_printerManager.printerState), u"|3|2.1|Vo||||IN|0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s);
    }

    void eachReplyReplacesTheWholeState()
    {
        TrdGetPrinterStatus worker;
        worker.m_printerManager.printerInfo.strPrinterName = u"Queue"_s;
        QCOMPARE(Check(worker, HandMadeReply()), 0);
        QCOMPARE(Text(worker.m_printerManager), u"Queue||0|| "_s + c_strHandMadeState);

        stPrinterState& state = worker.m_printerManager.printerState;
        state.iReadFailCount = 4;
        state.enSpplyType = 9;
        const QString strBefore = Text(state);
        stStatusReply reply;
        reply.vendorName = "Other";
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 1)};
        QCOMPARE(Check(worker, EncodeStatusReply(reply).chopped(1)), -1); // rejected: nothing changes
        QCOMPARE(Text(state), strBefore);

        QCOMPARE(Check(worker, ReplyInState(c_iNoState)), 0);
        QCOMPARE(Text(worker.m_printerManager), u"Queue||0|| |0|||||||0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s);
    }
};

QTEST_APPLESS_MAIN(tst_UtilPrinterStatus)

#include "tst_UtilPrinterStatus.moc"
