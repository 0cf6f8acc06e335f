// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "UtilStatusIdParser.h"

#include <QSet>
#include <QtTest>

#include <limits>

namespace {

using uLong = unsigned long;

constexpr uLong c_dwAllBits = std::numeric_limits<uLong>::max();

/// Each value has a row, no two rows have one raw code or one name.
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

/// Every raw code of 16 bits has its row's value or 0, and so have the others that are given.
template <typename Mapping>
void CompareWithRows(const QList<stGoldenCode>& listCode, Mapping mapping, const QList<uLong>& listLonger)
{
    QMap<uLong, int> valueOf;
    for (const stGoldenCode& code : Sent(listCode)) {
        valueOf.insert(static_cast<uLong>(code.iRawCode), code.iValue);
    }
    QList<uLong> listRaw = listLonger;
    for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
        listRaw.append(dwRaw);
    }
    for (const uLong dwRaw : std::as_const(listRaw)) {
        QVERIFY2(mapping(dwRaw) == valueOf.value(dwRaw), qPrintable(QString::number(dwRaw, 16)));
    }
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

    void rawStatus()
    {
        // No high bit is dropped.
        CompareWithRows(GoldenStates(), GetPrinterStatusEnum,
                        {0x10003, 0x100000000, 0x100000003, c_dwAllBits - 35, c_dwAllBits});
        for (uLong dwRaw = 0; dwRaw <= 0xFF; ++dwRaw) { // never version mismatch, off-line or error
            const int iStatus = GetPrinterStatusEnum(dwRaw);
            QVERIFY2(iStatus != 1 && iStatus != 2 && iStatus != 7, qPrintable(QString::number(dwRaw, 16)));
        }
    }

    void rawError()
    {
        CompareWithRows(GoldenErrors(), GetErrorStatusEnum, {0x15200, 0x16154, 0x80006154, 0x100006154, c_dwAllBits});
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
