// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AppSetting.h"
#include "FakeCommand.h"
#include "OrderOfEnds.h"
#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "WindowTest.h"

#include <QAction>
#include <QPointer>
#include <QSignalSpy>
#include <QTimer>
#include <QtTest>

#include <memory>
#include <vector>

#include <dlfcn.h>

namespace {

/// A wait for a thread: when it began and until when it may last, milliseconds of Qt's clock.
struct stWait
{
    qint64 iBegin;
    qint64 iDeadline;
};
std::vector<stWait> s_listWait;

constexpr int c_iNotEnded = 99;

const QString c_strGo = u"/tmp/hung-go"_s;
const QByteArray c_hang = "while [ ! -e /tmp/hung-go ]; do sleep 0.05; done\n";

/// Runs the event loop as the program does; c_iNotEnded when nothing ends it.
int RunEventLoop()
{
    QTimer watchdog;
    QObject::connect(&watchdog, &QTimer::timeout, [] { QCoreApplication::exit(c_iNotEnded); });
    watchdog.start(5000);
    return QCoreApplication::exec();
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

class tst_Shutdown : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        QFile::remove(c_strGo);
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

    void exitHidesEverythingAndEndsTheLoop()
    {
        QFETCH(bool, main);
        QFETCH(bool, settings);
        VoraPrinterToolWidget window;
        const QSignalSpy spyQuit(&window, &VoraPrinterToolWidget::SgnThreadQuit);
        window.setVisible(main);
        window.m_pAppSetting->setVisible(settings);
        QTimer::singleShot(0, window.m_pActionExit, &QAction::trigger);
        QCOMPARE(RunEventLoop(), 0);
        QVERIFY(window.isHidden());
        QVERIFY(window.m_pAppSetting->isHidden());
        QVERIFY(!window.m_pTrayIcon->isVisible());
        QCOMPARE(spyQuit.count(), 1);
    }

    void exitHidesBeforeItAsksTheWorkersToQuit()
    {
        VoraPrinterToolWidget window;
        window.show();
        window.m_pAppSetting->show();
        bool bSeen = false;
        bool bAllHidden = false;
        connect(&window, &VoraPrinterToolWidget::SgnThreadQuit, this, [&] {
            bSeen = true;
            bAllHidden = window.isHidden() && window.m_pAppSetting->isHidden() && !window.m_pTrayIcon->isVisible();
        });
        QTimer::singleShot(0, &window, &VoraPrinterToolWidget::SlotTrayActionExit);
        QCOMPARE(RunEventLoop(), 0);
        QVERIFY(bSeen);
        QVERIFY(bAllHidden);
    }

    void closingTheLastWindowKeepsTheLoopRunning_data()
    {
        QTest::addColumn<bool>("settings");
        QTest::newRow("main window") << false;
        QTest::newRow("settings window") << true;
    }

    void closingTheLastWindowKeepsTheLoopRunning()
    {
        QFETCH(bool, settings);
        VoraPrinterToolWidget window;
        QWidget* pLast = settings ? static_cast<QWidget*>(window.m_pAppSetting) : &window;
        pLast->show();
        QTimer::singleShot(0, pLast, &QWidget::close);
        QTimer::singleShot(500, this, [] { QCoreApplication::exit(7); });
        QCOMPARE(RunEventLoop(), 7);
        QVERIFY(pLast->isHidden());
        QVERIFY(window.m_pTrayIcon->isVisible());
    }

    void destructionFreesWorkersThreadsAndSettings()
    {
        WritePrinters(3, 0x00);
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(pWindow->m_listTrdGetPrinterStatus.size(), 3);
        QList<QPointer<QObject>> listOwned = {pWindow->m_pTrdDeviceManage, pWindow->m_pManageThread,
                                              pWindow->m_pAppSetting};
        for (int i = 0; i < 3; ++i) {
            listOwned.append(pWindow->m_listTrdGetPrinterStatus.at(i));
            listOwned.append(pWindow->m_listStatusThread.at(i));
        }
        ShowOrderOfEnds(*pWindow);
        pWindow.reset();
        for (const QPointer<QObject>& pOwned : std::as_const(listOwned)) {
            QVERIFY(pOwned.isNull());
        }
        QVERIFY(!VoraPrinterToolWidget::IsWorkerLeftBehind());
    }

    void destructionWaitsOneSecondForAllThreads()
    {
        WritePrinters(3, 0x00);
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(pWindow->m_listTrdGetPrinterStatus.size(), 3);
        ShowOrderOfEnds(*pWindow);
        s_listWait.clear();
        const qint64 iBegin = QDeadlineTimer::current().deadline();
        pWindow.reset();
        QCOMPARE(s_listWait.size(), std::size_t(4)); // and the list's
        QVERIFY(s_listWait.front().iDeadline >= iBegin + 1000);
        QVERIFY(s_listWait.front().iDeadline <= s_listWait.front().iBegin + 1000);
        for (const stWait& wait : s_listWait) {
            QCOMPARE(wait.iDeadline, s_listWait.front().iDeadline);
        }
    }

    void destructionLeavesAHungWorkerAlone()
    {
        const FakeCommand cancel(u"cancel"_s, c_hang);
        WritePrinters(1, 0x03);
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(cancel.Calls().size(), 1);
        const std::unique_ptr<TrdGetPrinterStatus> pWorker(pWindow->m_listTrdGetPrinterStatus.at(0));
        const std::unique_ptr<QThread> pThread(pWindow->m_listStatusThread.at(0));
        const QPointer<QObject> pListWorker(pWindow->m_pTrdDeviceManage);
        ShowOrderOfEnds(*pWindow);

        QElapsedTimer timer;
        timer.start();
        pWindow.reset();
        QVERIFY2(timer.elapsed() >= 900, QByteArray::number(timer.elapsed()).constData());
        QVERIFY2(timer.elapsed() < 2500, QByteArray::number(timer.elapsed()).constData());
        QVERIFY(VoraPrinterToolWidget::IsWorkerLeftBehind());
        QVERIFY(pListWorker.isNull());
        QVERIFY(pThread->isRunning());
        QVERIFY(pWorker->m_bThreadQuit);
        QVERIFY(pWorker->m_pListPrinterManager == nullptr); // the list has gone with the window
        QCOMPARE(pWorker->m_iIndex, -1);

        QVERIFY(WriteFile(c_strGo, "go"));
        QVERIFY(pThread->wait(5000));
        QCOMPARE(cancel.Calls().size(), 1); // no further cycle
    }

    void destructionWithSeveralHungWorkersWaitsOnce()
    {
        const FakeCommand cancel(u"cancel"_s, c_hang);
        WritePrinters(4, 0x03);
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(cancel.Calls().size(), 4);
        const QList<TrdGetPrinterStatus*> listWorker = pWindow->m_listTrdGetPrinterStatus;
        const QList<QThread*> listThread = pWindow->m_listStatusThread;
        ShowOrderOfEnds(*pWindow);
        QElapsedTimer timer;
        timer.start();
        pWindow.reset();
        QVERIFY2(timer.elapsed() < 2500, QByteArray::number(timer.elapsed()).constData());
        QVERIFY(WriteFile(c_strGo, "go"));
        for (QThread* pThread : listThread) {
            QVERIFY(pThread->wait(5000));
        }
        qDeleteAll(listThread);
        qDeleteAll(listWorker);
    }

    void destructionFreesTheIdleBehindAHungWorker()
    {
        const FakeCommand cancel(u"cancel"_s, c_hang);
        WritePrinters(3, 0x00);
        stStatusReply canceling;
        canceling.byStatus = 0x03;
        DriverFolder(c_strCfgPath).WriteStatus(Name(0), EncodeStatusReply(canceling));
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        QTRY_COMPARE(cancel.Calls().size(), 1);
        QTRY_COMPARE(pWindow->m_listTrdGetPrinterStatus.size(), 3);
        const std::unique_ptr<TrdGetPrinterStatus> pHung(pWindow->m_listTrdGetPrinterStatus.at(0));
        const std::unique_ptr<QThread> pHungThread(pWindow->m_listStatusThread.at(0));
        const QList<QPointer<QObject>> listIdle = {
            pWindow->m_listTrdGetPrinterStatus.at(1), pWindow->m_listStatusThread.at(1),
            pWindow->m_listTrdGetPrinterStatus.at(2), pWindow->m_listStatusThread.at(2)};
        ShowOrderOfEnds(*pWindow);
        pWindow.reset();
        for (const QPointer<QObject>& pIdle : listIdle) {
            QVERIFY(pIdle.isNull());
        }
        QVERIFY(pHungThread->isRunning());
        QVERIFY(WriteFile(c_strGo, "go"));
        QVERIFY(pHungThread->wait(5000));
    }

private:
    /// A list of printers that all report the raw state.
    static void WritePrinters(int iCount, quint8 byStatus)
    {
        const DriverFolder folder = StatusFolder();
        stStatusReply reply;
        reply.byStatus = byStatus;
        QList<stPrinterInfo> listInfo;
        for (int i = 0; i < iCount; ++i) {
            folder.WriteStatus(Name(i), EncodeStatusReply(reply));
            listInfo.append(MakePrinter(Name(i)).printerInfo);
        }
        folder.WritePrinterList(listInfo);
    }

    static QString Name(int i) { return u"Printer"_s + QString::number(i); }
};

QTEST_MAIN(tst_Shutdown)

#include "tst_Shutdown.moc"
