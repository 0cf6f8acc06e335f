// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "OpenHook.h"
#include "RunningWorker.h"
#include "StatusFolder.h"

#include <QtTest>

#include <memory>
#include <stdexcept>

Q_DECLARE_METATYPE(stPrinterState)
Q_DECLARE_METATYPE(stPrinterManager)

namespace {

using PrinterList = QList<stPrinterManager>;

const QString c_strName = u"Queue"_s;
const QString c_strGone = u"Gone"_s;

stStatusReply ReadyReply()
{
    stStatusReply reply;
    reply.firmwareVersion = "1.0";
    reply.listErrorCode = {0x6110};
    reply.listWarningCode = {0x6160};
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesWasteToner, 1), MakeSuppliesRecord(enSuppliesBlackInk, 80)};
    return reply;
}

void WriteReply(const QString& strName, const stStatusReply& reply)
{
    WriteNewStatus(strName, EncodeStatusReply(reply));
}

/// Tries from a thread of its own: a mutex that this thread holds must not be tried here.
bool IsListFree()
{
    bool bFree = false;
    std::unique_ptr<QThread> thread(QThread::create([&bFree] {
        const std::unique_lock lock(g_mutexPrinterList, std::try_to_lock);
        bFree = lock.owns_lock();
    }));
    thread->start();
    thread->wait();
    return bFree;
}

} // namespace

class tst_TrdGetPrinterStatus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        WriteReply(c_strGone, ReadyReply());
        m_goneWorker = std::make_unique<RunningWorker>(0, &m_listGone);
        QTRY_COMPARE(m_goneWorker->m_iSignals.load(), 1);
        StatusFolder().RemoveStatus(c_strGone);
        m_sinceGone.start();
    }

    void startsWithoutPrinter()
    {
        const TrdGetPrinterStatus worker;
        QCOMPARE(worker.m_iIndex, -1);
        QVERIFY(worker.m_pListPrinterManager == nullptr);
        QVERIFY(worker.m_dtLastModified.isNull());
        QCOMPARE(worker.m_printerManager.printerInfo.strPrinterName, QString());
        QCOMPARE(worker.m_buffer.size(), std::size_t(2048));
    }

    void changeTest_data()
    {
        QTest::addColumn<stPrinterState>("state");
        QTest::addColumn<bool>("bChanged");
        const auto row = [](const char* pName, bool bChanged, auto change) {
            stPrinterState state;
            change(state);
            QTest::newRow(pName) << state << bChanged;
        };
        row("nothing", false, [](stPrinterState&) {});
        row("state", true, [](stPrinterState& state) { state.enCurrentStatus = 3; });
        row("remaining toner", true, [](stPrinterState& state) { state.dwRemainingToner = 1; });
        row("black", true, [](stPrinterState& state) { state.dwBlackInkRemainer = 1; });
        row("blue", true, [](stPrinterState& state) { state.dwBlueInkRemainer = 1; });
        row("red", true, [](stPrinterState& state) { state.dwRedInkRemainer = 1; });
        row("yellow", true, [](stPrinterState& state) { state.dwYellowInkRemainer = 1UL << 32U; });
        row("error", true, [](stPrinterState& state) { state.listErrorStatus.append(enErrorUnknown); });
        row("warning", true, [](stPrinterState& state) { state.listWarningStatus.append(enErrorUnknown); });
        row("serial number", false, [](stPrinterState& state) { state.strPrinterSerialNumber = u"x"_s; });
        row("firmware version", false, [](stPrinterState& state) { state.strFWVersion = u"x"_s; });
        row("vendor", false, [](stPrinterState& state) { state.strVenderName = u"x"_s; });
        row("product", false, [](stPrinterState& state) { state.strProductName = u"x"_s; });
        row("supply", false, [](stPrinterState& state) { state.strSupplySerialNumber = u"x"_s; });
        row("supply type", false, [](stPrinterState& state) { state.enSpplyType = 1; });
        row("waste toner", false, [](stPrinterState& state) { state.dwWasteToner = 1; });
        row("OPC rotation", false, [](stPrinterState& state) { state.dwOPCRotation = 1; });
        row("pages", false, [](stPrinterState& state) { state.dwNumberOfPages = 1; });
        row("prints", false, [](stPrinterState& state) { state.dwNumberOfPrint = 1; });
        row("dots", false, [](stPrinterState& state) { state.dwPrintDotsCount = 1; });
        row("printer's pages", false, [](stPrinterState& state) { state.dwPrinterNumOfPages = 1; });
        row("printer's prints", false, [](stPrinterState& state) { state.dwPrinterNumOfPrint = 1; });
        row("failures", false, [](stPrinterState& state) { state.iReadFailCount = 1; });
    }

    void changeTest()
    {
        QFETCH(stPrinterState, state);
        TrdGetPrinterStatus worker;
        QTEST(worker.CheckStatusChange(state, stPrinterState()), "bChanged");
        QTEST(worker.CheckStatusChange(stPrinterState(), state), "bChanged");
    }

    void changeTestSeesOrderOfCodes()
    {
        TrdGetPrinterStatus worker;
        stPrinterState state;
        state.listErrorStatus = {enErrorNoPaper, enErrorPaperJam};
        state.listWarningStatus = {enErrorBlackInkLow, enErrorColorInkLow};
        QVERIFY(!worker.CheckStatusChange(state, state));
        stPrinterState errorsTurned = state;
        errorsTurned.listErrorStatus = {enErrorPaperJam, enErrorNoPaper};
        QVERIFY(worker.CheckStatusChange(state, errorsTurned));
        stPrinterState warningsTurned = state;
        warningsTurned.listWarningStatus = {enErrorColorInkLow, enErrorBlackInkLow};
        QVERIFY(worker.CheckStatusChange(state, warningsTurned));
    }

    void indexOutsideTheListOnlySleeps_data()
    {
        QTest::addColumn<int>("iIndex");
        QTest::addColumn<int>("iSize"); // -1: no list
        QTest::newRow("never set") << -1 << 1;
        QTest::newRow("just beyond") << 1 << 1;
        QTest::newRow("far beyond") << 7 << 1;
        QTest::newRow("empty list") << 0 << 0;
        QTest::newRow("no list") << 0 << -1;
    }

    void indexOutsideTheListOnlySleeps()
    {
        QFETCH(int, iIndex);
        QFETCH(int, iSize);
        WriteNewStatus(c_strName, HandMadeReply());
        WriteNewStatus(QString(), HandMadeReply());
        PrinterList listPrinter;
        if (iSize > 0) {
            listPrinter.append(NamedPrinter(c_strName, 2));
        }
        CountedWorker counted(iIndex, iSize < 0 ? nullptr : &listPrinter);
        counted.RunOneCycle();
        QCOMPARE(counted.m_iSignals.load(), 0);
        QVERIFY(counted.m_worker.m_dtLastModified.isNull());
        for (const stPrinterManager& printer : std::as_const(listPrinter)) {
            QCOMPARE(printer.printerState.enCurrentStatus, 2);
        }
    }

    void publishesTheWholeRecord()
    {
        WriteNewStatus(c_strName, HandMadeReply());
        PrinterList listPrinter{NamedPrinter(u"First"_s, 3), NamedPrinter(c_strName, 2)};
        CountedWorker counted(1, &listPrinter);
        counted.RunOneCycle();
        QCOMPARE(counted.m_iSignals.load(), 1);
        QCOMPARE(counted.m_iLastIndex.load(), 1);
        const stPrinterManager& printer = listPrinter.at(1);
        QCOMPARE(printer.printerInfo.strPrinterName, c_strName);
        QCOMPARE(printer.printerInfo.enType, u"RA7QX"_s);
        QCOMPARE(printer.printerInfo.iConnectType, 2);
        QCOMPARE(printer.printerInfo.strPort, u"192.0.2.7"_s);
        QCOMPARE(printer.printerInfo.strURI, u"ipp://a"_s);
        QCOMPARE(printer.printerState.enCurrentStatus, 8);
        QCOMPARE(printer.printerState.strFWVersion, u"2.1.7"_s);
        QCOMPARE(printer.printerState.listErrorStatus, (QList<enErrorStatus>{enErrorPaperJam, enErrorYellowInkEmpty}));
        QCOMPARE(printer.printerState.dwPrinterNumOfPrint, 16909060UL);
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3);
        QCOMPARE(listPrinter.at(0).printerState.strFWVersion, QString());
    }

    void unchangedFileIsOpenedOnce()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        CountedWorker counted(0, &listPrinter);
        int iOpened = 0;
        const OpenHook count(StatusFolder().StatusPath(c_strName), [&iOpened] { return ++iOpened > 0; });
        counted.RunOneCycle();
        listPrinter[0].printerState.iReadFailCount = 10;
        for (int i = 0; i < 3; ++i) {
            counted.RunOneCycle();
        }
        QCOMPARE(iOpened, 1);
        QCOMPARE(counted.m_iSignals.load(), 1);
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3);
        QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, 10);
    }

    void offlinePrinterIsReadAlthoughUnchanged()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        CountedWorker counted(0, &listPrinter);
        counted.RunOneCycle();
        listPrinter[0] = NamedPrinter(c_strName, 2); // what a rebuilt list starts with
        counted.RunOneCycle();
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3);
        QCOMPARE(listPrinter.at(0).printerState.strFWVersion, u"1.0"_s);
        QCOMPARE(counted.m_iSignals.load(), 2);
    }

    void eleventhFailureMakesOffline()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        CountedWorker counted(0, &listPrinter);
        counted.RunOneCycle();
        StatusFolder().RemoveStatus(c_strName);
        for (int i = 1; i <= 10; ++i) {
            counted.RunOneCycle();
            QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, i);
            QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3);
            QCOMPARE(listPrinter.at(0).printerState.listErrorStatus.size(), 1);
        }
        QCOMPARE(counted.m_iSignals.load(), 1);

        counted.RunOneCycle();
        const stPrinterState& state = listPrinter.at(0).printerState;
        QCOMPARE(state.enCurrentStatus, 2);
        QVERIFY(state.listErrorStatus.isEmpty() && state.listWarningStatus.isEmpty());
        QCOMPARE(state.iReadFailCount, 0);
        QCOMPARE(state.dwBlackInkRemainer, 80UL); // the rest stays
        QCOMPARE(state.strFWVersion, u"1.0"_s);
        QCOMPARE(counted.m_iSignals.load(), 2);

        for (int i = 1; i <= 11; ++i) {
            counted.RunOneCycle();
            QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, i % 11);
        }
        QCOMPARE(counted.m_iSignals.load(), 2); // off-line already

        WriteNewStatus(c_strName, "rejected");
        counted.RunOneCycle();
        QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, 1);
        WriteReply(c_strName, ReadyReply());
        counted.RunOneCycle();
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3);
        QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, 0);
        QCOMPARE(counted.m_iSignals.load(), 3);
    }

    void exceptionPublishesTheStateUnchanged()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 8)};
        listPrinter[0].printerState.iReadFailCount = 4;
        CountedWorker counted(0, &listPrinter);
        const OpenHook fail(StatusFolder().StatusPath(c_strName),
                            []() -> bool { throw std::runtime_error("no file"); });
        counted.RunOneCycle();
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 8);
        QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, 4);
        QCOMPARE(counted.m_iSignals.load(), 0);
    }

    void rebuiltListIsNotWritten_data()
    {
        QTest::addColumn<PrinterList>("listRebuilt");
        const stPrinterManager before = NamedPrinter(c_strName, 2);
        stPrinterManager otherName = before;
        otherName.printerInfo.strPrinterName = u"Other"_s;
        stPrinterManager otherUri = before;
        otherUri.printerInfo.strURI = u"ipp://b"_s;
        QTest::newRow("other name") << PrinterList{before, otherName};
        QTest::newRow("other URI") << PrinterList{before, otherUri};
        QTest::newRow("printer moved up") << PrinterList{before};
        QTest::newRow("empty") << PrinterList{};
    }

    void rebuiltListIsNotWritten()
    {
        QFETCH(PrinterList, listRebuilt);
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(u"First"_s, 3), NamedPrinter(c_strName, 2)};
        CountedWorker counted(1, &listPrinter);
        const OpenHook rebuild(StatusFolder().StatusPath(c_strName), [&] {
            const std::lock_guard lock(g_mutexPrinterList);
            listPrinter = listRebuilt;
            return true;
        });
        counted.RunOneCycle();
        QCOMPARE(counted.m_worker.m_printerManager.printerState.enCurrentStatus, 3); // it did read
        QCOMPARE(counted.m_iSignals.load(), 0);
        QCOMPARE(listPrinter.size(), listRebuilt.size());
        for (int i = 0; i < listPrinter.size(); ++i) {
            QCOMPARE(listPrinter.at(i).printerInfo.strPrinterName, listRebuilt.at(i).printerInfo.strPrinterName);
            QCOMPARE(listPrinter.at(i).printerInfo.strURI, listRebuilt.at(i).printerInfo.strURI);
            QCOMPARE(listPrinter.at(i).printerState.enCurrentStatus, 2);
            QCOMPARE(listPrinter.at(i).printerState.strFWVersion, QString());
        }
    }

    /// A list with another port, model or connection for the same queue, while the worker reads.
    void newIdentityStays()
    {
        WriteReply(c_strName, ReadyReply());
        const stPrinterManager before = NamedPrinter(c_strName, 2);
        stPrinterManager after = before;
        after.printerInfo.strPort = u"10.0.0.99"_s;
        after.printerInfo.enType = u"RB9X"_s;
        after.printerInfo.iConnectType = before.printerInfo.iConnectType + 1;
        PrinterList listPrinter{before};
        CountedWorker counted(0, &listPrinter);
        const OpenHook rebuild(StatusFolder().StatusPath(c_strName), [&] {
            const std::lock_guard lock(g_mutexPrinterList);
            listPrinter = {after};
            return true;
        });
        counted.RunOneCycle();
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 3); // the state is the printer's all the same
        QCOMPARE(listPrinter.at(0).printerInfo.strPort, u"10.0.0.99"_s);
        QCOMPARE(listPrinter.at(0).printerInfo.enType, u"RB9X"_s);
        QCOMPARE(listPrinter.at(0).printerInfo.iConnectType, before.printerInfo.iConnectType + 1);
    }

    void listIsFreeDuringFileAccess()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        CountedWorker counted(0, &listPrinter);
        bool bFree = false;
        const OpenHook look(StatusFolder().StatusPath(c_strName), [&bFree] {
            bFree = IsListFree();
            return true;
        });
        counted.RunOneCycle();
        QVERIFY(bFree);
    }

    void listCanBeTakenAwayDuringFileAccess()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        CountedWorker counted(0, &listPrinter);
        const OpenHook take(StatusFolder().StatusPath(c_strName), [&counted] {
            counted.m_worker.Init(-1, nullptr);
            return true;
        });
        counted.RunOneCycle();
        QCOMPARE(counted.m_worker.m_printerManager.printerState.enCurrentStatus, 3); // it did read
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 2);
        QCOMPARE(counted.m_iSignals.load(), 0);
    }

    void loopFollowsTheFile()
    {
        WriteReply(c_strName, ReadyReply());
        PrinterList listPrinter{NamedPrinter(c_strName, 2)};
        RunningWorker unset(-1, &listPrinter);
        RunningWorker beyond(1, &listPrinter);
        RunningWorker running(0, &listPrinter);
        QTRY_COMPARE(running.m_iSignals.load(), 1);
        QCOMPARE(running.m_iLastIndex.load(), 0);
        QCOMPARE(SharedAt(listPrinter, 0).printerState.enCurrentStatus, 3);

        QElapsedTimer timer;
        timer.start();
        running.m_worker.SlotTaskStart(); // ignored
        QVERIFY(timer.elapsed() < 400);

        stStatusReply reply = ReadyReply();
        reply.firmwareVersion = "1.1";
        reply.listSupplies[0] = MakeSuppliesRecord(enSuppliesWasteToner, 2);
        WriteReply(c_strName, reply);
        QTRY_COMPARE_WITH_TIMEOUT(SharedAt(listPrinter, 0).printerState.dwWasteToner, 2UL, 2000);
        QCOMPARE(SharedAt(listPrinter, 0).printerState.strFWVersion, u"1.1"_s);
        QCOMPARE(running.m_iSignals.load(), 1);

        WriteNewStatus(c_strName, "rejected");
        QTRY_COMPARE_WITH_TIMEOUT(SharedAt(listPrinter, 0).printerState.iReadFailCount, 1, 2000);
        QCOMPARE(running.m_iSignals.load(), 1);
        WriteReply(c_strName, reply);
        QTRY_COMPARE_WITH_TIMEOUT(SharedAt(listPrinter, 0).printerState.iReadFailCount, 0, 2000);
        reply.byStatus = 0x10;
        WriteReply(c_strName, reply);
        QTRY_COMPARE_WITH_TIMEOUT(running.m_iSignals.load(), 2, 2000);
        QCOMPARE(SharedAt(listPrinter, 0).printerState.enCurrentStatus, 8);

        QCOMPARE(unset.m_iSignals.load() + beyond.m_iSignals.load(), 0);
        QVERIFY(running.EndWithin(2000));
    }

    void loopMakesOfflineAfterElevenReads()
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_goneWorker->m_iSignals.load(), 2, 15000);
        QVERIFY2(m_sinceGone.elapsed() >= 1000, QByteArray::number(m_sinceGone.elapsed()).constData());
        const stPrinterState state = SharedAt(m_listGone, 0).printerState;
        QCOMPARE(state.enCurrentStatus, 2);
        QVERIFY(state.listErrorStatus.isEmpty() && state.listWarningStatus.isEmpty());

        WriteReply(c_strGone, ReadyReply());
        QTRY_COMPARE_WITH_TIMEOUT(m_goneWorker->m_iSignals.load(), 3, 1900);
        QCOMPARE(SharedAt(m_listGone, 0).printerState.enCurrentStatus, 3);
        m_goneWorker.reset();
    }

private:
    // Runs during all tests, so that its eleven reads are not waited for.
    PrinterList m_listGone{NamedPrinter(c_strGone, 2)};
    std::unique_ptr<RunningWorker> m_goneWorker;
    QElapsedTimer m_sinceGone;
};

QTEST_GUILESS_MAIN(tst_TrdGetPrinterStatus)

#include "tst_TrdGetPrinterStatus.moc"
