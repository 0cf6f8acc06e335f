// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "UtilLanguageCtrl.h"

#include <QtTest>

#include <limits>
#include <type_traits>

namespace {

void AddTextRows(const QList<stGoldenCode>& listCode)
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QString>("english");
    QTest::addColumn<QString>("chinese");
    for (const stGoldenCode& code : listCode) {
        QTest::addRow("%d", code.iValue) << code.iValue << code.strEnglish << code.strChinese;
    }
}

void AddOutsideRows(int iRows)
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("language");
    const int iMin = std::numeric_limits<int>::min();
    const int iMax = std::numeric_limits<int>::max();
    for (const int iRow : {-1, iRows, iRows + 1, iMin, iMax}) {
        QTest::addRow("row %d, English", iRow) << iRow << 0;
        QTest::addRow("row %d, Chinese", iRow) << iRow << 1;
    }
    for (const int iLanguage : {-1, 2, iMin, iMax}) {
        QTest::addRow("first row, language %d", iLanguage) << 0 << iLanguage;
        QTest::addRow("last row, language %d", iLanguage) << iRows - 1 << iLanguage;
    }
}

} // namespace

class tst_UtilLanguageCtrl : public QObject
{
    Q_OBJECT

private slots:
    void tablesHaveOneRowPerValue()
    {
        static_assert(std::is_same_v<decltype(c_strStatusLanguageText), const QString[enStatusCount][2]>);
        static_assert(std::is_same_v<decltype(c_strErrorDescText), const QString[enErrorCount][2]>);
        QCOMPARE(static_cast<int>(GoldenStates().size()), static_cast<int>(enStatusCount));
        QCOMPARE(static_cast<int>(GoldenErrors().size()), static_cast<int>(enErrorCount));
    }

    void statusText_data() { AddTextRows(GoldenStates()); }
    void statusText()
    {
        QFETCH(const int, row);
        QVERIFY(row >= 0 && row < enStatusCount);
        QFETCH(const QString, english);
        QFETCH(const QString, chinese);
        QCOMPARE(GetStatusText(row, 0), english);
        QCOMPARE(GetStatusText(row, 1), chinese);
        QCOMPARE(c_strStatusLanguageText[row][0], english);
        QCOMPARE(c_strStatusLanguageText[row][1], chinese);
    }

    void errorText_data() { AddTextRows(GoldenErrors()); }
    void errorText()
    {
        QFETCH(const int, row);
        QVERIFY(row >= 0 && row < enErrorCount);
        QFETCH(const QString, english);
        QFETCH(const QString, chinese);
        QCOMPARE(GetErrorText(row, 0), english);
        QCOMPARE(GetErrorText(row, 1), chinese);
        QCOMPARE(c_strErrorDescText[row][0], english);
        QCOMPARE(c_strErrorDescText[row][1], chinese);
    }

    void statusOutsideTheTableHasNoText_data() { AddOutsideRows(static_cast<int>(GoldenStates().size())); }
    void statusOutsideTheTableHasNoText()
    {
        QFETCH(const int, row);
        QFETCH(const int, language);
        QCOMPARE(GetStatusText(row, language), QString());
    }

    void errorOutsideTheTableHasNoText_data() { AddOutsideRows(static_cast<int>(GoldenErrors().size())); }
    void errorOutsideTheTableHasNoText()
    {
        QFETCH(const int, row);
        QFETCH(const int, language);
        QCOMPARE(GetErrorText(row, language), QString());
    }
};

QTEST_MAIN(tst_UtilLanguageCtrl)

#include "tst_UtilLanguageCtrl.moc"
