// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "UtilStatusIdParser.h"

#include <QSet>
#include <QtTest>

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace {

using uLong = unsigned long;

constexpr uLong c_dwAllBits = std::numeric_limits<uLong>::max();

int ExpectedValue(const QList<stGoldenCode>& listCode, uLong dwRawCode)
{
    const auto found = std::find_if(listCode.begin(), listCode.end(), [dwRawCode](const stGoldenCode& code) {
        return code.iRawCode >= 0 && static_cast<uLong>(code.iRawCode) == dwRawCode;
    });
    return found == listCode.end() ? 0 : found->iValue;
}

void AddRows(const QList<stGoldenCode>& listCode, std::initializer_list<uLong> listUnknown)
{
    QTest::addColumn<uLong>("raw");
    QTest::addColumn<int>("value");
    for (const stGoldenCode& code : Sent(listCode)) {
        QTest::addRow("0x%04X", code.iRawCode) << static_cast<uLong>(code.iRawCode) << code.iValue;
    }
    for (const uLong dwUnknown : listUnknown) {
        QTest::addRow("unknown 0x%lX", dwUnknown) << dwUnknown << 0;
    }
}

/// Each value has a row, no two rows have one raw code or one name, and only value 0 is called unknown.
void CompareWithCount(const QList<stGoldenCode>& listCode, int iCount)
{
    QCOMPARE(static_cast<int>(listCode.size()), iCount);
    QSet<QString> setName;
    QSet<int> setRawCode;
    for (int i = 0; i < iCount; ++i) {
        QCOMPARE(listCode.at(i).iValue, i);
        setName.insert(listCode.at(i).strName);
        QVERIFY(!listCode.at(i).strName.isEmpty());
    }
    for (const stGoldenCode& code : Sent(listCode)) {
        setRawCode.insert(code.iRawCode);
    }
    QCOMPARE(static_cast<int>(setName.size()), iCount);
    QCOMPARE(setRawCode.size(), Sent(listCode).size());
}

} // namespace

class tst_UtilStatusIdParser : public QObject
{
    Q_OBJECT

private slots:
    void everyValueHasItsRow()
    {
        CompareWithCount(GoldenStates(), enStatusCount);
        CompareWithCount(GoldenErrors(), enErrorCount);
        QCOMPARE(c_stStatusCodeList.size(), static_cast<std::size_t>(Sent(GoldenStates()).size()));
        QCOMPARE(c_stErrorCodeList.size(), static_cast<std::size_t>(Sent(GoldenErrors()).size()));
    }

    void rawStatus_data()
    {
        // 0x100000003 and its like: no high bit is dropped.
        AddRows(GoldenStates(),
                {c_iNoState, 0x100, 0x110, 0x10003, 0x100000000, 0x100000003, c_dwAllBits - 35, c_dwAllBits});
    }

    void rawStatus()
    {
        QFETCH(const uLong, raw);
        QTEST(static_cast<int>(GetPrinterStatusEnum(raw)), "value");
    }

    void everyOtherStatusIsUnknown()
    {
        const QList<stGoldenCode> listState = GoldenStates();
        for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
            QVERIFY2(GetPrinterStatusEnum(dwRaw) == ExpectedValue(listState, dwRaw),
                     qPrintable(QString::number(dwRaw, 16)));
        }
    }

    void statusIsNeverVersionMismatchOfflineOrError()
    {
        for (uLong dwRaw = 0; dwRaw <= 0xFF; ++dwRaw) {
            const int iStatus = GetPrinterStatusEnum(dwRaw);
            QVERIFY2(iStatus != 1 && iStatus != 2 && iStatus != 7, qPrintable(QString::number(dwRaw, 16)));
        }
    }

    void rawError_data()
    {
        // 0x100006154 and its like: no high bit is dropped.
        AddRows(GoldenErrors(), {0, 1, 45, c_iNoError, 0x15200, 0x16154, 0x80006154, 0x100006154, c_dwAllBits});
    }

    void rawError()
    {
        QFETCH(const uLong, raw);
        QTEST(static_cast<int>(GetErrorStatusEnum(raw)), "value");
    }

    void everyErrorHasOneRawCode()
    {
        for (const stGoldenCode& code : GoldenErrors().mid(1)) {
            int iCodes = 0;
            for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
                iCodes += GetErrorStatusEnum(dwRaw) == code.iValue ? 1 : 0;
            }
            QVERIFY2(iCodes == 1, qPrintable(code.strName));
        }
    }

    void everyOtherErrorIsUnknown()
    {
        const QList<stGoldenCode> listError = GoldenErrors();
        for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
            QVERIFY2(GetErrorStatusEnum(dwRaw) == ExpectedValue(listError, dwRaw),
                     qPrintable(QString::number(dwRaw, 16)));
        }
    }

    void tonerTypeIsNotInterpreted()
    {
        for (const uLong dwRaw : {0ul, 1ul, 2ul, 0xFFul, 0xFFFFFFFFul, c_dwAllBits}) {
            QCOMPARE(static_cast<int>(GetTonerTypeEnum(dwRaw)), 0);
        }
    }
};

QTEST_MAIN(tst_UtilStatusIdParser)

#include "tst_UtilStatusIdParser.moc"
