// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "OrderOfEnds.h"
#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"

#include <QAction>
#include <QPointer>
#include <QScopeGuard>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace {

constexpr int c_iPrinters = 50;

/// The list changes in a circle: all printers, the first half of them, all in reverse order. Returns their names.
QStringList WriteForm(int iForm)
{
    QStringList listName;
    QList<stPrinterInfo> listInfo;
    for (int i = 0; i < (iForm % 3 == 1 ? c_iPrinters / 2 : c_iPrinters); ++i) {
        listName.append(u"Printer%1"_s.arg(iForm % 3 == 2 ? c_iPrinters - 1 - i : i));
        listInfo.append({listName.last(), u"RA7QX"_s, 1, QString(), u"usb://"_s + listName.last()});
    }
    StatusFolder().WritePrinterList(listInfo);
    return listName;
}

/// Rewrites the status files in turn, 100 a second: ready or printing, now and then with a paper jam and its balloon,
/// and with an ink level that moves.
void RewriteUntil(const std::atomic<bool>& bEnd)
{
    const DriverFolder folder = StatusFolder();
    auto next = std::chrono::steady_clock::now();
    for (int i = 0; !bEnd; ++i) {
        stStatusReply reply;
        reply.byStatus = i % 2 == 0 ? 0x00 : 0x10;
        if (i % 5 == 0) {
            reply.listErrorCode = {0x6110};
        }
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, static_cast<quint32>(i % 100))};
        folder.WriteStatus(u"Printer%1"_s.arg(i * 7 % c_iPrinters), EncodeStatusReply(reply));
        next += std::chrono::milliseconds(10);
        std::this_thread::sleep_until(next);
    }
}

QStringList ColumnTexts(const QTableWidget& table, int iColumn)
{
    QStringList listText;
    for (int i = 0; i < table.rowCount(); ++i) {
        listText.append(table.item(i, iColumn)->text());
    }
    return listText;
}

} // namespace

/// Everything at once: the printer list is replaced as soon as the window shows it, 50 status workers and more read
/// files that another thread rewrites, the window repaints, and in the middle of it the user quits. Meant for sanitizer
/// builds.
class tst_Stress : public QObject
{
    Q_OBJECT

private slots:
    void startAndQuit_data()
    {
        QTest::addColumn<int>("iChanges"); // of the list, one each time that it is polled, before the user quits
        for (int i = 1; i <= 200; ++i) {
            QTest::newRow(QByteArray::number(i).constData()) << i % 3;
        }
    }

    void startAndQuit()
    {
        QFETCH(int, iChanges);
        QDir(StatusFolder().Path()).removeRecursively();
        QStringList listName = WriteForm(0);
        std::atomic<bool> bEnd{false};
        std::thread writer([&] { RewriteUntil(bEnd); });
        const auto end = qScopeGuard([&] {
            bEnd = true;
            writer.join();
        });
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        const auto* pTable = pWindow->findChild<QTableWidget*>();
        pWindow->show();

        QTimer repaint;
        connect(&repaint, &QTimer::timeout, pWindow.get(), [&] { pWindow->grab(); });
        repaint.start(10);

        int iForm = 0;
        QTimer user;
        connect(&user, &QTimer::timeout, pWindow.get(), [&] {
            if (ColumnTexts(*pTable, 0) != listName) {
                return; // not polled yet
            }
            if (iForm < iChanges) {
                listName = WriteForm(++iForm);
            } else if (ColumnTexts(*pTable, 3).contains(u"正在打印"_s)) {
                pWindow->m_pActionExit->trigger();
            }
        });
        user.start(10);
        QTimer::singleShot(60000, pWindow.get(), [] { QCoreApplication::exit(99); }); // when nothing ends it
        QCOMPARE(QCoreApplication::exec(), 0);

        // A list that shrank and grew again has two workers for the indexes that were gone.
        QCOMPARE(pWindow->m_listTrdGetPrinterStatus.size(), iChanges == 2 ? c_iPrinters * 3 / 2 : c_iPrinters);
        ShowOrderOfEnds(*pWindow);
        QList<QPair<QPointer<QThread>, QPointer<QObject>>> listWorker = {
            {pWindow->m_pManageThread, pWindow->m_pTrdDeviceManage}};
        for (int i = 0; i < pWindow->m_listStatusThread.size(); ++i) {
            listWorker.append({pWindow->m_listStatusThread.at(i), pWindow->m_listTrdGetPrinterStatus.at(i)});
        }
        pWindow.reset();

        // Workers that did not end within the window's time on a busy machine end on their own; nobody else frees them.
        for (const auto& [pThread, pWorker] : std::as_const(listWorker)) {
            QVERIFY(pThread == nullptr || pThread->wait(10000));
            delete pThread;
            delete pWorker;
        }
    }
};

QTEST_MAIN(tst_Stress)

#include "tst_Stress.moc"
