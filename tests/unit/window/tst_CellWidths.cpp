// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "WindowTest.h"

#include <QStyle>
#include <QTableWidget>
#include <QtTest>

namespace {

const QStringList c_listInkWord = {u"无"_s, u"低"_s, u"较低"_s, u"中"_s, u"高"_s};
constexpr std::array<unsigned long, 5> c_listInkLevel = {0, 10, 30, 50, 100}; // of each word

} // namespace

/// Each text that a row can show without an error or a warning fits its column.
class tst_CellWidths : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
        m_pTable = m_pWindow->findChild<QTableWidget*>();
    }

    void statesFit_data()
    {
        QTest::addColumn<QString>("text");
        for (const stGoldenCode& code : GoldenStates()) {
            QTest::newRow(QByteArray::number(code.iValue).constData()) << code.strChinese;
        }
    }

    void statesFit()
    {
        QFETCH(QString, text);
        stPrinterState state;
        state.enCurrentStatus = QString::fromLatin1(QTest::currentDataTag()).toInt();
        ReportState(*m_pWindow, state);
        QCOMPARE(m_pTable->item(0, 3)->text(), text);
        QVERIFY2(Spare(3) >= 0, qPrintable(QString::number(Spare(3))));
    }

    void inkLevelsFit()
    {
        stPrinterState state;
        for (std::size_t i = 0; i < 5 * 5 * 5 * 5; ++i) {
            const std::array<std::size_t, 4> listWord = {i / 125, i / 25 % 5, i / 5 % 5, i % 5};
            state.dwBlueInkRemainer = c_listInkLevel[listWord[0]];
            state.dwRedInkRemainer = c_listInkLevel[listWord[1]];
            state.dwYellowInkRemainer = c_listInkLevel[listWord[2]];
            state.dwBlackInkRemainer = c_listInkLevel[listWord[3]];
            ReportState(*m_pWindow, state);
            const auto word = [&](std::size_t iColour) {
                return c_listInkWord.at(static_cast<int>(listWord[iColour]));
            };
            const QString strText =
                u"青色：%1   红色：%2   黄色：%3   黑色：%4"_s.arg(word(0), word(1), word(2), word(3));
            QCOMPARE(m_pTable->item(0, 2)->text(), strText);
            QVERIFY2(Spare(2) >= 0, qPrintable(strText));
        }
    }

    void cleanupTestCase() { m_pWindow.reset(); }

private:
    /// The pixels that the first row's text leaves of its column, without margins and grid.
    int Spare(int iColumn) const
    {
        const int iMargin = m_pTable->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_pTable) + 1;
        const QString strText = m_pTable->item(0, iColumn)->text();
        return m_pTable->columnWidth(iColumn) - 1 - 2 * iMargin - m_pTable->fontMetrics().horizontalAdvance(strText);
    }

    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
    QTableWidget* m_pTable = nullptr;
};

QTEST_MAIN(tst_CellWidths)

#include "tst_CellWidths.moc"
