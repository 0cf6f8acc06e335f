// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the status worker asks of the print system: to cancel jobs, and whether it prints.

#include "FakeCommand.h"
#include "HandMadeReply.h"
#include "OpenHook.h"
#include "Rows.h"
#include "RunningWorker.h"
#include "StatusFolder.h"
#include "UtilLog.h"

#include <dlfcn.h>

namespace {

using PrinterList = QList<stPrinterManager>;
using Calls = QList<QByteArrayList>;

constexpr quint8 c_byCanceling = 0x03;

const QString c_strName = u"Queue"_s;

QByteArray s_lastCommand; // of the shell

/// A queue with a status file, which tells of a new state or new ink at least, and the worker that follows it.
class Queue : public CountedWorker
{
public:
    explicit Queue(const QString& strName = c_strName, int iBefore = 3, quint8 byStatus = c_byCanceling)
        : CountedWorker(0, &m_listPrinter), m_listPrinter{ListedPrinter(strName, iBefore)}
    {
        stStatusReply reply;
        reply.byStatus = byStatus;
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 42)};
        QDir().mkpath(QFileInfo(StatusFolder().StatusPath(strName)).path());
        WriteNewStatus(strName, EncodeStatusReply(reply));
    }

    PrinterList m_listPrinter;
};

/// A name of iCount characters that is longer than a file name may be: the file lies in folders.
QString LongName(const QString& strCharacter, int iCount)
{
    QString strName;
    for (int i = 1; i <= iCount; ++i) {
        strName += i % 61 == 0 ? u"/"_s : strCharacter;
    }
    return strName;
}

/// What is asked of "cancel" in three passes.
Calls CancelCalls(const QString& strName, int iBefore = 3, quint8 byStatus = c_byCanceling)
{
    const FakeCommand cancel(u"cancel"_s);
    Queue queue(strName, iBefore, byStatus);
    for (int i = 0; i < 3; ++i) {
        RunOnePass(queue);
    }
    return queue.m_iSignals == 1 ? cancel.Calls() : Calls{{"not one signal"}};
}

/// The interval in which a printer needs polling now; negative when it does not.
int NeededInterval(const stPrinterManager& printer)
{
    TrdGetPrinterStatus worker;
    worker.Init(4, nullptr);
    worker.m_printerManager = printer;
    int iInterval = -7;
    return worker.CheckNeedStatus(iInterval) ? iInterval : -iInterval;
}

} // namespace

/// Stands for the C library's function of that name and notes what is asked for.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names it otherwise
extern "C" int system(const char* pCommand)
{
    s_lastCommand = pCommand;
    return reinterpret_cast<decltype(&system)>(::dlsym(RTLD_NEXT, "system"))(pCommand);
}

class tst_StatusCommands : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(QDir(ToolPath()).removeRecursively());
        QVERIFY(QDir().mkpath(ToolPath()));
    }

    void cancelsOnlyWhenTheStateIsNew()
    {
        for (const int iBefore : {2, 3, 8}) { // off-line, ready, printing
            QCOMPARE(CancelCalls(c_strName, iBefore), (Calls{{"Queue"}}));
        }
        QCOMPARE(CancelCalls(c_strName, 6), Calls()); // cancelling already
        QCOMPARE(CancelCalls(c_strName, 6, 0x00), Calls());
        QCOMPARE(CancelCalls(c_strName, 3, 0x02), Calls()); // busy
    }

    void cancelsOnceForTwoWorkersOnOnePrinter()
    {
        const FakeCommand cancel(u"cancel"_s);
        Queue first;
        CountedWorker second(0, &first.m_listPrinter);
        // Both have taken the old state before either reads the file.
        std::atomic<int> iInOpen{0};
        const OpenHook meet(StatusFolder().StatusPath(c_strName), [&iInOpen] {
            ++iInOpen;
            return QTest::qWaitFor([&iInOpen] { return iInOpen == 2; }, 5000);
        });
        RunningWorker firstRunning(first);
        RunningWorker secondRunning(second);
        QTRY_COMPARE(iInOpen.load(), 2);
        QVERIFY(firstRunning.EndWithin(5000) && secondRunning.EndWithin(5000));
        QCOMPARE(cancel.Calls(), (Calls{{"Queue"}}));
        QCOMPARE(first.m_iSignals + second.m_iSignals, 1);
    }

    void cancelGetsTheNameAsOneArgument()
    {
        // Others: tst_UtilShell.
        const QString strName = u"Off,ice it's \"$(touch owned)\" -a; touch owned\n星原 %s*\\"_s;
        QCOMPARE(CancelCalls(strName), (Calls{{strName.toUtf8()}}));
        QVERIFY(!QFile::exists(u"owned"_s));
    }

    void cancelGetsTheBeginningOfALongName()
    {
        // The word "cancel", a blank and two quotes take 9 of the 255 bytes.
        const QList<QPair<QString, int>> listCase = {
            {LongName(u"a"_s, 246), 246},
            {LongName(u"a"_s, 247), 246},
            {LongName(u"'"_s, 300), 62}, // 4 bytes each
            {LongName(u"星"_s, 300), 82},
            {LongName(u"😀"_s, 300), 60 * 2 + 1 + 2},
            {u"ab"_s + LongName(u"😀"_s, 300), 2 + 60 * 2 + 1}}; // and room for what would stand for half a character
        for (const auto& [strName, iKept] : listCase) {
            QCOMPARE(CancelCalls(strName), (Calls{{strName.left(iKept).toUtf8()}}));
        }
    }

    void cancelIsLoggedOnce()
    {
        for (const QString& strName : {u"100%s 星原"_s, u"-a"_s, u"-"_s, QString()}) {
            init();
            const QByteArray name = strName.toUtf8();
            const Calls calls = name.size() > 2 ? Calls{{name}} : Calls(); // the others are no queues
            SetLogEnable(true);
            QCOMPARE(CancelCalls(strName), calls);
            SetLogEnable(false);
            const QByteArray text = LogText();
            QCOMPARE(text.count("CancelJobs) cancel by printer " + name + '\n'), 1);
            QCOMPARE(text.count("CancelJobs) not cancelled, no queue name: " + name + '\n'), 1 - calls.size());
            QCOMPARE(text.count('\n'), 2 - calls.size());
        }
    }

    void listIsFreeAndCanBeTakenAwayWhileCancelHangs()
    {
        const FakeCommand cancel(u"cancel"_s, "until [ -e /tmp/gate ]; do sleep 0.02; done");
        Queue queue;
        SetLogEnable(true);
        RunningWorker running(queue);
        QTRY_COMPARE(cancel.Calls().size(), 1);
        SetLogEnable(false);
        QCOMPARE(LogText().count("cancel by printer"), 1); // so that a hanging command is seen
        QVERIFY(IsListFree());
        QCOMPARE(queue.m_iSignals.load(), 0); // the signal follows the command
        queue.Init(-1, nullptr);
        queue.m_listPrinter[0] = ListedPrinter(c_strName, 2); // nobody else looks at it any more
        WriteNewStatus(c_strName, ReplyInState(0x00));

        QVERIFY(WriteFile(u"/tmp/gate"_s, QByteArray()));
        QTRY_COMPARE(queue.m_iSignals.load(), 1);
        QCOMPARE(queue.m_iLastIndex.load(), 0); // the row that was written
        QVERIFY(running.EndWithin(5000));
        RunOnePass(queue); // with the list, it would read the new file
        QCOMPARE(queue.m_listPrinter.at(0).printerState.enCurrentStatus, 2);
        QCOMPARE(queue.m_iSignals.load(), 1);
        QCOMPARE(cancel.Calls().size(), 1);
    }

    void onlyAReadyNetworkPrinterAsksThePrintSystem()
    {
        const FakeCommand lpstat(u"lpstat"_s);
        const auto interval = [](int iConnectType, int iStatus) {
            stPrinterManager printer = ListedPrinter(c_strName, iStatus);
            printer.printerInfo.iConnectType = iConnectType;
            return NeededInterval(printer);
        };
        QCOMPARE(interval(1, 3), 100);
        QCOMPARE(interval(1, 2), 100);
        QCOMPARE(interval(0, 5), 1000);
        QCOMPARE(interval(2, 2), 10000);
        QCOMPARE(interval(2, 0), 1000);
        QCOMPARE(interval(2, 8), 1000);
        QVERIFY(lpstat.Calls().isEmpty());
    }

    void readyNetworkPrinterAsksThePrintSystem_data() { AddRows(u"lpstat-outputs.json"_s, {"script", "verdict"}); }
    void readyNetworkPrinterAsksThePrintSystem()
    {
        QFETCH(QString, script);
        QFETCH(QString, verdict);
        const FakeCommand lpstat(u"lpstat"_s, script.toUtf8());
        QCOMPARE(NeededInterval(ListedPrinter(c_strName, 3)), verdict == u"printing"_s ? 1000 : -100);
        QCOMPARE(lpstat.Calls(), (Calls{{"-p", "Queue"}}));
        QVERIFY(!QFileInfo::exists(ToolPath() + u"printer_4.tmp"_s));
    }

    void lpstatGetsTheNameAsOneArgumentAndASafeOutput()
    {
        const FakeCommand lpstat(u"lpstat"_s, "readlink /proc/self/fd/3 3>&1 > /tmp/output");
        QCOMPARE(NeededInterval(ListedPrinter(u"a\" $(touch owned);'星"_s, 3)), -100);
        QCOMPARE(lpstat.Calls(), (Calls{{"-p", "a\" $(touch owned);'星"}}));
        QVERIFY(!QFile::exists(u"owned"_s));
        QCOMPARE(ReadFile(u"/tmp/output"_s), "/opt/vora/vora-printer-k507/tool/printer_4.tmp\n");
        // Not by its name, which may stand for another file by then: see tst_UtilCommandOutput.
        QVERIFY2(s_lastCommand.contains("> /proc/"), s_lastCommand.constData());
    }

    void withoutToolFolderNothingIsPrinting()
    {
        QVERIFY(QDir(ToolPath()).removeRecursively());
        const FakeCommand lpstat(u"lpstat"_s, "echo printing");
        QCOMPARE(NeededInterval(ListedPrinter(c_strName, 3)), -100);
        QVERIFY(lpstat.Calls().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_StatusCommands)

#include "tst_StatusCommands.moc"
