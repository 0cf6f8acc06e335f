// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusEncoder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <QRandomGenerator>
#include <QtTest>

#include <array>

/// What the encoder writes the decoder reads back, field by field.
class tst_StatusRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void decoderReadsBackWhatWasWritten();
};

namespace {

constexpr quint32 c_dwSeed = 20261116;
constexpr int c_iReplies = 100000;

struct stCodeOf
{
    quint16 wRaw;
    int iValue;
};

// Raw codes and what they mean; one code of each table is none that is known.
const QList<stCodeOf> c_listState = {{0x00, 3},  {0x01, 4},  {0x02, 5},  {0x03, 6},  {0x10, 8},  {0x11, 9}, {0x12, 10},
                                     {0x13, 11}, {0x20, 12}, {0x21, 13}, {0x22, 14}, {0x23, 15}, {0x24, 0}, {0xFF, 0}};
const QList<stCodeOf> c_listError = {
    {0x5200, 1},  {0x6143, 2},  {0x6144, 3},  {0x120A, 4},  {0x7200, 5},  {0x6210, 6},  {0x6211, 7},  {0x6201, 8},
    {0x6203, 9},  {0x5121, 10}, {0x6100, 11}, {0x6105, 12}, {0x6110, 13}, {0x6112, 14}, {0x6120, 15}, {0x6121, 16},
    {0x6122, 17}, {0x6131, 18}, {0x6132, 19}, {0x6139, 20}, {0x6140, 21}, {0x6145, 22}, {0x6170, 23}, {0x6171, 24},
    {0x6160, 25}, {0x6161, 26}, {0x6162, 27}, {0x6163, 28}, {0x6164, 29}, {0x6165, 30}, {0x6150, 31}, {0x6151, 32},
    {0x6152, 33}, {0x6153, 34}, {0x6154, 35}, {0x6155, 36}, {0x6156, 37}, {0x6181, 38}, {0x6182, 39}, {0x615A, 40},
    {0x615B, 41}, {0x6800, 42}, {0x9200, 43}, {0x9201, 44}, {0x5201, 45}, {0x6157, 0}};

/// One random reply and what must be read from it.
class RandomReply
{
public:
    explicit RandomReply(QRandomGenerator& random) : m_random(random)
    {
        m_reply.unexamined = Bytes(7);
        m_reply.byHeader = static_cast<quint8>(Below(0x100));
        m_reply.wHeaderField1 = Word();
        m_reply.wHeaderField2 = Word();
        m_reply.wAfterSerialNumber = Word();
        m_reply.byBeforeSupplies = static_cast<quint8>(Below(0x100));
        m_reply.wBeforeSupplies1 = Word();
        m_reply.wBeforeSupplies2 = Word();
        m_reply.vendorName = Text(255);
        m_reply.productName = Text(255);
        m_reply.serialNumber = Text(255);
        m_reply.firmwareVersion = Text(255);
        m_reply.fifthString = Text(255);
        m_state.strVenderName = QString::fromLatin1(m_reply.vendorName);
        m_state.strProductName = QString::fromLatin1(m_reply.productName);
        m_state.strPrinterSerialNumber = QString::fromLatin1(m_reply.serialNumber);
        m_state.strFWVersion = QString::fromLatin1(m_reply.firmwareVersion);
        const stCodeOf& state = c_listState.at(Below(static_cast<int>(c_listState.size())));
        m_reply.byStatus = static_cast<quint8>(state.wRaw);
        m_state.enCurrentStatus = state.iValue;
        AddCodes(m_reply.listErrorCode, m_state.listErrorStatus);
        AddCodes(m_reply.listWarningCode, m_state.listWarningStatus);
        AddSupplies();
    }

    stStatusReply m_reply;
    stPrinterState m_state;
    quint32 m_dwSupplyType = 0;

private:
    int Below(int iLimit) { return m_random.bounded(iLimit); }
    quint16 Word() { return static_cast<quint16>(Below(0x10000)); }

    QByteArray Bytes(int iSize)
    {
        QByteArray bytes(iSize, '\0');
        std::generate(bytes.begin(), bytes.end(), [this] { return static_cast<char>(Below(0x100)); });
        return bytes;
    }

    /// Any byte but the zero, at which a reader of texts stops; mostly short.
    QByteArray Text(int iMaxSize)
    {
        QByteArray text(Below(4) == 0 ? Below(iMaxSize + 1) : Below(20), '\0');
        std::generate(text.begin(), text.end(), [this] { return static_cast<char>(1 + Below(0xFF)); });
        return text;
    }

    void AddCodes(QList<quint16>& listRaw, QList<enErrorStatus>& listValue)
    {
        for (int i = Below(50) == 0 ? Below(256) : Below(5); i > 0; --i) {
            const stCodeOf& code = c_listError.at(Below(static_cast<int>(c_listError.size())));
            listRaw.append(code.wRaw);
            listValue.append(static_cast<enErrorStatus>(code.iValue));
        }
    }

    /// Some of the numbers in the printer's width for them.
    template <typename Value>
    void AddNumber(quint16 wKey, bool bWide, Value& value)
    {
        if (Below(3) > 0) {
            const quint32 dwNumber = bWide ? m_random.generate() : Word();
            const stSuppliesRecord record = MakeSuppliesRecord(static_cast<enSuppliesKey>(wKey), dwNumber);
            m_reply.listSupplies.append(record);
            value = dwNumber;
        }
    }

    void AddSupplies()
    {
        if (Below(3) > 0) {
            const QByteArray text = Text(64);
            m_reply.listSupplies.append({0x0000, text});
            m_state.strSupplySerialNumber = QString::fromLatin1(text);
        }
        AddNumber(0x4043, false, m_state.dwBlackInkRemainer);
        AddNumber(0x4143, false, m_state.dwBlueInkRemainer);
        AddNumber(0x4243, false, m_state.dwRedInkRemainer);
        AddNumber(0x4343, false, m_state.dwYellowInkRemainer);
        AddNumber(0x0001, true, m_dwSupplyType);
        AddNumber(0x1000, false, m_state.dwRemainingToner);
        AddNumber(0x1001, false, m_state.dwWasteToner);
        AddNumber(0x1002, false, m_state.dwOPCRotation);
        m_reply.listSupplies.append({0x7F7F, Bytes(Below(66))}); // nobody's
        AddNumber(0x1003, true, m_state.dwNumberOfPages);
        m_state.dwNumberOfPrint = m_state.dwNumberOfPages; // pages count as prints until prints are given
        AddNumber(0x1004, true, m_state.dwNumberOfPrint);
        AddNumber(0x1100, false, m_state.dwPrintDotsCount);
        AddNumber(0x1101, true, m_state.dwPrinterNumOfPages);
        AddNumber(0x1102, true, m_state.dwPrinterNumOfPrint);
    }

    QRandomGenerator& m_random;
};

/// Two raw bytes of the decoder as a number.
int NumberOf(const UtilPrinterStatus::Raw2& raw)
{
    return static_cast<unsigned char>(raw[0]) << 8 | static_cast<unsigned char>(raw[1]);
}

QList<int> NumbersOf(const std::vector<unsigned long>& list)
{
    return {list.begin(), list.end()};
}

QList<int> NumbersOf(const QList<quint16>& list)
{
    return {list.begin(), list.end()};
}

/// What the decoder keeps beyond the state.
void CompareKept(const UtilPrinterStatus& decoder, const RandomReply& expected)
{
    const stStatusReply& reply = expected.m_reply;
    QCOMPARE(static_cast<int>(decoder.m_byHeader), static_cast<int>(reply.byHeader));
    QCOMPARE(NumberOf(decoder.m_headerField1), static_cast<int>(reply.wHeaderField1));
    QCOMPARE(NumberOf(decoder.m_headerField2), static_cast<int>(reply.wHeaderField2));
    QCOMPARE(NumberOf(decoder.m_afterSerialNumber), static_cast<int>(reply.wAfterSerialNumber));
    QCOMPARE(static_cast<int>(decoder.m_byBeforeSupplies), static_cast<int>(reply.byBeforeSupplies));
    QCOMPARE(NumberOf(decoder.m_beforeSupplies1), static_cast<int>(reply.wBeforeSupplies1));
    QCOMPARE(NumberOf(decoder.m_beforeSupplies2), static_cast<int>(reply.wBeforeSupplies2));
    QCOMPARE(static_cast<int>(decoder.m_byStatus), static_cast<int>(reply.byStatus));
    QCOMPARE(QByteArray(decoder.m_fifthString.data()), reply.fifthString);
    QCOMPARE(decoder.m_dwFifthStringLength, static_cast<unsigned long>(reply.fifthString.size()));
    QCOMPARE(NumbersOf(decoder.m_listErrorCode), NumbersOf(reply.listErrorCode));
    QCOMPARE(NumbersOf(decoder.m_listWarningCode), NumbersOf(reply.listWarningCode));
    QCOMPARE(decoder.m_dwSuppliesCount, static_cast<unsigned long>(reply.listSupplies.size()));
    QCOMPARE(decoder.m_dwSupplyType, static_cast<unsigned long>(expected.m_dwSupplyType));
}

void CompareState(const stPrinterState& state, const stPrinterState& expected)
{
    QCOMPARE(state.strPrinterSerialNumber, expected.strPrinterSerialNumber);
    QCOMPARE(state.enCurrentStatus, expected.enCurrentStatus);
    QCOMPARE(state.strFWVersion, expected.strFWVersion);
    QCOMPARE(state.strVenderName, expected.strVenderName);
    QCOMPARE(state.strProductName, expected.strProductName);
    QCOMPARE(state.listErrorStatus, expected.listErrorStatus);
    QCOMPARE(state.listWarningStatus, expected.listWarningStatus);
    QCOMPARE(state.strSupplySerialNumber, expected.strSupplySerialNumber);
    QCOMPARE(state.enSpplyType, 0);
    QCOMPARE(state.dwRemainingToner, expected.dwRemainingToner);
    QCOMPARE(state.dwWasteToner, expected.dwWasteToner);
    QCOMPARE(state.dwBlackInkRemainer, expected.dwBlackInkRemainer);
    QCOMPARE(state.dwBlueInkRemainer, expected.dwBlueInkRemainer);
    QCOMPARE(state.dwRedInkRemainer, expected.dwRedInkRemainer);
    QCOMPARE(state.dwYellowInkRemainer, expected.dwYellowInkRemainer);
    QCOMPARE(state.dwOPCRotation, expected.dwOPCRotation);
    QCOMPARE(state.dwNumberOfPages, expected.dwNumberOfPages);
    QCOMPARE(state.dwNumberOfPrint, expected.dwNumberOfPrint);
    QCOMPARE(state.dwPrintDotsCount, expected.dwPrintDotsCount);
    QCOMPARE(state.dwPrinterNumOfPages, expected.dwPrinterNumOfPages);
    QCOMPARE(state.dwPrinterNumOfPrint, expected.dwPrinterNumOfPrint);
    QCOMPARE(state.iReadFailCount, 0);
}

} // namespace

void tst_StatusRoundTrip::decoderReadsBackWhatWasWritten()
{
    qInfo("%d replies with the seed %u", c_iReplies, c_dwSeed);
    QRandomGenerator random(c_dwSeed);
    TrdGetPrinterStatus worker;
    for (int i = 0; i < c_iReplies && !QTest::currentTestFailed(); ++i) {
        const RandomReply expected(random);
        QByteArray bytes = EncodeStatusReply(expected.m_reply);
        QCOMPARE(bytes.left(7), expected.m_reply.unexamined);
        auto* pBytes = reinterpret_cast<unsigned char*>(bytes.data());
        const auto dwSize = static_cast<unsigned long>(bytes.size());

        UtilPrinterStatus decoder;
        QVERIFY(decoder.parseRecvBuf(pBytes, dwSize));
        CompareKept(decoder, expected);
        UtilPrinterStatus shorter;
        QVERIFY(!shorter.parseRecvBuf(pBytes, dwSize - 1)); // nothing is written behind the last record

        worker.m_printerManager.printerState.iReadFailCount = 3;
        QCOMPARE(worker.CheckPrinterStatus(pBytes, dwSize), 0);
        CompareState(worker.m_printerManager.printerState, expected.m_state);
    }
}

QTEST_APPLESS_MAIN(tst_StatusRoundTrip)

#include "tst_StatusRoundTrip.moc"
