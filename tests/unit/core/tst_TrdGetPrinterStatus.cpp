// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "OpenHook.h"
#include "Rows.h"
#include "RunningWorker.h"
#include "StatusFolder.h"

#include <stdexcept>
#include <thread>

namespace {

using PrinterList = QList<stPrinterManager>;

const QString c_strName = u"Queue"_s;
const QString c_strIdentity = u"Queue|RA7QX|2|192.0.2.7|ipp://a "_s;

stStatusReply ReadyReply()
{
    stStatusReply reply;
    reply.firmwareVersion = "1.0";
    reply.listErrorCode = {0x6110};
    reply.listWarningCode = {0x6160};
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesWasteToner, 1), MakeSuppliesRecord(enSuppliesBlackInk, 80)};
    return reply;
}

/// What becomes of it, but for the failed reads.
const QString c_strReadyState = u"|3|1.0|||13|25||0|0 1 80 0 0 0 0 0 0 0 0 0|"_s;

void WriteReply(const stStatusReply& reply)
{
    WriteNewStatus(c_strName, EncodeStatusReply(reply));
}

} // namespace

class tst_TrdGetPrinterStatus : public QObject
{
    Q_OBJECT

private slots:
    void startsWithoutPrinter()
    {
        const TrdGetPrinterStatus worker;
        QCOMPARE(worker.m_iIndex, -1);
        QVERIFY(worker.m_pListPrinterManager == nullptr);
        QVERIFY(worker.m_dtLastModified.isNull());
        QCOMPARE(worker.m_printerManager.printerInfo.strPrinterName, QString());
        QCOMPARE(worker.m_buffer.size(), std::size_t(2048));
    }

    void usersSeeStateTonerInkAndCodes()
    {
        using State = stPrinterState;
        // In both directions alike, else -1.
        const auto isSeen = [](auto member, auto value, decltype(value) other) {
            State state;
            State changed;
            state.*member = value;
            changed.*member = other;
            TrdGetPrinterStatus worker;
            const bool bSeen = worker.CheckStatusChange(state, changed);
            return bSeen == worker.CheckStatusChange(changed, state) ? int(bSeen) : -1;
        };
        QCOMPARE(isSeen(&State::enCurrentStatus, 2, 2), 0);
        QCOMPARE(isSeen(&State::enCurrentStatus, 2, 3), 1);
        for (const auto member : {&State::dwRemainingToner, &State::dwBlackInkRemainer, &State::dwBlueInkRemainer,
                                  &State::dwRedInkRemainer, &State::dwYellowInkRemainer}) {
            QCOMPARE(isSeen(member, 0UL, 1UL), 1);
            QCOMPARE(isSeen(member, 0UL, 1UL << 32U), 1);
        }
        const QList<enErrorStatus> listCode{enErrorNoPaper, enErrorPaperJam};
        for (const auto member : {&State::listErrorStatus, &State::listWarningStatus}) {
            QCOMPARE(isSeen(member, listCode, listCode), 0);
            QCOMPARE(isSeen(member, listCode, {enErrorPaperJam, enErrorNoPaper}), 1);
            QCOMPARE(isSeen(member, QList<enErrorStatus>(), {enErrorUnknown}), 1);
        }
        State hidden; // all the others
        hidden.strPrinterSerialNumber = hidden.strFWVersion = hidden.strVenderName = u"x"_s;
        hidden.strProductName = hidden.strSupplySerialNumber = u"x"_s;
        hidden.enSpplyType = hidden.iReadFailCount = 1;
        hidden.dwWasteToner = hidden.dwOPCRotation = hidden.dwNumberOfPages = hidden.dwNumberOfPrint = 1;
        hidden.dwPrintDotsCount = hidden.dwPrinterNumOfPages = hidden.dwPrinterNumOfPrint = 1;
        QVERIFY(!TrdGetPrinterStatus().CheckStatusChange(hidden, State()));
        QVERIFY(!TrdGetPrinterStatus().CheckStatusChange(State(), hidden));
    }

    void getsAListThatNobodyUses()
    {
        TrdGetPrinterStatus worker;
        std::atomic<bool> bDone{false};
        std::unique_lock lock(g_mutexPrinterList);
        std::thread giver([&] {
            worker.Init(0, nullptr);
            bDone = true;
        });
        const bool bEarly = QTest::qWaitFor([&] { return bDone.load(); }, 50);
        lock.unlock();
        giver.join();
        QVERIFY(!bEarly && bDone);
    }

    void indexOutsideTheListOnlySleeps()
    {
        WriteNewStatus(c_strName, HandMadeReply());
        WriteNewStatus(QString(), HandMadeReply());
        PrinterList none;
        PrinterList one{ListedPrinter(c_strName, 2)};
        const QList<QPair<int, PrinterList*>> listCase{{-1, &one}, {1, &one}, {7, &one}, {0, &none}, {0, nullptr}};
        for (const auto& [iIndex, pList] : listCase) {
            CountedWorker worker(iIndex, pList);
            RunOnePass(worker);
            QCOMPARE(worker.m_iSignals.load(), 0);
            QVERIFY(worker.m_dtLastModified.isNull());
            QCOMPARE(Texts(one), QStringList{c_strIdentity + c_strResetState});
        }
    }

    void unchangedFileIsOpenedOnce()
    {
        WriteReply(ReadyReply());
        PrinterList listPrinter{ListedPrinter(c_strName, 2)};
        CountedWorker worker(0, &listPrinter);
        int iOpened = 0;
        const OpenHook count(StatusFolder().StatusPath(c_strName), [&iOpened] { return ++iOpened > 0; });
        RunOnePass(worker);
        listPrinter[0].printerState.iReadFailCount = 10;
        for (int i = 0; i < 3; ++i) {
            RunOnePass(worker);
        }
        QCOMPARE(iOpened, 1);
        QCOMPARE(worker.m_iSignals.load(), 1);
        QCOMPARE(Text(listPrinter.at(0).printerState), c_strReadyState + u"10"_s);

        listPrinter[0] = ListedPrinter(c_strName, 2); // what a rebuilt list starts with: read although unchanged
        RunOnePass(worker);
        QCOMPARE(iOpened, 2);
        QCOMPARE(worker.m_iSignals.load(), 2);
        QCOMPARE(Text(listPrinter.at(0).printerState), c_strReadyState + u"0"_s);
    }

    void eleventhFailureMakesOffline()
    {
        WriteReply(ReadyReply());
        PrinterList listPrinter{ListedPrinter(c_strName, 2)};
        CountedWorker worker(0, &listPrinter);
        RunOnePass(worker);
        StatusFolder().RemoveStatus(c_strName);
        for (int i = 1; i <= 10; ++i) {
            RunOnePass(worker);
            QCOMPARE(Text(listPrinter.at(0).printerState), c_strReadyState + QString::number(i));
        }
        QCOMPARE(worker.m_iSignals.load(), 1);
        for (int i = 0; i <= 11; ++i) { // off-line in the first pass; the rest of the state stays
            RunOnePass(worker);
            QCOMPARE(Text(listPrinter.at(0).printerState),
                     u"|2|1.0||||||0|0 1 80 0 0 0 0 0 0 0 0 0|"_s + QString::number(i % 11));
            QCOMPARE(worker.m_iSignals.load(), 2);
        }

        WriteNewStatus(c_strName, "rejected");
        RunOnePass(worker);
        QCOMPARE(listPrinter.at(0).printerState.iReadFailCount, 1);
        WriteReply(ReadyReply());
        RunOnePass(worker);
        QCOMPARE(Text(listPrinter.at(0).printerState), c_strReadyState + u"0"_s);
        QCOMPARE(worker.m_iSignals.load(), 3);
    }

    void exceptionEndsThePassAlone()
    {
        WriteReply(ReadyReply());
        PrinterList listPrinter{ListedPrinter(c_strName, 8)};
        listPrinter[0].printerState.iReadFailCount = 4;
        const QStringList listBefore = Texts(listPrinter);
        CountedWorker worker(0, &listPrinter);
        {
            const OpenHook fail(StatusFolder().StatusPath(c_strName),
                                []() -> bool { throw std::runtime_error("no file"); });
            RunOnePass(worker);
        }
        QCOMPARE(Texts(listPrinter), listBefore);
        QCOMPARE(worker.m_iSignals.load(), 0);
    }

    /// The list, which is taken away from the worker where there is none, and its states afterwards: a new one for the
    /// same queue, whose other identity stays.
    void listThatChangesMeanwhile_data() { AddRows(u"list-rebuilds.json"_s, {"rebuilt", "states"}); }
    void listThatChangesMeanwhile()
    {
        QFETCH(QString, rebuilt);
        QFETCH(QString, states);
        WriteNewStatus(c_strName, HandMadeReply());
        PrinterList listPrinter{ListedPrinter(u"First"_s, 3), ListedPrinter(c_strName, 2)};
        CountedWorker worker(1, &listPrinter);
        bool bFree = false;
        const OpenHook change(StatusFolder().StatusPath(c_strName), [&] {
            bFree = IsListFree();
            if (rebuilt.isNull()) {
                worker.Init(-1, nullptr);
                return true;
            }
            const std::lock_guard lock(g_mutexPrinterList);
            listPrinter.clear();
            for (const stPrinterInfo& info : Printers(rebuilt)) {
                listPrinter.append({info, stPrinterState()});
            }
            return true;
        });
        RunOnePass(worker);
        QVERIFY(bFree); // no lock is held while a file is read
        QCOMPARE(Text(worker.m_printerManager.printerState), c_strHandMadeState); // it did read
        const bool bTold = states == u"2 8"_s;
        QCOMPARE(worker.m_iSignals.load(), bTold ? 1 : 0);
        QCOMPARE(worker.m_iLastIndex.load(), bTold ? 1 : -7);
        QVERIFY(!bTold || Text(listPrinter.last().printerState) == c_strHandMadeState);
        QStringList listIdentity;
        QStringList listState;
        for (const stPrinterManager& printer : std::as_const(listPrinter)) {
            listIdentity.append(Text(printer.printerInfo));
            listState.append(QString::number(printer.printerState.enCurrentStatus));
        }
        QCOMPARE(listState.join(QLatin1Char(' ')), states);
        QVERIFY(rebuilt.isNull() || listIdentity == Texts(Printers(rebuilt)));
    }

    void loopFollowsTheFile()
    {
        WriteReply(ReadyReply());
        PrinterList listPrinter{ListedPrinter(c_strName, 2)};
        CountedWorker worker(0, &listPrinter);
        RunningWorker running(worker);
        const auto state = [&listPrinter] { return SharedTexts(listPrinter).first().mid(c_strIdentity.size()); };
        QTRY_COMPARE(worker.m_iSignals.load(), 1);
        QCOMPARE(state(), c_strReadyState + u"0"_s);
        worker.SlotTaskStart(); // ignored: would not return before the loop's end

        stStatusReply reply = ReadyReply();
        reply.firmwareVersion = "1.1";
        reply.listSupplies[0] = MakeSuppliesRecord(enSuppliesWasteToner, 2);
        WriteReply(reply);
        QTRY_COMPARE_WITH_TIMEOUT(state(), u"|3|1.1|||13|25||0|0 2 80 0 0 0 0 0 0 0 0 0|0"_s, 2000);
        WriteNewStatus(c_strName, "rejected");
        QTRY_COMPARE_WITH_TIMEOUT(state(), u"|3|1.1|||13|25||0|0 2 80 0 0 0 0 0 0 0 0 0|1"_s, 2000);
        QCOMPARE(worker.m_iSignals.load(), 1); // none of this is seen by users
        reply.byStatus = 0x10;
        WriteReply(reply);
        QTRY_COMPARE_WITH_TIMEOUT(worker.m_iSignals.load(), 2, 2000);
        QCOMPARE(state(), u"|8|1.1|||13|25||0|0 2 80 0 0 0 0 0 0 0 0 0|0"_s);
        QVERIFY(running.EndWithin(2000));
    }
};

QTEST_GUILESS_MAIN(tst_TrdGetPrinterStatus)

#include "tst_TrdGetPrinterStatus.moc"
