// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenColumns.h"
#include "TrdGetPrinterStatus.h"
#include "WindowTest.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <future>
#include <thread>

namespace {

constexpr int c_iPrinters = 100; // more than are in sight

} // namespace

/// The table's cells, what a user sees around them, what stays when the list is new, and the workers of its rows.
class tst_PrinterTable : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        MakeWindow();
        m_pWindow->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_pWindow.get()));
    }

    void cleanup() { m_pWindow.reset(); }

    void columnsHaveTheirHeadersAndWidths()
    {
        QHeaderView* pHeader = Table()->horizontalHeader();
        const QList<stGoldenColumn> listColumn = GoldenColumns();
        QCOMPARE(Table()->columnCount(), static_cast<int>(listColumn.size()));
        QVERIFY(pHeader->isVisible());
        QVERIFY(pHeader->height() >= pHeader->fontMetrics().height());
        QVERIFY(pHeader->stretchLastSection());
        pHeader->setStretchLastSection(false); // shows the width that the last column was given
        for (int i = 0; i < listColumn.size(); ++i) {
            QCOMPARE(Table()->horizontalHeaderItem(i)->text(), listColumn.at(i).strHeader);
            QCOMPARE(Table()->columnWidth(i), listColumn.at(i).iWidth);
            QVERIFY(!pHeader->isSectionHidden(i));
            QCOMPARE(pHeader->visualIndex(i), i);
            QCOMPARE(pHeader->sectionResizeMode(i), QHeaderView::Interactive);
        }
        QVERIFY(!pHeader->sectionsMovable());
    }

    void rowsAreNumberedAndScrolledWhenMany()
    {
        ShowPrinters(*m_pWindow, MakePrinters(2));
        QTRY_VERIFY(!Table()->verticalScrollBar()->isVisible());
        ShowPrinters(*m_pWindow, MakePrinters(c_iPrinters));
        QTRY_VERIFY(Table()->verticalScrollBar()->isVisible());
        const QHeaderView* pNumbers = Table()->verticalHeader();
        QVERIFY(pNumbers->isVisible());
        QTRY_VERIFY(pNumbers->width() >= pNumbers->fontMetrics().horizontalAdvance(u"100"_s));
        for (const int iRow : {0, 1, c_iPrinters - 1}) {
            QCOMPARE(Table()->model()->headerData(iRow, Qt::Vertical).toString(), QString::number(iRow + 1));
            QVERIFY(!pNumbers->isSectionHidden(iRow));
        }
    }

    void cellsCanBeSelectedAlone()
    {
        QCOMPARE(Table()->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(!Table()->horizontalHeader()->sectionsClickable());
        QVERIFY(!Table()->isSortingEnabled());
        QVERIFY(!Table()->wordWrap());
        QVERIFY(Table()->showGrid());
        QVERIFY(Table()->isEnabled());
        QVERIFY(!Table()->alternatingRowColors());
        QCOMPARE(Table()->selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(Table()->selectionBehavior(), QAbstractItemView::SelectItems);
        QCOMPARE(Table()->focusPolicy(), Qt::StrongFocus);
        QVERIFY(Table()->tabKeyNavigation());
        QCOMPARE(Table()->textElideMode(), Qt::ElideRight);
    }

    void placeAndSizesStayWithANewList_data()
    {
        QTest::addColumn<int>("count");
        QTest::newRow("as many printers") << c_iPrinters;
        QTest::newRow("more printers") << c_iPrinters + 10;
        QTest::newRow("fewer printers") << c_iPrinters - 10;
    }

    /// The sizes are those that the user gave.
    void placeAndSizesStayWithANewList()
    {
        QFETCH(const int, count);
        ShowPrinters(*m_pWindow, MakePrinters(c_iPrinters));
        QTRY_VERIFY(Table()->verticalScrollBar()->maximum() > 40);
        Table()->verticalScrollBar()->setValue(40);
        QCOMPARE(Table()->horizontalHeader()->sectionResizeMode(0), QHeaderView::Interactive);
        QCOMPARE(Table()->verticalHeader()->sectionResizeMode(41), QHeaderView::Interactive);
        Table()->setColumnWidth(0, 200);
        Table()->setRowHeight(41, 77);
        ShowPrinters(*m_pWindow, MakePrinters(count));
        QCoreApplication::processEvents();
        QCOMPARE(Table()->rowCount(), count);
        QCOMPARE(Table()->rowAt(0), 40);
        QCOMPARE(Table()->columnWidth(0), 200);
        QCOMPARE(Table()->columnWidth(1), GoldenColumns().at(1).iWidth);
        QCOMPARE(Table()->columnWidth(2), GoldenColumns().at(2).iWidth);
        QCOMPARE(Table()->rowHeight(41), 77);
    }

    void selectionEndsWithANewList()
    {
        ShowPrinters(*m_pWindow, MakePrinters(5));
        Table()->setCurrentCell(3, 1);
        ShowPrinters(*m_pWindow, MakePrinters(5));
        QCOMPARE(Table()->currentRow(), -1);
        QVERIFY(!Table()->selectionModel()->hasSelection());
    }

    void cellHasItsTextAsToolTip()
    {
        ShowPrinters(*m_pWindow, {MakePrinter(u"Office & <home>"_s), MakePrinter(u"<b>Office</b> & home"_s)});
        QCOMPARE(Cell(1, 0), u"<b>Office</b> & home"_s);
        QCOMPARE(Table()->item(0, 0)->toolTip(), u"Office & <home>"_s);
        QCOMPARE(Table()->item(1, 0)->toolTip(), u"<span>&lt;b&gt;Office&lt;/b&gt; &amp; home</span>"_s);
        QCOMPARE(Table()->item(0, 2)->toolTip(), c_strNoInk);
    }

    void reportsWaitForTheLock()
    {
        for (const bool bList : {true, false}) {
            ShowPrinters(*m_pWindow, {MakePrinter(u"Office"_s)});
            std::atomic<bool> bHeld{false};
            std::atomic<bool> bReleased{false};
            const auto holding = std::async(std::launch::async, [&] {
                const std::lock_guard lock(g_mutexPrinterList);
                bHeld = true;
                std::this_thread::sleep_for(std::chrono::milliseconds(100));
                bReleased = true;
            });
            QTRY_VERIFY(bHeld);
            bList ? m_pWindow->SlotUpdatePrinterList() : m_pWindow->SlotUpdatePrinterStatus(0);
            QVERIFY(bReleased);
        }
    }

    void newRowsShowIdentityAndDefaults_data()
    {
        QTest::addColumn<int>("connectType");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("connection");
        const QString strAddress = u"192.168.1.20"_s;
        QTest::newRow("USB with a port") << 1 << strAddress << u"USB"_s;
        QTest::newRow("network") << 2 << strAddress << u"网络(192.168.1.20)"_s;
        QTest::newRow("record that nobody filled") << 0 << QString() << u"网络()"_s;
        QTest::newRow("port with a format") << 2 << u"%1%s"_s << u"网络(%1%s)"_s;
    }

    /// Whatever was known of their states.
    void newRowsShowIdentityAndDefaults()
    {
        QFETCH(int, connectType);
        QFETCH(QString, port);
        QFETCH(QString, connection);
        stPrinterManager printer = MakePrinter(u"二楼 %s"_s, connectType, port);
        printer.printerState.enCurrentStatus = enStatusReady;
        printer.printerState.dwBlueInkRemainer = 50;
        ShowPrinters(*m_pWindow, {MakePrinter(u"Office"_s), printer});
        QCOMPARE(Table()->rowCount(), 2);
        QCOMPARE(Cell(0, 0), u"Office"_s);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(Cell(1, 0), u"二楼 %s"_s);
            QCOMPARE(Cell(1, 1), connection);
            QCOMPARE(Cell(1, 2), c_strNoInk);
            QCOMPARE(Cell(1, 3), u"脱机"_s);
            m_pWindow->SlotUpdatePrinterStatus(1);
            QCOMPARE(Cell(1, 3), u"就绪"_s);
            m_pWindow->SlotUpdatePrinterList();
        }
        QCOMPARE(Table()->horizontalHeaderItem(0)->text(), GoldenColumns().constFirst().strHeader);
    }

    void inkLevelHasItsWord()
    {
        const QList<QPair<QString, QList<unsigned long>>> listWord = {
            {u"高"_s, {100, 70}},
            {u"中"_s, {69, 40, 4294967346UL}}, // taken as a signed 32-bit integer: 50
            {u"较低"_s, {39, 16}},
            {u"低"_s, {15, 1}},
            {u"无"_s, {0, 101, 255, 2147483647, 2147483648, 4294967291, 4294967296, 18446744073709551611UL}}};
        for (const auto& [strWord, listLevel] : listWord) {
            for (const unsigned long dwLevel : listLevel) {
                QCOMPARE(QString::fromUtf8(m_pWindow->GetRemainInkStr(static_cast<int>(dwLevel))), strWord);
                stPrinterState state;
                state.dwBlueInkRemainer = state.dwRedInkRemainer = dwLevel;
                state.dwYellowInkRemainer = state.dwBlackInkRemainer = dwLevel;
                ReportState(*m_pWindow, state);
                QCOMPARE(Cell(0, 2), u"青色：%1   红色：%1   黄色：%1   黑色：%1"_s.arg(strWord));
            }
        }
    }

    void inkWordsStandInTheirOrder()
    {
        stPrinterState state;
        state.dwBlueInkRemainer = 100;
        state.dwRedInkRemainer = 40;
        state.dwYellowInkRemainer = 16;
        state.dwBlackInkRemainer = 1;
        ReportState(*m_pWindow, state);
        QCOMPARE(Cell(0, 2), u"青色：高   红色：中   黄色：较低   黑色：低"_s);
        QCOMPARE(Cell(0, 0), u"Office"_s);
        QCOMPARE(Cell(0, 1), u"USB"_s);
    }

    /// None for a row that had one before, but a further one for a row that comes back.
    void eachNewRowGetsAWorker()
    {
        const QSignalSpy spyStart(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart);
        const QList<QPair<int, QList<int>>> listStep = {{0, {}},        {2, {0, 1}},    {3, {0, 1, 2}},
                                                        {3, {0, 1, 2}}, {1, {0, 1, 2}}, {3, {0, 1, 2, 1, 2}}};
        for (const auto& [iPrinters, listIndex] : listStep) {
            SetPrinterList(*m_pWindow, MakePrinters(iPrinters));
            m_pWindow->SlotUpdatePrinterList();
            QCOMPARE(Table()->rowCount(), iPrinters);
            QCOMPARE(m_pWindow->m_iStatusThreadCount, iPrinters);
            QCOMPARE(spyStart.count(), static_cast<int>(listIndex.size()));
            QCOMPARE(m_pWindow->m_listStatusThread.size(), listIndex.size());
            QList<int> listFound;
            for (const TrdGetPrinterStatus* pWorker : std::as_const(m_pWindow->m_listTrdGetPrinterStatus)) {
                listFound.append(pWorker->m_iIndex);
            }
            QCOMPARE(listFound, listIndex);
        }
        for (int i = 0; i < 5; ++i) {
            TrdGetPrinterStatus* pWorker = m_pWindow->m_listTrdGetPrinterStatus.at(i);
            QCOMPARE(pWorker->m_pListPrinterManager, &m_pWindow->m_listPrinterManager);
            QCOMPARE(pWorker->parent(), nullptr);
            QCOMPARE(pWorker->thread(), m_pWindow->m_listStatusThread.at(i));
            QCOMPARE(pWorker->thread()->objectName(), QString::asprintf("vora-status-%d", pWorker->m_iIndex));
            CheckStart(*pWorker, *m_pWindow);
            // The start of those after it would wait in its queue for ever.
            QVERIFY(!QObject::disconnect(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart, pWorker,
                                         &TrdGetPrinterStatus::SlotTaskStart));
        }
    }
};

QTEST_MAIN(tst_PrinterTable)

#include "tst_PrinterTable.moc"
