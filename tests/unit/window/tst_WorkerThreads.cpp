// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "FakeCommand.h"
#include "OpenHook.h"
#include "OrderOfEnds.h"
#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"
#include "WindowTest.h"

#include <QAction>
#include <QTimer>
#include <QtTest>

#include <atomic>
#include <cerrno>
#include <future>
#include <vector>

#include <dlfcn.h>
#include <pthread.h>

namespace {

/// A wait for a thread: when it began and until when it may last, milliseconds of Qt's clock.
struct stWait
{
    qint64 iBegin;
    qint64 iDeadline;
};
std::vector<stWait> s_listWait;

constexpr int c_iManyThreads = 1000000;
std::atomic<int> s_iThreadsLeft{c_iManyThreads};
QtMessageHandler s_oldHandler = nullptr;

/// Qt itself says when it is refused a thread.
void DropThreadWarning(QtMsgType enType, const QMessageLogContext& context, const QString& strText)
{
    if (!strText.startsWith(QLatin1String("QThread::start: Thread creation error"))) {
        s_oldHandler(enType, context, strText);
    }
}

} // namespace

/// Stands for Qt's function of that name: notes what is asked for.
bool QThread::wait(QDeadlineTimer deadline)
{
    s_listWait.push_back({QDeadlineTimer::current().deadline(), deadline.deadline()});
    const auto realWait =
        reinterpret_cast<bool (*)(QThread*, QDeadlineTimer)>(::dlsym(RTLD_NEXT, "_ZN7QThread4waitE14QDeadlineTimer"));
    return realWait(this, deadline);
}

/// In place of the system's, which refuses a thread to a user with too many.
extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*pRun)(void*),
                              void* pArgument) noexcept
{
    static const auto s_real = reinterpret_cast<decltype(&pthread_create)>(::dlsym(RTLD_NEXT, "pthread_create"));
    return s_iThreadsLeft.fetch_sub(1) > 0 ? s_real(pThread, pAttributes, pRun, pArgument) : EAGAIN;
}

/// The threads of the window's workers: refused at first, ended at last.
class tst_WorkerThreads : public WindowTest
{
    Q_OBJECT

private slots:
    void init() { QDir(u"/opt/vora"_s).removeRecursively(); }

    void cleanup()
    {
        m_pWindow.reset();
        s_iThreadsLeft = c_iManyThreads;
    }

    void refusedThreadsAreTriedAgain()
    {
        MakeWindow(); // Qt's own threads have started with it
        m_pWindow.reset();
        WritePrinters({0x00, 0x00});
        s_oldHandler = qInstallMessageHandler(DropThreadWarning);
        s_iThreadsLeft = 0;
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        QVERIFY(!m_pWindow->m_pManageThread->isRunning());
        QCOMPARE(Table()->rowCount(), 0);
        QTRY_VERIFY_WITH_TIMEOUT(s_iThreadsLeft <= -2, 10000); // and refused again

        SetLogEnable(true);
        s_iThreadsLeft = 1; // for the list worker
        QTRY_COMPARE_WITH_TIMEOUT(Table()->rowCount(), 2, 10000);
        for (int iRow = 0; iRow < 2; ++iRow) {
            QVERIFY(!m_pWindow->m_listStatusThread.at(iRow)->isRunning());
            QCOMPARE(Cell(iRow, 3), u"脱机"_s);
            QCOMPARE(LogText().count(QByteArray("no thread for vora-status-") + QByteArray::number(iRow) + ','), 1);
        }

        s_iThreadsLeft = c_iManyThreads;
        QTRY_COMPARE_WITH_TIMEOUT(Cell(0, 3), u"就绪"_s, 10000);
        QTRY_COMPARE(Cell(1, 3), u"就绪"_s);
        SetLogEnable(false);

        s_iThreadsLeft = 0; // one that never ran does not hinder the end
        WritePrinters({0x00, 0x00, 0x00});
        QTRY_COMPARE_WITH_TIMEOUT(Table()->rowCount(), 3, 10000);
        m_pWindow.reset();
        QVERIFY(!VoraPrinterToolWidget::IsWorkerLeftBehind());
        qInstallMessageHandler(s_oldHandler);
    }

    void exitHidesEverythingAndEndsTheLoop_data()
    {
        QTest::addColumn<bool>("main");
        QTest::addColumn<bool>("settings");
        QTest::newRow("both windows open") << true << true;
        QTest::newRow("settings alone open") << false << true;
        QTest::newRow("main window alone open") << true << false;
        QTest::newRow("all hidden") << false << false;
    }

    /// Hides all before it asks the workers to quit.
    void exitHidesEverythingAndEndsTheLoop()
    {
        QFETCH(bool, main);
        QFETCH(bool, settings);
        VoraPrinterToolWidget window;
        window.setVisible(main);
        window.m_pAppSetting->setVisible(settings);
        QList<bool> listHidden;
        connect(&window, &VoraPrinterToolWidget::SgnThreadQuit, this, [&] {
            listHidden.append(window.isHidden() && window.m_pAppSetting->isHidden() &&
                              !window.m_pTrayIcon->isVisible());
        });
        QTimer::singleShot(0, window.m_pActionExit, &QAction::trigger);
        QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(99); }); // when nothing ends it
        QCOMPARE(QCoreApplication::exec(), 0);
        QCOMPARE(listHidden, QList<bool>{true});
    }

    void idleWorkersAreFreed()
    {
        StartWindow({0x00, 0x00, 0x00});
        QList<QPointer<QObject>> listOwned = {m_pWindow->m_pAppSetting};
        for (int i = 0; i < 3; ++i) {
            listOwned += Worker(i);
        }
        DestroyWindow(4, false);
        for (const QPointer<QObject>& pOwned : std::as_const(listOwned)) {
            QVERIFY(pOwned.isNull());
        }
    }

    void hungStatusWorkersAreLeftBehind()
    {
        const FakeCommand cancel(u"cancel"_s, "while [ ! -e /tmp/hung-go ]; do sleep 0.05; done\n");
        StartWindow({0x03, 0x00, 0x03, 0x00});
        QTRY_COMPARE(cancel.Calls().size(), 2);
        const QList<QPointer<QObject>> listIdle = Worker(1) + Worker(3);
        const QList<TrdGetPrinterStatus*> listWorker = m_pWindow->m_listTrdGetPrinterStatus;
        const QList<QThread*> listThread = m_pWindow->m_listStatusThread;
        DestroyWindow(5, true);
        for (const QPointer<QObject>& pIdle : listIdle) {
            QVERIFY(pIdle.isNull());
        }
        for (const int i : {0, 2}) {
            QVERIFY(listThread.at(i)->isRunning());
            QVERIFY(listWorker.at(i)->m_bThreadQuit);
            QVERIFY(listWorker.at(i)->m_pListPrinterManager == nullptr); // the list has gone with the window
            QCOMPARE(listWorker.at(i)->m_iIndex, -1);
        }
        QVERIFY(WriteFile(u"/tmp/hung-go"_s, "go"));
        for (const int i : {0, 2}) {
            QVERIFY(listThread.at(i)->wait(5000));
            delete listThread.at(i);
            delete listWorker.at(i);
        }
        QCOMPARE(cancel.Calls().size(), 2); // no further cycle
    }

    void hungListWorkerIsLeftBehind()
    {
        std::promise<void> go;
        std::atomic<bool> bHangs{false};
        const std::shared_future<void> goes = go.get_future().share();
        const OpenHook hang(StatusFolder().ListPath(), [&] {
            bHangs = true;
            goes.wait();
            return true;
        });
        StartWindow({});
        QTRY_VERIFY(bHangs);
        const std::unique_ptr<TrdDeviceManage> pWorker(m_pWindow->m_pTrdDeviceManage);
        const std::unique_ptr<QThread> pThread(m_pWindow->m_pManageThread);
        DestroyWindow(1, true);
        QVERIFY(pThread->isRunning());
        QVERIFY(pWorker->m_bThreadQuit);
        QVERIFY(pWorker->m_pListPrinterManager == nullptr);
        go.set_value();
        QVERIFY(pThread->wait(5000));
    }

private:
    /// One in each of these raw states.
    static void WritePrinters(const QList<quint8>& listStatus)
    {
        const DriverFolder folder = StatusFolder();
        QList<stPrinterInfo> listInfo;
        for (const quint8 byStatus : listStatus) {
            listInfo.append(MakePrinter(u"Printer%1"_s.arg(listInfo.size())).printerInfo);
            stStatusReply reply;
            reply.byStatus = byStatus;
            folder.WriteStatus(listInfo.last().strPrinterName, EncodeStatusReply(reply));
        }
        folder.WritePrinterList(listInfo);
    }

    /// With such printers, all of which have their worker.
    void StartWindow(const QList<quint8>& listStatus)
    {
        WritePrinters(listStatus);
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(m_pWindow->m_listTrdGetPrinterStatus.size(), listStatus.size());
    }

    QList<QPointer<QObject>> Worker(int i) const
    {
        return {m_pWindow->m_listTrdGetPrinterStatus.at(i), m_pWindow->m_listStatusThread.at(i)};
    }

    /// Waits for each thread, and one second for all together, which passes when one hangs. The list's worker and its
    /// thread are freed unless they are the only ones.
    void DestroyWindow(std::size_t iThreads, bool bHung)
    {
        const QList<QPointer<QObject>> listOfList = {m_pWindow->m_pTrdDeviceManage, m_pWindow->m_pManageThread};
        ShowOrderOfEnds(*m_pWindow);
        s_listWait.clear();
        const qint64 iBegin = QDeadlineTimer::current().deadline();
        m_pWindow.reset();
        const qint64 iElapsed = QDeadlineTimer::current().deadline() - iBegin;
        QVERIFY2(!bHung || iElapsed >= 900, QByteArray::number(iElapsed));
        QVERIFY2(iElapsed < 2500, QByteArray::number(iElapsed));
        QCOMPARE(s_listWait.size(), iThreads);
        QVERIFY(s_listWait.front().iDeadline >= iBegin + 1000);
        QVERIFY(s_listWait.front().iDeadline <= s_listWait.front().iBegin + 1000);
        for (const stWait& wait : s_listWait) {
            QCOMPARE(wait.iDeadline, s_listWait.front().iDeadline);
        }
        QCOMPARE(VoraPrinterToolWidget::IsWorkerLeftBehind(), bHung);
        for (const QPointer<QObject>& pOfList : listOfList) {
            QCOMPARE(pOfList.isNull(), iThreads > 1);
        }
    }
};

QTEST_MAIN(tst_WorkerThreads)

#include "tst_WorkerThreads.moc"
