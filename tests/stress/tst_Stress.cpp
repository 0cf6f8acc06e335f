// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"
#include "OrderOfEnds.h"
#include "StatusEncoder.h"
#include "TrdGetPrinterStatus.h"
#include "voraprintertoolwidget.h"

#include <QAction>
#include <QDir>
#include <QPointer>
#include <QTableWidget>
#include <QThread>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

// Everything at once: the printer list is replaced as soon as the window shows it, 50 status workers and more read
// files that another thread rewrites, the window repaints, and in the middle of it the user quits. Meant for sanitizer
// builds.

namespace {

constexpr int c_iStarts = 200;
constexpr int c_iPrinters = 50;
constexpr std::chrono::milliseconds c_rewrite(10);
constexpr std::chrono::milliseconds c_repaint(10);
constexpr int c_iNotEnded = 99;

const QString c_strCfgFolder = u"/opt/vora/vora-printer-k507/cfg"_s;

QString Name(int i)
{
    return u"Printer"_s + QString::number(i);
}

/// The list changes in a circle: all printers, the first half of them, all in reverse order.
QStringList NamesOfForm(int iForm)
{
    QStringList listName;
    for (int i = 0; i < (iForm % 3 == 1 ? c_iPrinters / 2 : c_iPrinters); ++i) {
        listName.append(Name(iForm % 3 == 2 ? c_iPrinters - 1 - i : i));
    }
    return listName;
}

void WriteForm(const DriverFolder& folder, int iForm)
{
    QList<stPrinterInfo> listInfo;
    for (const QString& strName : NamesOfForm(iForm)) {
        listInfo.append({strName, u"RA7QX"_s, 1, QString(), u"usb://"_s + strName});
    }
    folder.WritePrinterList(listInfo);
}

/// Ready or printing, now and then with a paper jam and its balloon, and with an ink level that moves.
QByteArray Reply(int iRewrite)
{
    stStatusReply reply;
    reply.byStatus = iRewrite % 2 == 0 ? 0x00 : 0x10;
    if (iRewrite % 5 == 0) {
        reply.listErrorCode = {0x6110};
    }
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, static_cast<quint32>(iRewrite % 100))};
    return EncodeStatusReply(reply);
}

/// Rewrites the status files in turn, 100 a second, for as long as it lives.
class StatusWriter
{
public:
    StatusWriter() : m_thread([this] { Run(); }) {}
    ~StatusWriter()
    {
        m_bEnd = true;
        m_thread.join();
    }
    StatusWriter(const StatusWriter&) = delete;
    StatusWriter& operator=(const StatusWriter&) = delete;

    std::atomic<int> m_iWritten{0};

private:
    void Run()
    {
        const DriverFolder folder(c_strCfgFolder);
        auto next = std::chrono::steady_clock::now();
        for (int i = 0; !m_bEnd; ++i) {
            folder.WriteStatus(Name(i * 7 % c_iPrinters), Reply(i));
            ++m_iWritten;
            next += c_rewrite;
            std::this_thread::sleep_until(next);
        }
    }

    std::atomic<bool> m_bEnd{false};
    std::thread m_thread; // last: it uses the others
};

QStringList ColumnTexts(const QTableWidget& table, int iColumn)
{
    QStringList listText;
    for (int i = 0; i < table.rowCount(); ++i) {
        listText.append(table.item(i, iColumn)->text());
    }
    return listText;
}

/// Workers that did not end within the window's time on a busy machine end on their own; nobody else frees them.
void FreeLateWorkers(const QList<QPointer<QThread>>& listThread, const QList<QPointer<QObject>>& listWorker)
{
    for (const QPointer<QThread>& pThread : listThread) {
        if (pThread != nullptr) {
            QVERIFY(pThread->wait(10000));
            delete pThread;
        }
    }
    for (const QPointer<QObject>& pWorker : listWorker) {
        delete pWorker;
    }
}

} // namespace

class tst_Stress : public QObject
{
    Q_OBJECT

private slots:
    void startAndQuit_data()
    {
        QTest::addColumn<int>("iChanges"); // of the list, one each time that it is polled, before the user quits
        for (int i = 1; i <= c_iStarts; ++i) {
            QTest::newRow(QByteArray::number(i).constData()) << i % 3;
        }
    }

    void startAndQuit()
    {
        QFETCH(int, iChanges);
        QDir(c_strCfgFolder).removeRecursively();
        const DriverFolder folder(c_strCfgFolder);
        WriteForm(folder, 0);
        const StatusWriter writer;

        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        const auto* pTable = pWindow->findChild<QTableWidget*>();
        QVERIFY(pTable != nullptr);
        pWindow->show();

        QTimer repaint;
        connect(&repaint, &QTimer::timeout, pWindow.get(), [&] { pWindow->grab(); });
        repaint.start(c_repaint);

        int iForm = 0;
        QTimer user;
        connect(&user, &QTimer::timeout, pWindow.get(), [&] {
            if (ColumnTexts(*pTable, 0) != NamesOfForm(iForm)) {
                return; // not polled yet
            }
            if (iForm < iChanges) {
                WriteForm(folder, ++iForm);
            } else if (ColumnTexts(*pTable, 3).contains(u"正在打印"_s)) {
                pWindow->m_pActionExit->trigger();
            }
        });
        user.start(10);
        QTimer::singleShot(60000, pWindow.get(), [] { QCoreApplication::exit(c_iNotEnded); });

        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(iForm, iChanges);
        QVERIFY(writer.m_iWritten > 0);

        // A list that shrank and grew again has two workers for the indexes that were gone.
        QCOMPARE(pWindow->m_listTrdGetPrinterStatus.size(), iChanges == 2 ? c_iPrinters * 3 / 2 : c_iPrinters);
        QList<QPointer<QThread>> listThread = {pWindow->m_pManageThread};
        for (QThread* pThread : std::as_const(pWindow->m_listStatusThread)) {
            listThread.append(pThread);
        }
        ShowOrderOfEnds(*pWindow);
        QList<QPointer<QObject>> listWorker;
        for (TrdGetPrinterStatus* pWorker : std::as_const(pWindow->m_listTrdGetPrinterStatus)) {
            listWorker.append(pWorker);
        }
        pWindow.reset();
        FreeLateWorkers(listThread, listWorker);
    }
};

QTEST_MAIN(tst_Stress)

#include "tst_Stress.moc"
