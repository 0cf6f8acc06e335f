// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndingSignal.h"
#include "GoldenTable.h"
#include "HandMadeReply.h"
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

using Numbers = QMap<QString, unsigned long>;
using RawValues = QMap<QString, QByteArray>;

/// The numbers of the supplies that are not 0, by the end of their members' names.
Numbers NumbersOf(const UtilPrinterStatus& decoder)
{
    Numbers numbers = {
#define VORA_NUMBER(enKey, wKey, iBytes, Stem, ...) {QStringLiteral("dw" #Stem), decoder.m_dw##Stem},
        VORA_SUPPLIES_OF_REPLY(VORA_NUMBER)
#undef VORA_NUMBER
    };
    for (const QString& strField : numbers.keys(0)) {
        numbers.remove(strField);
    }
    return numbers;
}

template <typename Raw>
QByteArray Hex(const Raw& raw)
{
    return QByteArray(raw.data(), static_cast<int>(raw.size())).toHex();
}

/// Their raw bytes likewise.
RawValues RawValuesOf(const UtilPrinterStatus& decoder)
{
    RawValues rawValues = {
#define VORA_RAW(enKey, wKey, iBytes, Stem, ...) {QStringLiteral("dw" #Stem), Hex(decoder.m_raw##Stem)},
        VORA_SUPPLIES_OF_REPLY(VORA_RAW)
#undef VORA_RAW
    };
    for (const QString& strField : rawValues.keys()) {
        if (rawValues.value(strField).count('0') == rawValues.value(strField).size()) {
            rawValues.remove(strField);
        }
    }
    return rawValues;
}

/// The log calls one member otherwise.
QString DecoderField(const stGoldenKey& key)
{
    return key.strField == QLatin1String("enSpplyType") ? u"dwSupplyType"_s : key.strField;
}

Numbers HandMadeNumbers()
{
    return {{u"dwSupplyType"_s, 0x00010203}, {u"dwRemainingToner"_s, 300},      {u"dwWasteToner"_s, 7},
            {u"dwOPCRotation"_s, 4660},      {u"dwNumberOfPages"_s, 256},       {u"dwNumberOfPrint"_s, 5},
            {u"dwPrintDotsCount"_s, 1000},   {u"dwPrinterNumOfPages"_s, 65536}, {u"dwPrinterNumOfPrint"_s, 16909060},
            {u"dwBlackInkRemainer"_s, 50},   {u"dwBlueInkRemainer"_s, 51},      {u"dwRedInkRemainer"_s, 52},
            {u"dwYellowInkRemainer"_s, 53}};
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
        QCOMPARE(NumbersOf(*pDecoder), Numbers());
        QCOMPARE(RawValuesOf(*pDecoder), RawValues());
        for (const UtilPrinterStatus::Text* pText :
             {&pDecoder->m_vendorName, &pDecoder->m_productName, &pDecoder->m_serialNumber,
              &pDecoder->m_firmwareVersion, &pDecoder->m_fifthString}) {
            QCOMPARE(*pText, UtilPrinterStatus::Text{});
        }
        QCOMPARE(Hex(pDecoder->m_supplySerialNumber), QByteArray(130, '0'));
        for (const UtilPrinterStatus::Raw2& raw :
             {pDecoder->m_headerField1, pDecoder->m_headerField2, pDecoder->m_vendorNameLength,
              pDecoder->m_productNameLength, pDecoder->m_serialNumberLength, pDecoder->m_afterSerialNumber,
              pDecoder->m_firmwareVersionLength, pDecoder->m_fifthStringLength, pDecoder->m_lastErrorCode,
              pDecoder->m_lastWarningCode, pDecoder->m_beforeSupplies1, pDecoder->m_beforeSupplies2}) {
            QCOMPARE(Hex(raw), "000000");
        }
        QCOMPARE((std::vector<int>{pDecoder->m_byHeader, pDecoder->m_byErrorCount, pDecoder->m_byWarningCount,
                                   pDecoder->m_byBeforeSupplies, pDecoder->m_bySuppliesCount}),
                 std::vector<int>(5, 0));
        QCOMPARE((std::vector<unsigned long>{pDecoder->m_dwVendorNameLength, pDecoder->m_dwProductNameLength,
                                             pDecoder->m_dwSerialNumberLength, pDecoder->m_dwFifthStringLength,
                                             pDecoder->m_dwErrorCount, pDecoder->m_dwWarningCount, pDecoder->m_dwStatus,
                                             pDecoder->m_dwSuppliesCount}),
                 std::vector<unsigned long>(8, 0));
        QCOMPARE(*pDecoder->getPrinterStatusValue(), 0);
        QVERIFY(pDecoder->m_listErrorCode.empty() && pDecoder->m_listWarningCode.empty());
        pDecoder->~UtilPrinterStatus();
    }

    void storesEveryRawField()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, HandMadeReply()));
        QCOMPARE(decoder.m_byHeader, 0xA1);
        QCOMPARE(Hex(decoder.m_headerField1), "b1b200");
        QCOMPARE(Hex(decoder.m_headerField2), "c1c200");
        QCOMPARE(Hex(decoder.m_vendorNameLength), "000400");
        QCOMPARE(decoder.m_dwVendorNameLength, 4UL);
        QCOMPARE(decoder.m_vendorName.data(), "Vora");
        QCOMPARE(Hex(decoder.m_productNameLength), "000500");
        QCOMPARE(decoder.m_dwProductNameLength, 5UL);
        QCOMPARE(decoder.m_productName.data(), "RA7QX");
        QCOMPARE(Hex(decoder.m_serialNumberLength), "000600");
        QCOMPARE(decoder.m_dwSerialNumberLength, 6UL);
        QCOMPARE(decoder.m_serialNumber.data(), "SN1234");
        QCOMPARE(Hex(decoder.m_afterSerialNumber), "d1d200");
        QCOMPARE(decoder.m_byStatus, 0x10);
        QCOMPARE(decoder.m_dwStatus, 0x10UL);
        QCOMPARE(Hex(decoder.m_firmwareVersionLength), "000500");
        QCOMPARE(decoder.m_firmwareVersion.data(), "2.1.7");
        QCOMPARE(Hex(decoder.m_fifthStringLength), "000300");
        QCOMPARE(decoder.m_dwFifthStringLength, 3UL);
        QCOMPARE(decoder.m_fifthString.data(), "xyz");
        QCOMPARE(decoder.m_byErrorCount, 2);
        QCOMPARE(decoder.m_dwErrorCount, 2UL);
        QCOMPARE(Hex(decoder.m_lastErrorCode), "615600");
        QCOMPARE(decoder.m_listErrorCode, (std::vector<unsigned long>{0x6110, 0x6156}));
        QCOMPARE(decoder.m_byWarningCount, 1);
        QCOMPARE(decoder.m_dwWarningCount, 1UL);
        QCOMPARE(Hex(decoder.m_lastWarningCode), "616000");
        QCOMPARE(decoder.m_listWarningCode, (std::vector<unsigned long>{0x6160}));
        QCOMPARE(decoder.m_byBeforeSupplies, 0xE1);
        QCOMPARE(Hex(decoder.m_beforeSupplies1), "f1f200");
        QCOMPARE(Hex(decoder.m_beforeSupplies2), "f3f400");
        QCOMPARE(decoder.m_bySuppliesCount, 14);
        QCOMPARE(decoder.m_dwSuppliesCount, 14UL);
        QCOMPARE(decoder.m_supplySerialNumber.data(), "INK42");
        QCOMPARE(NumbersOf(decoder), HandMadeNumbers());
    }

    void givesAddressOfStatusByte()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyInState(0x23)));
        QCOMPARE(*decoder.getPrinterStatusValue(), 0x23);
        *decoder.getPrinterStatusValue() = 0x11;
        QCOMPARE(decoder.m_byStatus, 0x11);
    }

    void numberOfSuppliesValue_data()
    {
        QTest::addColumn<unsigned long>("dwLength");
        QTest::addColumn<unsigned long>("dwValue");
        QTest::newRow("0") << 0UL << 0xF1UL;
        QTest::newRow("1") << 1UL << 0xF1UL;
        QTest::newRow("2") << 2UL << 0xF1F2UL;
        QTest::newRow("3") << 3UL << 0xF1F2F3UL;
        QTest::newRow("4") << 4UL << 0xF1F2F3F4UL;
        QTest::newRow("5") << 5UL << 0xF1UL;
        QTest::newRow("6") << 6UL << 0xF1UL;
        QTest::newRow("65") << 65UL << 0xF1UL;
    }

    void numberOfSuppliesValue()
    {
        QFETCH(unsigned long, dwLength);
        std::array<unsigned char, 65> data{0xF1, 0xF2, 0xF3, 0xF4, 0xF5, 0xF6};
        QTEST(UtilPrinterStatus::byteToDWORD(data.data(), dwLength), "dwValue");
    }

    void everyNumberHasItsKey()
    {
        QStringList listField;
        for (const stGoldenKey& key : GoldenNumberKeys()) {
            listField.append(DecoderField(key));
        }
        QStringList listMember;
#define VORA_MEMBER(enKey, wKey, iBytes, Stem, ...) listMember.append(QStringLiteral("dw" #Stem));
        VORA_SUPPLIES_OF_REPLY(VORA_MEMBER)
#undef VORA_MEMBER
        QCOMPARE(listMember, listField);
    }

    void suppliesKey_data()
    {
        QTest::addColumn<quint16>("wKey");
        QTest::addColumn<QString>("strField");
        QTest::addColumn<int>("iWidth");
        for (const stGoldenKey& key : GoldenNumberKeys()) {
            if (key.wKey != 0x1003) { // see pagesSetPrintsToo
                QTest::newRow(qPrintable(key.strName)) << key.wKey << DecoderField(key) << key.iBytes;
            }
        }
    }

    void suppliesKey()
    {
        QFETCH(quint16, wKey);
        QFETCH(QString, strField);
        QFETCH(int, iWidth);
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{wKey, "\xF1\xF2\xF3\xF4"}})));
        QCOMPARE(NumbersOf(decoder), (Numbers{{strField, 0xF1F2F3F4}}));
        QCOMPARE(RawValuesOf(decoder), (RawValues{{strField, QByteArray("f1f2f3f4").left(iWidth * 2) + "00"}}));
        QCOMPARE(decoder.m_supplySerialNumber.data(), "");
    }

    void unknownSuppliesKeyIsSkipped_data()
    {
        QTest::addColumn<quint16>("wKey");
        for (const stGoldenKey& key : GoldenKeys()) {
            QTest::addRow("%04X with another high byte", key.wKey) << static_cast<quint16>(key.wKey ^ 0x8000);
        }
        QTest::newRow("all bits") << quint16(0xFFFF);
    }

    void unknownSuppliesKeyIsSkipped()
    {
        QFETCH(quint16, wKey);
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{wKey, "\x7F\x7F\x7F\x7F"}})));
        QCOMPARE(NumbersOf(decoder), Numbers());
        QCOMPARE(RawValuesOf(decoder), RawValues());
        QCOMPARE(Hex(decoder.m_supplySerialNumber), QByteArray(130, '0'));

        // Its bytes are consumed: the record that follows is found.
        QVERIFY(Decode(decoder, ReplyWithSupplies({{wKey, "abcde"}, {0x4043, QByteArray("\0\x32", 2)}})));
        QCOMPARE(decoder.m_dwBlackInkRemainer, 50UL);
    }

    void pagesSetPrintsToo()
    {
        const stSuppliesRecord pages{0x1003, QByteArray("\0\0\1\0", 4)};
        const stSuppliesRecord prints{0x1004, QByteArray("\0\0\0\5", 4)};
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({pages})));
        QCOMPARE(NumbersOf(decoder), (Numbers{{u"dwNumberOfPages"_s, 256}, {u"dwNumberOfPrint"_s, 256}}));
        QCOMPARE(Hex(decoder.m_rawNumberOfPages), "0000010000");
        QCOMPARE(Hex(decoder.m_rawNumberOfPrint), "0000010000");

        QVERIFY(Decode(decoder, ReplyWithSupplies({pages, prints})));
        QCOMPARE(decoder.m_dwNumberOfPages, 256UL);
        QCOMPARE(decoder.m_dwNumberOfPrint, 5UL);

        QVERIFY(Decode(decoder, ReplyWithSupplies({prints, pages})));
        QCOMPARE(decoder.m_dwNumberOfPrint, 256UL);
    }

    void longCounterYieldsItsFirstByte()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{0x1000, "\1\x2C"}, {0x1001, "\x7F"}, {0x1102, "\1\2\3\4\5\6"}})));
        QCOMPARE(decoder.m_dwRemainingToner, 300UL);
        QCOMPARE(decoder.m_dwWasteToner, 127UL);
        QCOMPARE(decoder.m_dwPrinterNumOfPrint, 1UL);
        QCOMPARE(Hex(decoder.m_rawPrinterNumOfPrint), "0102030400");
    }

    void emptyRecordHasFirstByteOfTheOneBefore()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{0x4043, ""}})));
        QCOMPARE(decoder.m_dwBlackInkRemainer, 0UL);

        // Known key or not, and across a record that is empty itself.
        QVERIFY(Decode(decoder, ReplyWithSupplies({{0x1000, "\x21\x22"}, {0x4143, ""}, {0x4243, ""}})));
        QCOMPARE(decoder.m_dwBlueInkRemainer, 0x21UL);
        QCOMPARE(decoder.m_dwRedInkRemainer, 0x21UL);
        QVERIFY(Decode(decoder, ReplyWithSupplies({{0x7777, "\x31"}, {0x4343, ""}})));
        QCOMPARE(decoder.m_dwYellowInkRemainer, 0x31UL);
    }

    void longTextIsCut_data()
    {
        QTest::addColumn<int>("iSize");
        QTest::addColumn<int>("iKept");
        QTest::newRow("254 bytes") << 254 << 254;
        QTest::newRow("255 bytes") << 255 << 255;
        QTest::newRow("256 bytes") << 256 << 255;
        QTest::newRow("300 bytes") << 300 << 255;
        QTest::newRow("65535 bytes") << 65535 << 255;
    }

    void longTextIsCut()
    {
        QFETCH(int, iSize);
        QFETCH(int, iKept);
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
        QCOMPARE(QByteArray(decoder.m_vendorName.data()), QByteArray(iKept, 'v'));
        QCOMPARE(QByteArray(decoder.m_productName.data()), QByteArray(iKept, 'p'));
        QCOMPARE(QByteArray(decoder.m_serialNumber.data()), QByteArray(iKept, 's'));
        QCOMPARE(QByteArray(decoder.m_firmwareVersion.data()), QByteArray(iKept, 'f'));
        QCOMPARE(QByteArray(decoder.m_fifthString.data()), QByteArray(iKept, 'x'));
        const auto dwSize = static_cast<unsigned long>(iSize);
        QCOMPARE(decoder.m_dwVendorNameLength, dwSize);
        QCOMPARE(decoder.m_dwProductNameLength, dwSize);
        QCOMPARE(decoder.m_dwSerialNumberLength, dwSize);
        QCOMPARE(decoder.m_dwFifthStringLength, dwSize);
        QCOMPARE(Hex(decoder.m_afterSerialNumber), "d1d200");
        QCOMPARE(decoder.m_dwStatus, 0x21UL);
        QCOMPARE(decoder.m_listErrorCode, (std::vector<unsigned long>{0x6100}));

        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, EncodeStatusReply(reply)), 0);
        QCOMPARE(worker.m_printerManager.printerState.strFWVersion, QString(iKept, QLatin1Char('f')));
    }

    void supplySerialNumberIsCutTo64Bytes()
    {
        TrdGetPrinterStatus worker;
        const QString& strSerialNumber = worker.m_printerManager.printerState.strSupplySerialNumber;
        QCOMPARE(Check(worker, ReplyWithSupplies({{0x0000, QByteArray(63, 'a')}})), 0);
        QCOMPARE(strSerialNumber, QString(63, QLatin1Char('a')));
        QCOMPARE(Check(worker, ReplyWithSupplies({{0x0000, QByteArray(64, 'b')}})), 0);
        QCOMPARE(strSerialNumber, QString(64, QLatin1Char('b')));
        QCOMPARE(Check(worker, ReplyWithSupplies({{0x0000, QByteArray(65, 'c')}})), 0);
        QCOMPARE(strSerialNumber, QString(64, QLatin1Char('c')));
    }

    void supplySerialNumberIsNoNumber()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, ReplyWithSupplies({{0x0000, "INK42"}})));
        QCOMPARE(decoder.m_supplySerialNumber.data(), "INK42");
        QCOMPARE(NumbersOf(decoder), Numbers());
        QCOMPARE(RawValuesOf(decoder), RawValues());
    }

    void rejectedReplyKeepsWhatWasStored()
    {
        UtilPrinterStatus seven;
        QVERIFY(!Decode(seven, HandMadeReply().left(7)));
        QCOMPARE(seven.m_byHeader, 0);

        UtilPrinterStatus eight;
        QVERIFY(!Decode(eight, HandMadeReply().left(8)));
        QCOMPARE(eight.m_byHeader, 0xA1);
        QCOMPARE(Hex(eight.m_headerField1), "000000");

        UtilPrinterStatus shortened;
        QVERIFY(!Decode(shortened, HandMadeReply().chopped(1)));
        QCOMPARE(shortened.m_vendorName.data(), "Vora");
        QCOMPARE(shortened.m_dwRedInkRemainer, 52UL);
        QCOMPARE(shortened.m_dwYellowInkRemainer, 0UL);
    }

    void missingErrorCodeIsRejected()
    {
        // Up to the error count it is the empty reply: 25 bytes.
        UtilPrinterStatus decoder;
        QVERIFY(!Decode(decoder, QByteArray(25, '\0') + QByteArray::fromHex("03 6100 6105")));
        QCOMPARE(decoder.m_listErrorCode, (std::vector<unsigned long>{0x6100, 0x6105}));

        // Half a code is no number of warnings.
        UtilPrinterStatus half;
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

    void trailingBytesAreIgnored()
    {
        UtilPrinterStatus decoder;
        QVERIFY(Decode(decoder, HandMadeReply() + QByteArray(1000, '\xFF')));
        QCOMPARE(NumbersOf(decoder), HandMadeNumbers());
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
        const QByteArray serialNumber = ReplyWithSupplies({{0x0000, QByteArray(66, 's')}});
        QTest::newRow("65 bytes") << ReplyWithSupplies({{0x0000, QByteArray(65, 's')}}) << 0;
        QTest::newRow("66 bytes") << serialNumber << SIGABRT;
        QTest::newRow("66 bytes, unknown key") << ReplyWithSupplies({{0x7777, QByteArray(66, 's')}}) << SIGABRT;
        QTest::newRow("66 bytes, second record")
            << ReplyWithSupplies({{0x1000, "x"}, {0x4043, QByteArray(66, 's')}}) << SIGABRT;
        QTest::newRow("255 bytes") << ReplyWithSupplies({{0x1000, QByteArray(255, 's')}}) << SIGABRT;
        QTest::newRow("66 bytes that are not all there") << serialNumber.chopped(1) << 0;
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

    void convertsTheHandMadeReply()
    {
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, HandMadeReply()), 0);
        const stPrinterState& state = worker.m_printerManager.printerState;
        QCOMPARE(state.strPrinterSerialNumber, u"SN1234"_s);
        QCOMPARE(state.enCurrentStatus, 8);
        QCOMPARE(state.strFWVersion, u"2.1.7"_s);
        QCOMPARE(state.strVenderName, u"Vora"_s);
        QCOMPARE(state.strProductName, u"RA7QX"_s);
        QCOMPARE(state.listErrorStatus,
                 (QList<enErrorStatus>{static_cast<enErrorStatus>(13), static_cast<enErrorStatus>(37)}));
        QCOMPARE(state.listWarningStatus, (QList<enErrorStatus>{static_cast<enErrorStatus>(25)}));
        QCOMPARE(state.strSupplySerialNumber, u"INK42"_s);
        QCOMPARE(state.enSpplyType, 0);
        QCOMPARE(state.dwRemainingToner, 300UL);
        QCOMPARE(state.dwWasteToner, 7UL);
        QCOMPARE(state.dwBlackInkRemainer, 50UL);
        QCOMPARE(state.dwBlueInkRemainer, 51UL);
        QCOMPARE(state.dwRedInkRemainer, 52UL);
        QCOMPARE(state.dwYellowInkRemainer, 53UL);
        QCOMPARE(state.dwOPCRotation, 4660UL);
        QCOMPARE(state.dwNumberOfPages, 256UL);
        QCOMPARE(state.dwNumberOfPrint, 5UL);
        QCOMPARE(state.dwPrintDotsCount, 1000UL);
        QCOMPARE(state.dwPrinterNumOfPages, 65536UL);
        QCOMPARE(state.dwPrinterNumOfPrint, 16909060UL);
        QCOMPARE(state.iReadFailCount, 0);
    }

    void replyWithoutCountsIsEmptyState()
    {
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, QByteArray(33, '\0')), 0);
        const stPrinterState& state = worker.m_printerManager.printerState;
        QCOMPARE(state.enCurrentStatus, 3);
        QVERIFY(state.listErrorStatus.isEmpty() && state.listWarningStatus.isEmpty());
        QCOMPARE(state.dwRemainingToner + state.dwWasteToner + state.dwBlackInkRemainer + state.dwBlueInkRemainer +
                     state.dwRedInkRemainer + state.dwYellowInkRemainer + state.dwOPCRotation + state.dwNumberOfPages +
                     state.dwNumberOfPrint + state.dwPrintDotsCount + state.dwPrinterNumOfPages +
                     state.dwPrinterNumOfPrint,
                 0UL);
        QVERIFY(state.strVenderName.isEmpty() && state.strProductName.isEmpty() && state.strFWVersion.isEmpty());
        QVERIFY(state.strPrinterSerialNumber.isEmpty() && state.strSupplySerialNumber.isEmpty());
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
        QCOMPARE(worker.m_printerManager.printerState.strVenderName, u"Vo"_s);
        QCOMPARE(worker.m_printerManager.printerState.strProductName, QString());
        QCOMPARE(worker.m_printerManager.printerState.strFWVersion, u"2.1"_s);
        QCOMPARE(worker.m_printerManager.printerState.strSupplySerialNumber, u"IN"_s);
    }

    void rejectedReplyLeavesStateUntouched()
    {
        TrdGetPrinterStatus worker;
        QCOMPARE(Check(worker, HandMadeReply()), 0);
        worker.m_printerManager.printerState.iReadFailCount = 4;
        stStatusReply reply;
        reply.vendorName = "Other";
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 1)};
        QCOMPARE(Check(worker, EncodeStatusReply(reply).chopped(1)), -1);
        const stPrinterState& state = worker.m_printerManager.printerState;
        QCOMPARE(state.strVenderName, u"Vora"_s);
        QCOMPARE(state.enCurrentStatus, 8);
        QCOMPARE(state.listErrorStatus.size(), 2);
        QCOMPARE(state.dwBlackInkRemainer, 50UL);
        QCOMPARE(state.iReadFailCount, 4);
    }

    void newReplyReplacesTheWholeState()
    {
        TrdGetPrinterStatus worker;
        worker.m_printerManager.printerInfo.strPrinterName = u"Queue"_s;
        QCOMPARE(Check(worker, HandMadeReply()), 0);
        worker.m_printerManager.printerState.iReadFailCount = 4;
        worker.m_printerManager.printerState.enSpplyType = 9;
        QCOMPARE(Check(worker, ReplyInState(c_iNoState)), 0);
        const stPrinterState& state = worker.m_printerManager.printerState;
        QCOMPARE(state.enCurrentStatus, 0);
        QCOMPARE(state.strVenderName, QString());
        QVERIFY(state.listErrorStatus.isEmpty() && state.listWarningStatus.isEmpty());
        QCOMPARE(state.dwNumberOfPrint, 0UL);
        QCOMPARE(state.enSpplyType, 0);
        QCOMPARE(state.iReadFailCount, 0);
        QCOMPARE(worker.m_printerManager.printerInfo.strPrinterName, u"Queue"_s);
    }
};

QTEST_APPLESS_MAIN(tst_UtilPrinterStatus)

#include "tst_UtilPrinterStatus.moc"
