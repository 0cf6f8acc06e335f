// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "StatusEncoder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <QMap>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr quint32 c_dwSeed = 20261116;
constexpr int c_iReplies = 100000;

using Figure = unsigned long stPrinterState::*;

const QMap<QString, Figure> c_figureMap = {
#define VORA_FIGURE(enKey, wKey, iBytes, Stem, ...) {QStringLiteral("dw" #Stem), &stPrinterState::dw##Stem},
    VORA_SUPPLIES_OF_STATE(VORA_FIGURE)
#undef VORA_FIGURE
};

/// Raw codes and what they mean, and one that is none.
QList<stGoldenCode> WithUnknown(QList<stGoldenCode> listCode, int iRawCode)
{
    listCode = Sent(listCode);
    listCode.append({0, iRawCode, QString(), QString(), QString()});
    return listCode;
}

const QList<stGoldenCode> c_listState = WithUnknown(GoldenStates(), c_iNoState);
const QList<stGoldenCode> c_listError = WithUnknown(GoldenErrors(), c_iNoError);
const QList<stGoldenKey> c_listKey = GoldenNumberKeys();

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
        const stGoldenCode& state = c_listState.at(Below(static_cast<int>(c_listState.size())));
        m_reply.byStatus = static_cast<quint8>(state.iRawCode);
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
            const stGoldenCode& code = c_listError.at(Below(static_cast<int>(c_listError.size())));
            listRaw.append(static_cast<quint16>(code.iRawCode));
            listValue.append(static_cast<enErrorStatus>(code.iValue));
        }
    }

    /// Some of the numbers in the printer's width for them.
    template <typename Value>
    void AddNumber(const stGoldenKey& key, Value& value)
    {
        if (Below(3) > 0) {
            const quint32 dwNumber = key.iBytes == 4 ? m_random.generate() : Word();
            m_reply.listSupplies.append(MakeSuppliesRecord(static_cast<enSuppliesKey>(key.wKey), dwNumber));
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
        m_reply.listSupplies.append({0x7F7F, Bytes(Below(66))}); // nobody's
        for (const stGoldenKey& key : c_listKey) {
            if (key.strField == QLatin1String("enSpplyType")) {
                AddNumber(key, m_dwSupplyType);
                continue;
            }
            AddNumber(key, m_state.*c_figureMap.value(key.strField));
            if (key.wKey == 0x1003) {
                m_state.dwNumberOfPrint = m_state.dwNumberOfPages; // pages count as prints until prints are given
            }
        }
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
    for (auto figure = c_figureMap.begin(); figure != c_figureMap.end(); ++figure) {
        QVERIFY2(state.*figure.value() == expected.*figure.value(), qPrintable(figure.key()));
    }
    QCOMPARE(state.iReadFailCount, 0);
}

} // namespace

/// What the encoder writes the decoder reads back, field by field.
class tst_StatusRoundTrip : public QObject
{
    Q_OBJECT

private slots:
    void decoderReadsBackWhatWasWritten()
    {
        for (const stGoldenKey& key : c_listKey) {
            QVERIFY2(c_figureMap.contains(key.strField) != (key.strField == QLatin1String("enSpplyType")),
                     qPrintable(key.strName));
        }
        QCOMPARE(c_figureMap.size(), c_listKey.size() - 1);
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
};

QTEST_APPLESS_MAIN(tst_StatusRoundTrip)

#include "tst_StatusRoundTrip.moc"
