// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "UtilLanguageCtrl.h"

#include <QtTest>

#include <limits>
#include <type_traits>

namespace {

/// A table, which has a row for each value, and the look-up in it, which finds nothing outside.
template <typename Table, typename LookUp>
void Compare(const Table& table, LookUp lookUp, const QList<stGoldenCode>& listCode)
{
    const int iRows = static_cast<int>(listCode.size());
    QCOMPARE(iRows, static_cast<int>(std::size(table)));
    for (int i = 0; i < iRows; ++i) {
        QCOMPARE(table[i][0], listCode.at(i).strEnglish);
        QCOMPARE(table[i][1], listCode.at(i).strChinese);
        QCOMPARE(lookUp(i, 0), listCode.at(i).strEnglish);
        QCOMPARE(lookUp(i, 1), listCode.at(i).strChinese);
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

class tst_UtilLanguageCtrl : public QObject
{
    Q_OBJECT

private slots:
    void statusText()
    {
        static_assert(std::is_same_v<decltype(c_strStatusLanguageText), const QString[enStatusCount][2]>);
        Compare(c_strStatusLanguageText, GetStatusText, GoldenStates());
    }

    void errorText()
    {
        static_assert(std::is_same_v<decltype(c_strErrorDescText), const QString[enErrorCount][2]>);
        Compare(c_strErrorDescText, GetErrorText, GoldenErrors());
    }
};

QTEST_MAIN(tst_UtilLanguageCtrl)

#include "tst_UtilLanguageCtrl.moc"
