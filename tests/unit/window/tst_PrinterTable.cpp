// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenColumns.h"
#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"
#include "WindowTest.h"

#include <QHeaderView>
#include <QSignalSpy>
#include <QtTest>

#include <atomic>
#include <future>
#include <thread>

class tst_PrinterTable : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
    }

    void cleanup() { m_pWindow.reset(); }

    void columnsHaveTheirHeadersAndWidths()
    {
        const QTableWidget* pTable = Table();
        const QList<stGoldenColumn> listColumn = GoldenColumns();
        QCOMPARE(pTable->columnCount(), static_cast<int>(listColumn.size()));
        QVERIFY(pTable->horizontalHeader()->stretchLastSection());
        Table()->horizontalHeader()->setStretchLastSection(false); // shows the width that the last column was given
        for (int i = 0; i < listColumn.size(); ++i) {
            QCOMPARE(pTable->horizontalHeaderItem(i)->text(), listColumn.at(i).strHeader);
            QCOMPARE(pTable->columnWidth(i), listColumn.at(i).iWidth);
        }
    }

    void cellsCannotBeEditedNorSorted()
    {
        QCOMPARE(Table()->editTriggers(), QAbstractItemView::NoEditTriggers);
        QVERIFY(!Table()->horizontalHeader()->sectionsClickable());
        QVERIFY(!Table()->isSortingEnabled());
    }

    void longNamesAreNotWrapped() { QVERIFY(!Table()->wordWrap()); }

    void buildingTheTableIsLogged()
    {
        SetLogEnable(true);
        m_pWindow->InitDeviceTable();
        SetLogEnable(false);
        const QDir folder(u"/opt/vora/vora-printer-k507/tool"_s);
        const QStringList listName = folder.entryList(QDir::Files);
        QCOMPARE(listName.size(), 1);
        const QList<QByteArray> listLine = ReadFile(folder.filePath(listName.first())).split('\n');
        QCOMPARE(listLine.size(), 3); // the last one is what follows the second line's end
        QVERIFY(listLine.at(0).endsWith(" InitDeviceTable) InitDeviceTable start"));
        QVERIFY(listLine.at(1).endsWith(" InitDeviceTable) InitDeviceTable end"));
    }

    void cellHasItsTextAsToolTip_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("toolTip");
        QTest::newRow("plain") << u"Office & <home>"_s << u"Office & <home>"_s;
        QTest::newRow("looks like a tag")
            << u"<b>Office</b> & home"_s << u"<span>&lt;b&gt;Office&lt;/b&gt; &amp; home</span>"_s;
    }

    void cellHasItsTextAsToolTip()
    {
        QFETCH(QString, name);
        QFETCH(QString, toolTip);
        ShowPrinters(*m_pWindow, {MakePrinter(name)});
        QCOMPARE(Cell(0, 0), name);
        QCOMPARE(Table()->item(0, 0)->toolTip(), toolTip);
        QCOMPARE(Table()->item(0, 2)->toolTip(), c_strNoInk);
    }

    void reportsWaitForTheLock_data()
    {
        QTest::addColumn<bool>("list");
        QTest::newRow("of the list") << true;
        QTest::newRow("of a state") << false;
    }

    void reportsWaitForTheLock()
    {
        QFETCH(bool, list);
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
        if (list) {
            m_pWindow->SlotUpdatePrinterList();
        } else {
            m_pWindow->SlotUpdatePrinterStatus(0);
        }
        QVERIFY(bReleased);
    }

    void emptyListGivesAnEmptyTableAndNoWorker()
    {
        const QSignalSpy spyStart(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart);
        m_pWindow->SlotUpdatePrinterList();
        QCOMPARE(Table()->rowCount(), 0);
        QCOMPARE(Table()->columnCount(), static_cast<int>(GoldenColumns().size()));
        QVERIFY(m_pWindow->m_listTrdGetPrinterStatus.isEmpty());
        QVERIFY(m_pWindow->m_listStatusThread.isEmpty());
        QCOMPARE(spyStart.count(), 0);
    }

    void newRowsShowIdentityAndDefaults_data()
    {
        QTest::addColumn<int>("connectType");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("connection");
        const QString strAddress = u"192.168.1.20"_s;
        QTest::newRow("USB") << 1 << QString() << u"USB"_s;
        QTest::newRow("USB with a port") << 1 << strAddress << u"USB"_s;
        QTest::newRow("network") << 2 << strAddress << u"网络(192.168.1.20)"_s;
        QTest::newRow("record that nobody filled") << 0 << QString() << u"网络()"_s;
        QTest::newRow("negative") << -1 << strAddress << u"网络(192.168.1.20)"_s;
        QTest::newRow("port with a format") << 2 << u"%1%s"_s << u"网络(%1%s)"_s;
    }

    void newRowsShowIdentityAndDefaults()
    {
        QFETCH(int, connectType);
        QFETCH(QString, port);
        QFETCH(QString, connection);
        ShowPrinters(*m_pWindow, {MakePrinter(u"Office"_s), MakePrinter(u"二楼 %s"_s, connectType, port)});
        QCOMPARE(Table()->rowCount(), 2);
        QCOMPARE(Cell(0, 0), u"Office"_s);
        QCOMPARE(Cell(1, 0), u"二楼 %s"_s);
        QCOMPARE(Cell(1, 1), connection);
        QCOMPARE(Cell(1, 2), c_strNoInk);
        QCOMPARE(Cell(1, 3), u"脱机"_s);
    }

    void listReportResetsTheRows()
    {
        stPrinterState state;
        state.enCurrentStatus = enStatusReady;
        state.dwBlueInkRemainer = 50;
        ReportState(*m_pWindow, state);
        QCOMPARE(Cell(0, 3), u"就绪"_s);
        m_pWindow->SlotUpdatePrinterList();
        QCOMPARE(Cell(0, 2), c_strNoInk);
        QCOMPARE(Cell(0, 3), u"脱机"_s);
        QCOMPARE(Table()->horizontalHeaderItem(0)->text(), GoldenColumns().constFirst().strHeader);
    }

    void inkLevelHasItsWord_data()
    {
        QTest::addColumn<unsigned long>("level");
        QTest::addColumn<QString>("word");
        const auto row = [](unsigned long dwLevel, const QString& strWord) {
            QTest::newRow(QByteArray::number(static_cast<qulonglong>(dwLevel)).constData()) << dwLevel << strWord;
        };
        row(100UL, u"高"_s);
        row(70UL, u"高"_s);
        row(69UL, u"中"_s);
        row(40UL, u"中"_s);
        row(39UL, u"较低"_s);
        row(16UL, u"较低"_s);
        row(15UL, u"低"_s);
        row(1UL, u"低"_s);
        row(0UL, u"无"_s);
        row(101UL, u"无"_s);
        row(255UL, u"无"_s);
        // Levels are taken as signed 32-bit integers.
        row(2147483647UL, u"无"_s);
        row(2147483648UL, u"无"_s);
        row(4294967291UL, u"无"_s);           // -5
        row(4294967296UL, u"无"_s);           // 0
        row(4294967346UL, u"中"_s);           // 50
        row(18446744073709551611UL, u"无"_s); // -5
    }

    void inkLevelHasItsWord()
    {
        QFETCH(unsigned long, level);
        QFETCH(QString, word);
        QCOMPARE(QString::fromUtf8(m_pWindow->GetRemainInkStr(static_cast<int>(level))), word);
        stPrinterState state;
        state.dwBlueInkRemainer = level;
        state.dwRedInkRemainer = level;
        state.dwYellowInkRemainer = level;
        state.dwBlackInkRemainer = level;
        ReportState(*m_pWindow, state);
        QCOMPARE(Cell(0, 2),
                 u"青色："_s + word + u"   红色："_s + word + u"   黄色："_s + word + u"   黑色："_s + word);
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

    void growingListMakesOneWorkerForEachNewRow()
    {
        QSignalSpy spyStart(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart);
        const stPrinterManager printer = MakePrinter(u"Office"_s);
        SetPrinterList(*m_pWindow, {printer, printer});
        m_pWindow->SlotUpdatePrinterList();
        QCOMPARE(m_pWindow->m_listTrdGetPrinterStatus.size(), 2);
        QCOMPARE(spyStart.count(), 2);
        QCOMPARE(m_pWindow->m_iStatusThreadCount, 2);

        SetPrinterList(*m_pWindow, {printer, printer, printer});
        m_pWindow->SlotUpdatePrinterList();
        QCOMPARE(m_pWindow->m_listTrdGetPrinterStatus.size(), 3);
        QCOMPARE(m_pWindow->m_listStatusThread.size(), 3);
        QCOMPARE(spyStart.count(), 3);
        QCOMPARE(m_pWindow->m_iStatusThreadCount, 3);
        for (int i = 0; i < 3; ++i) {
            TrdGetPrinterStatus* pWorker = m_pWindow->m_listTrdGetPrinterStatus.at(i);
            QCOMPARE(pWorker->m_iIndex, i);
            QCOMPARE(pWorker->m_pListPrinterManager, &m_pWindow->m_listPrinterManager);
            QCOMPARE(pWorker->parent(), nullptr);
            QCOMPARE(pWorker->thread(), m_pWindow->m_listStatusThread.at(i));
            QCOMPARE(pWorker->thread()->objectName(), QString::asprintf("vora-status-%d", i));
            QVERIFY(WasTaskStarted(*pWorker));
            pWorker->m_bThreadQuit = false;
            emit m_pWindow->SgnThreadQuit(); // reaches a worker without a loop
            QTRY_VERIFY(pWorker->m_bThreadQuit);
            // The start of those after it would wait in its queue for ever.
            QVERIFY(!QObject::disconnect(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart, pWorker,
                                         &TrdGetPrinterStatus::SlotTaskStart));
        }

        m_pWindow->SlotUpdatePrinterList(); // the same number of printers
        QCOMPARE(m_pWindow->m_listTrdGetPrinterStatus.size(), 3);
        QCOMPARE(spyStart.count(), 3);
    }

    void shrinkingAndGrowingListMakesFurtherWorkers()
    {
        QSignalSpy spyStart(m_pWindow.get(), &VoraPrinterToolWidget::SgnStatusThreadStart);
        const stPrinterManager printer = MakePrinter(u"Office"_s);
        for (const int iCount : {3, 1, 3}) {
            SetPrinterList(*m_pWindow, Repeat(printer, iCount));
            m_pWindow->SlotUpdatePrinterList();
            QCOMPARE(m_pWindow->m_iStatusThreadCount, iCount);
            QCOMPARE(Table()->rowCount(), iCount);
        }
        QCOMPARE(spyStart.count(), 5);
        QCOMPARE(m_pWindow->m_listTrdGetPrinterStatus.size(), 5);
        QCOMPARE(m_pWindow->m_listStatusThread.size(), 5);
        QList<int> listIndex;
        for (int i = 0; i < 5; ++i) {
            listIndex.append(m_pWindow->m_listTrdGetPrinterStatus.at(i)->m_iIndex);
            QVERIFY(m_pWindow->m_listStatusThread.at(i)->isRunning());
        }
        QCOMPARE(listIndex, QList<int>({0, 1, 2, 1, 2}));
    }

    void reportsOfFilesReachTheTable()
    {
        m_pWindow.reset();
        const DriverFolder folder = StatusFolder();
        stStatusReply reply;
        reply.byStatus = 0x10;
        reply.listWarningCode = {0x6160};
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, 70), MakeSuppliesRecord(enSuppliesRedInk, 69),
                              MakeSuppliesRecord(enSuppliesYellowInk, 39), MakeSuppliesRecord(enSuppliesBlackInk, 15)};
        folder.WriteStatus(u"Office"_s, EncodeStatusReply(reply));
        folder.WritePrinterList(
            {MakePrinter(u"Silent"_s, 2, u"10.0.0.7"_s).printerInfo, MakePrinter(u"Office"_s).printerInfo});
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(Table()->rowCount(), 2);
        QTRY_COMPARE(Cell(1, 3), u"正在打印(墨水量低)"_s);
        QCOMPARE(Cell(1, 2), u"青色：高   红色：中   黄色：较低   黑色：低"_s);
        QCOMPARE(Cell(0, 0), u"Silent"_s);
        QCOMPARE(Cell(0, 1), u"网络(10.0.0.7)"_s);
        QCOMPARE(Cell(0, 3), u"脱机"_s);
    }
};

QTEST_MAIN(tst_PrinterTable)

#include "tst_PrinterTable.moc"
