// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "UtilLanguageCtrl.h"
#include "UtilStatusIdParser.h"

#include <QSet>
#include <QtTest>

#include <limits>
#include <type_traits>

namespace {

using uLong = unsigned long;

constexpr uLong c_dwAllBits = std::numeric_limits<uLong>::max();

/// Each value has a row, no two rows have one raw code or one name.
void CompareWithCount(const QList<stGoldenCode>& listCode, int iCount)
{
    QCOMPARE(static_cast<int>(listCode.size()), iCount);
    QSet<QString> setName{QString()};
    for (int i = 0; i < iCount; ++i) {
        QCOMPARE(listCode.at(i).iValue, i);
        setName.insert(listCode.at(i).strName);
    }
    QCOMPARE(static_cast<int>(setName.size()), iCount + 1);
    QSet<int> setRawCode;
    for (const stGoldenCode& code : Sent(listCode)) {
        setRawCode.insert(code.iRawCode);
    }
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

/// A table, which has a row for each value, and the look-up in it, which finds nothing outside.
template <typename Table, typename LookUp>
void CompareTexts(const Table& table, LookUp lookUp, const QList<stGoldenCode>& listCode)
{
    const int iRows = static_cast<int>(listCode.size());
    QCOMPARE(iRows, static_cast<int>(std::size(table)));
    for (int i = 0; i < iRows; ++i) {
        QCOMPARE(table[i][0], listCode.at(i).strEnglish);
        QCOMPARE(table[i][1], listCode.at(i).strChinese);
        QCOMPARE(lookUp(i, enLanguageEnglish), listCode.at(i).strEnglish);
        QCOMPARE(lookUp(i, enLanguageChinese), listCode.at(i).strChinese);
    }
    const int iMin = std::numeric_limits<int>::min();
    const int iMax = std::numeric_limits<int>::max();
    for (const int iRow : {-1, iRows, iRows + 1, iMin, iMax}) {
        QCOMPARE(lookUp(iRow, 0), QString());
        QCOMPARE(lookUp(iRow, 1), QString());
    }
    for (const int iLanguage : {-1, 2, iMin, iMax}) {
        QCOMPARE(lookUp(0, iLanguage), QString());
        QCOMPARE(lookUp(iRows - 1, iLanguage), QString());
    }
}

} // namespace

/// What StatusCodes.def makes of the printer's states and errors.
class tst_StatusCodes : public QObject
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

    void statusText()
    {
        static_assert(std::is_same_v<decltype(c_strStatusLanguageText), const QString[enStatusCount][2]>);
        CompareTexts(c_strStatusLanguageText, GetStatusText, GoldenStates());
    }

    void errorText()
    {
        static_assert(std::is_same_v<decltype(c_strErrorDescText), const QString[enErrorCount][2]>);
        CompareTexts(c_strErrorDescText, GetErrorText, GoldenErrors());
    }

    void tonerTypeIsNotInterpreted()
    {
        for (const uLong dwRaw : {0ul, 1ul, 2ul, 0xFFul, 0xFFFFFFFFul, c_dwAllBits}) {
            QCOMPARE(static_cast<int>(GetTonerTypeEnum(dwRaw)), 0);
        }
    }
};

QTEST_MAIN(tst_StatusCodes)

#include "tst_StatusCodes.moc"
