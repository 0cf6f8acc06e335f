// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "StatusEncoder.h"
#include "TrdGetPrinterStatus.h"

#include <QMap>
#include <QRandomGenerator>
#include <QtTest>

namespace {

constexpr quint32 c_dwSeed = 20261116;
constexpr int c_iReplies = 20000;

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
        m_reply.vendorName = Text(255, m_state.strVenderName);
        m_reply.productName = Text(255, m_state.strProductName);
        m_reply.serialNumber = Text(255, m_state.strPrinterSerialNumber);
        m_reply.firmwareVersion = Text(255, m_state.strFWVersion);
        QString strUnseen;
        m_reply.fifthString = Text(255, strUnseen);
        const stGoldenCode& state = c_listState.at(Below(static_cast<int>(c_listState.size())));
        m_reply.byStatus = static_cast<quint8>(state.iRawCode);
        m_state.enCurrentStatus = state.iValue;
        AddCodes(m_reply.listErrorCode, m_state.listErrorStatus);
        AddCodes(m_reply.listWarningCode, m_state.listWarningStatus);
        AddSupplies();
    }

    stStatusReply m_reply;
    stPrinterState m_state;

private:
    int Below(int iLimit) { return m_random.bounded(iLimit); }

    /// Any byte but the zero, at which a reader of texts stops; mostly short.
    QByteArray Text(int iMaxSize, QString& strRead)
    {
        QByteArray text(Below(4) == 0 ? Below(iMaxSize + 1) : Below(20), '\0');
        std::generate(text.begin(), text.end(), [this] { return static_cast<char>(1 + Below(0xFF)); });
        strRead = QString::fromLatin1(text);
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

    /// Some of the numbers, in the printer's width for them.
    void AddSupplies()
    {
        if (Below(3) > 0) {
            m_reply.listSupplies.append({0x0000, Text(64, m_state.strSupplySerialNumber)});
        }
        m_reply.listSupplies.append({0x7F7F, QByteArray(Below(66), 'n')}); // nobody's
        for (const stGoldenKey& key : c_listKey) {
            if (Below(3) > 0) {
                const quint32 dwNumber = key.iBytes == 4 ? m_random.generate() : m_random.bounded(0x10000U);
                m_reply.listSupplies.append(MakeSuppliesRecord(static_cast<enSuppliesKey>(key.wKey), dwNumber));
                if (c_figureMap.contains(key.strField)) {
                    m_state.*c_figureMap.value(key.strField) = dwNumber;
                }
            }
            if (key.wKey == 0x1003) {
                m_state.dwNumberOfPrint = m_state.dwNumberOfPages; // pages count as prints until prints are given
            }
        }
    }

    QRandomGenerator& m_random;
};

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
        stPrinterState& state = worker.m_printerManager.printerState;
        for (int i = 0; i < c_iReplies; ++i) {
            const RandomReply expected(random);
            QByteArray bytes = EncodeStatusReply(expected.m_reply);
            auto* pBytes = reinterpret_cast<unsigned char*>(bytes.data());
            const auto dwSize = static_cast<unsigned long>(bytes.size());
            QCOMPARE(worker.CheckPrinterStatus(pBytes, dwSize - 1), -1); // nothing is written behind the last record
            state.iReadFailCount = 3;
            QCOMPARE(worker.CheckPrinterStatus(pBytes, dwSize), 0);
            QCOMPARE(state.strPrinterSerialNumber, expected.m_state.strPrinterSerialNumber);
            QCOMPARE(state.enCurrentStatus, expected.m_state.enCurrentStatus);
            QCOMPARE(state.strFWVersion, expected.m_state.strFWVersion);
            QCOMPARE(state.strVenderName, expected.m_state.strVenderName);
            QCOMPARE(state.strProductName, expected.m_state.strProductName);
            QCOMPARE(state.listErrorStatus, expected.m_state.listErrorStatus);
            QCOMPARE(state.listWarningStatus, expected.m_state.listWarningStatus);
            QCOMPARE(state.strSupplySerialNumber, expected.m_state.strSupplySerialNumber);
            QCOMPARE(state.enSpplyType, 0);
            for (auto figure = c_figureMap.begin(); figure != c_figureMap.end(); ++figure) {
                QVERIFY2(state.*figure.value() == expected.m_state.*figure.value(), qPrintable(figure.key()));
            }
            QCOMPARE(state.iReadFailCount, 0);
        }
    }
};

QTEST_APPLESS_MAIN(tst_StatusRoundTrip)

#include "tst_StatusRoundTrip.moc"
