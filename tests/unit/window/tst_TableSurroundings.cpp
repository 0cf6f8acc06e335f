// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QtTest>

namespace {

constexpr int c_iPrinters = 100;

QList<stPrinterManager> Printers(int iCount)
{
    QList<stPrinterManager> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append(MakePrinter(u"Printer%1"_s.arg(i)));
    }
    return listPrinter;
}

} // namespace

/// What a user sees of the table around its cells, and what stays of it when the list is new.
class tst_TableSurroundings : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    }

    void rowsAreNumbered()
    {
        ShowPrinters(*m_pWindow, Printers(c_iPrinters));
        const QHeaderView* pNumbers = Table()->verticalHeader();
        QVERIFY(pNumbers->isVisible());
        QTRY_VERIFY(pNumbers->width() >= pNumbers->fontMetrics().horizontalAdvance(u"100"_s));
        for (const int iRow : {0, 1, c_iPrinters - 1}) {
            QCOMPARE(Table()->model()->headerData(iRow, Qt::Vertical).toString(), QString::number(iRow + 1));
            QVERIFY(!pNumbers->isSectionHidden(iRow));
        }
    }

    void headersStandInSight()
    {
        const QHeaderView* pHeader = Table()->horizontalHeader();
        QVERIFY(pHeader->isVisible());
        QVERIFY(pHeader->height() >= pHeader->fontMetrics().height());
        for (int iColumn = 0; iColumn < 4; ++iColumn) {
            QVERIFY(!pHeader->isSectionHidden(iColumn));
            QCOMPARE(pHeader->visualIndex(iColumn), iColumn);
        }
        QCOMPARE(pHeader->sectionPosition(3), 120 + 150 + 345);
    }

    void linesPartTheCells()
    {
        QVERIFY(Table()->showGrid());
        QVERIFY(Table()->isEnabled());
        QVERIFY(!Table()->alternatingRowColors());
    }

    void scrollBarIsThereWhenRowsAreManyAlone()
    {
        ShowPrinters(*m_pWindow, Printers(2));
        QTRY_VERIFY(!Table()->verticalScrollBar()->isVisible());
        ShowPrinters(*m_pWindow, Printers(c_iPrinters));
        QTRY_VERIFY(Table()->verticalScrollBar()->isVisible());
    }

    void placeStaysWithANewList_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("first"); // row that stands at the top
        QTest::newRow("as many printers") << c_iPrinters << 40;
        QTest::newRow("more printers") << c_iPrinters + 10 << 40;
        QTest::newRow("fewer printers") << c_iPrinters - 10 << 40;
    }

    void placeStaysWithANewList()
    {
        QFETCH(const int, count);
        QFETCH(const int, first);
        ShowPrinters(*m_pWindow, Printers(c_iPrinters));
        QTRY_VERIFY(Table()->verticalScrollBar()->maximum() > first);
        Table()->verticalScrollBar()->setValue(first);
        ShowPrinters(*m_pWindow, Printers(count));
        QCoreApplication::processEvents();
        QCOMPARE(Table()->rowCount(), count);
        QCOMPARE(Table()->rowAt(0), first);
    }

    void selectionEndsWithANewList()
    {
        ShowPrinters(*m_pWindow, Printers(5));
        Table()->setCurrentCell(3, 1);
        ShowPrinters(*m_pWindow, Printers(5));
        QCOMPARE(Table()->currentRow(), -1);
        QVERIFY(!Table()->selectionModel()->hasSelection());
    }

    void anyCellsCanBeSelected()
    {
        QCOMPARE(Table()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(Table()->selectionBehavior(), QAbstractItemView::SelectItems);
        QCOMPARE(Table()->focusPolicy(), Qt::StrongFocus);
    }

    void widthsStayWithANewList()
    {
        Table()->setColumnWidth(0, 200); // by the user
        ShowPrinters(*m_pWindow, Printers(c_iPrinters));
        QCoreApplication::processEvents();
        QCOMPARE(Table()->columnWidth(0), 200);
        QCOMPARE(Table()->columnWidth(1), 150);
        QCOMPARE(Table()->columnWidth(2), 345);
        QCOMPARE(Table()->horizontalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
    }

    void cleanup() { m_pWindow.reset(); }
};

QTEST_MAIN(tst_TableSurroundings)

#include "tst_TableSurroundings.moc"
