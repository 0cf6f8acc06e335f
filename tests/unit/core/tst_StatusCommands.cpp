// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the status worker asks of the print system: to cancel jobs, and whether it prints.

#include "FakeCommand.h"
#include "HandMadeReply.h"
#include "OpenHook.h"
#include "RunningWorker.h"
#include "StatusFolder.h"
#include "SystemHook.h"
#include "UtilLog.h"

#include <QScopeGuard>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using PrinterList = QList<stPrinterManager>;

constexpr quint8 c_byReady = 0x00;
constexpr quint8 c_byCanceling = 0x03;

const QString c_strName = u"Queue"_s;

void WriteState(const QString& strName, quint8 byStatus)
{
    QDir().mkpath(QFileInfo(StatusFolder().StatusPath(strName)).path());
    WriteNewStatus(strName, ReplyInState(byStatus));
}

/// A name of iCount characters that is longer than a file name may be: the file lies in folders.
QString LongName(const QString& strCharacter, int iCount)
{
    QString strName;
    for (int i = 1; i <= iCount; ++i) {
        strName += i % 61 == 0 ? u"/"_s : strCharacter;
    }
    return strName;
}

/// Keeps a fake command from returning until it is let go.
class Gate
{
public:
    Gate() { QFile::remove(m_strPath); }
    ~Gate() { Open(); }
    Gate(const Gate&) = delete;
    Gate& operator=(const Gate&) = delete;

    QByteArray Script() const { return "until [ -e " + QFile::encodeName(m_strPath) + " ]; do sleep 0.02; done"; }
    bool Open() const { return WriteFile(m_strPath, QByteArray()); }

private:
    const QString m_strPath = u"/tmp/gate"_s;
};

} // namespace

class tst_StatusCommands : public QObject
{
    Q_OBJECT

private slots:
    void cancelsOnceForEachChange()
    {
        const FakeCommand cancel(u"cancel"_s);
        WriteState(c_strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(c_strName, 3)};
        RunningWorker running(0, &listPrinter);
        const QList<QByteArrayList> once{{"Queue"}};
        QTRY_COMPARE(running.m_iSignals.load(), 1);
        QCOMPARE(cancel.Calls(), once);
        QCOMPARE(SharedAt(listPrinter, 0).printerState.enCurrentStatus, 6);

        // Another visible change in the same state.
        stStatusReply reply;
        reply.byStatus = c_byCanceling;
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 42)};
        WriteNewStatus(c_strName, EncodeStatusReply(reply));
        QTRY_COMPARE(running.m_iSignals.load(), 2);
        QCOMPARE(cancel.Calls(), once);

        WriteState(c_strName, c_byReady);
        QTRY_COMPARE(running.m_iSignals.load(), 3);
        QCOMPARE(cancel.Calls(), once);
        WriteState(c_strName, c_byCanceling);
        QTRY_COMPARE(running.m_iSignals.load(), 4);
        QCOMPARE(cancel.Calls(), (QList<QByteArrayList>{{"Queue"}, {"Queue"}}));
    }

    void cancelsOnlyWhenTheStateIsNew_data()
    {
        QTest::addColumn<int>("iBefore");
        QTest::addColumn<int>("byStatus");
        QTest::addColumn<int>("iCalls");
        QTest::newRow("off-line to cancelling") << 2 << 0x03 << 1;
        QTest::newRow("ready to cancelling") << 3 << 0x03 << 1;
        QTest::newRow("printing to cancelling") << 8 << 0x03 << 1;
        QTest::newRow("cancelling already") << 6 << 0x03 << 0;
        QTest::newRow("cancelling to ready") << 6 << 0x00 << 0;
        QTest::newRow("ready to busy") << 3 << 0x02 << 0;
    }

    void cancelsOnlyWhenTheStateIsNew()
    {
        QFETCH(int, iBefore);
        QFETCH(int, byStatus);
        const FakeCommand cancel(u"cancel"_s);
        WriteState(c_strName, static_cast<quint8>(byStatus));
        PrinterList listPrinter{NamedPrinter(c_strName, iBefore)};
        CountedWorker counted(0, &listPrinter);
        for (int i = 0; i < 3; ++i) {
            counted.RunOneCycle();
        }
        QTEST(static_cast<int>(cancel.Calls().size()), "iCalls");
    }

    void cancelsOnceForTwoWorkersOnOnePrinter()
    {
        const FakeCommand cancel(u"cancel"_s);
        WriteState(c_strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(c_strName, 3)};
        // Both have taken the old state before either reads the file.
        std::atomic<int> iInOpen{0};
        const OpenHook meet(StatusFolder().StatusPath(c_strName), [&iInOpen] {
            ++iInOpen;
            return QTest::qWaitFor([&iInOpen] { return iInOpen == 2; }, 5000);
        });
        RunningWorker first(0, &listPrinter);
        RunningWorker second(0, &listPrinter);
        QTRY_COMPARE(iInOpen.load(), 2);
        QVERIFY(first.EndWithin(5000) && second.EndWithin(5000));
        QCOMPARE(cancel.Calls(), QList<QByteArrayList>{{"Queue"}});
        QCOMPARE(first.m_iSignals + second.m_iSignals, 1);
    }

    void cancelGetsTheNameAsOneArgument_data()
    {
        QTest::addColumn<QString>("strName");
        const QStringList listName = {u"Off,ice"_s,
                                      u"two words"_s,
                                      u" "_s,
                                      u"it's"_s,
                                      u"'"_s,
                                      u"''\"''"_s,
                                      u"$(touch owned)"_s,
                                      u"`touch owned`"_s,
                                      u"$HOME"_s,
                                      u"a;touch owned"_s,
                                      u"a&b|c>d<e"_s,
                                      u"line\nbreak"_s,
                                      u"星原 一号"_s,
                                      u"*"_s,
                                      u"~"_s,
                                      u"#1"_s,
                                      u"back\\slash\\"_s,
                                      u"100%s%n"_s,
                                      u"a -a"_s};
        for (const QString& strName : listName) {
            QTest::newRow(qPrintable(strName)) << strName;
        }
    }

    void cancelGetsTheNameAsOneArgument()
    {
        QFETCH(QString, strName);
        const FakeCommand cancel(u"cancel"_s);
        WriteState(strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(strName, 3)};
        CountedWorker counted(0, &listPrinter);
        counted.RunOneCycle();
        QCOMPARE(cancel.Calls(), QList<QByteArrayList>{{strName.toUtf8()}});
        QVERIFY(!QFile::exists(u"owned"_s));
    }

    void cancelGetsTheBeginningOfALongName_data()
    {
        // The word "cancel", a blank and two quotes take 9 of the 255 bytes.
        QTest::addColumn<QString>("strName");
        QTest::addColumn<int>("iKept");
        QTest::newRow("246 bytes") << LongName(u"a"_s, 246) << 246;
        QTest::newRow("247 bytes") << LongName(u"a"_s, 247) << 246;
        QTest::newRow("300 quotes of 4 bytes each") << LongName(u"'"_s, 300) << 62;
        QTest::newRow("300 times 3 bytes") << LongName(u"星"_s, 300) << 82;
        QTest::newRow("300 times 4 bytes") << LongName(u"😀"_s, 300) << 60 * 2 + 1 + 2;
        // Room for what would stand for half a character.
        QTest::newRow("3 bytes short of the next character") << u"ab"_s + LongName(u"😀"_s, 300) << 2 + 60 * 2 + 1;
    }

    void cancelGetsTheBeginningOfALongName()
    {
        QFETCH(QString, strName);
        QFETCH(int, iKept);
        const FakeCommand cancel(u"cancel"_s);
        WriteState(strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(strName, 3)};
        CountedWorker counted(0, &listPrinter);
        counted.RunOneCycle();
        QCOMPARE(cancel.Calls(), QList<QByteArrayList>{{strName.left(iKept).toUtf8()}});
    }

    void cancelIsNotRunForAnOption_data()
    {
        QTest::addColumn<QString>("strName");
        QTest::newRow("every job of every queue") << u"-a"_s;
        QTest::newRow("standard input") << u"-"_s;
        QTest::newRow("two dashes") << u"--"_s;
        QTest::newRow("empty") << QString();
    }

    void cancelIsNotRunForAnOption()
    {
        QFETCH(QString, strName);
        const FakeCommand cancel(u"cancel"_s);
        WriteState(strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(strName, 3)};
        CountedWorker counted(0, &listPrinter);
        SetLogEnable(true);
        const int iLogSize = static_cast<int>(LogText().size());
        counted.RunOneCycle();
        SetLogEnable(false);
        QCOMPARE(cancel.Calls(), QList<QByteArrayList>());
        QCOMPARE(counted.m_iSignals.load(), 1);
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 6);
        const QByteArray log = LogText().mid(iLogSize);
        QCOMPARE(log.count("CancelJobs) cancel by printer " + strName.toUtf8() + '\n'), 1);
        QCOMPARE(log.count("not cancelled"), 1);
    }

    void cancelIsLoggedOnce()
    {
        const FakeCommand cancel(u"cancel"_s);
        const QString strName = u"100%s 星原"_s;
        WriteState(strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(strName, 3)};
        CountedWorker counted(0, &listPrinter);
        SetLogEnable(true);
        const int iLogSize = static_cast<int>(LogText().size());
        for (int i = 0; i < 3; ++i) {
            counted.RunOneCycle();
        }
        SetLogEnable(false);
        const QByteArray log = LogText().mid(iLogSize);
        QCOMPARE(log.count('\n'), 1);
        QVERIFY2(log.endsWith(") cancel by printer " + strName.toUtf8() + '\n'), log.constData());
    }

    void listIsFreeWhileCancelHangs()
    {
        const Gate gate;
        const FakeCommand cancel(u"cancel"_s, gate.Script());
        WriteState(c_strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(c_strName, 3)};
        RunningWorker running(0, &listPrinter);
        QTRY_COMPARE(cancel.Calls().size(), 1);
        {
            const std::unique_lock lock(g_mutexPrinterList, std::try_to_lock);
            QVERIFY(lock.owns_lock());
        }
        QCOMPARE(running.m_iSignals.load(), 0); // the signal follows the command
        QVERIFY(gate.Open());
        QTRY_COMPARE(running.m_iSignals.load(), 1);
    }

    void listCanBeTakenAwayWhileCancelHangs()
    {
        const Gate gate;
        const FakeCommand cancel(u"cancel"_s, gate.Script());
        WriteState(c_strName, c_byCanceling);
        PrinterList listPrinter{NamedPrinter(c_strName, 3)};
        RunningWorker running(0, &listPrinter);
        QTRY_COMPARE(cancel.Calls().size(), 1);
        running.m_worker.Init(-1, nullptr);
        listPrinter[0] = NamedPrinter(c_strName, 2); // nobody else looks at it any more
        WriteState(c_strName, c_byReady);

        QVERIFY(gate.Open());
        QTRY_COMPARE(running.m_iSignals.load(), 1);
        QVERIFY(running.EndWithin(5000));
        running.RunOneCycle(); // with the list, it would read the new file
        QCOMPARE(listPrinter.at(0).printerState.enCurrentStatus, 2);
        QCOMPARE(running.m_iSignals.load(), 1);
        QCOMPARE(cancel.Calls().size(), 1);
    }

    void needsStatus_data()
    {
        QTest::addColumn<int>("iConnectType");
        QTest::addColumn<int>("iStatus");
        QTest::addColumn<int>("iInterval");
        QTest::newRow("USB, ready") << 1 << 3 << 100;
        QTest::newRow("USB, off-line") << 1 << 2 << 100;
        QTest::newRow("network, off-line") << 2 << 2 << 10000;
        QTest::newRow("network, unknown") << 2 << 0 << 1000;
        QTest::newRow("network, printing") << 2 << 8 << 1000;
        QTest::newRow("neither, busy") << 0 << 5 << 1000;
    }

    void needsStatus()
    {
        QFETCH(int, iConnectType);
        QFETCH(int, iStatus);
        const FakeCommand lpstat(u"lpstat"_s);
        TrdGetPrinterStatus worker;
        worker.m_printerManager = NamedPrinter(c_strName, iStatus);
        worker.m_printerManager.printerInfo.iConnectType = iConnectType;
        int iFound = -7;
        QVERIFY(worker.CheckNeedStatus(iFound));
        QTEST(iFound, "iInterval");
        QVERIFY(lpstat.Calls().isEmpty());
    }

    void readyNetworkPrinterAsksThePrintSystem_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("bPrinting");
        QTest::newRow("no output") << QByteArray() << false;
        QTest::newRow("fails") << QByteArray("echo 'now printing' >&2; exit 1") << false;
        QTest::newRow("idle") << QByteArray("echo 'printer Queue is idle.'") << false;
        QTest::newRow("printing") << QByteArray("echo 'printer Queue now printing Queue-1.'") << true;
        QTest::newRow("capitals") << QByteArray("echo 'printer Queue now PRINTING Queue-1.'") << true;
        QTest::newRow("Chinese") << QByteArray("echo '打印机 Queue 正在打印 Queue-1。'") << true;
        QTest::newRow("in the second line") << QByteArray("echo idle; echo printing") << false;
        QTest::newRow("without line end") << QByteArray("printf printing") << true;
        const QByteArray remove = "rm /opt/vora/vora-printer-k507/tool/printer_4.tmp; ";
        QTest::newRow("name gone") << "echo printing; " + remove << true;
        QTest::newRow("one line of 10 MB") << QByteArray("head -c 10000000 /dev/zero; echo printing") << false;
    }

    void readyNetworkPrinterAsksThePrintSystem()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, bPrinting);
        QVERIFY(QDir().mkpath(ToolPath()));
        const FakeCommand lpstat(u"lpstat"_s, script);
        TrdGetPrinterStatus worker;
        worker.Init(4, nullptr);
        worker.m_printerManager = NamedPrinter(c_strName, 3);
        int iFound = -7;
        QCOMPARE(worker.CheckNeedStatus(iFound), bPrinting);
        QCOMPARE(iFound, bPrinting ? 1000 : 100);
        QCOMPARE(lpstat.Calls(), (QList<QByteArrayList>{{"-p", "Queue"}}));
        QVERIFY(!QFileInfo::exists(ToolPath() + u"printer_4.tmp"_s));
    }

    void lpstatGetsTheNameAsOneArgument()
    {
        QVERIFY(QDir().mkpath(ToolPath()));
        const FakeCommand lpstat(u"lpstat"_s);
        TrdGetPrinterStatus worker;
        worker.m_printerManager = NamedPrinter(u"a\" $(touch owned);'星"_s, 3);
        int iFound = -7;
        QVERIFY(!worker.CheckNeedStatus(iFound));
        QCOMPARE(lpstat.Calls(), (QList<QByteArrayList>{{"-p", "a\" $(touch owned);'星"}}));
        QVERIFY(!QFile::exists(u"owned"_s));
    }

    void lpstatWritesToItsTemporaryFile()
    {
        QVERIFY(QDir().mkpath(ToolPath()));
        const FakeCommand lpstat(u"lpstat"_s, "readlink /proc/self/fd/3 3>&1 > /tmp/output");
        TrdGetPrinterStatus worker;
        worker.Init(12, nullptr);
        worker.m_printerManager = NamedPrinter(c_strName, 3);
        int iFound = -7;
        QVERIFY(!worker.CheckNeedStatus(iFound));
        QCOMPARE(ReadFile(u"/tmp/output"_s), "/opt/vora/vora-printer-k507/tool/printer_12.tmp\n");
    }

    void linkAtTemporaryFileIsNotFollowed()
    {
        const QString strVictim = u"/tmp/victim"_s;
        const QString strTemporary = ToolPath() + u"printer_4.tmp"_s;
        QVERIFY(QDir().mkpath(ToolPath()));
        QVERIFY(WriteFile(strVictim, "precious"));
        QVERIFY(QFile::link(strVictim, strTemporary));
        const FakeCommand lpstat(u"lpstat"_s, "echo printing");
        TrdGetPrinterStatus worker;
        worker.Init(4, nullptr);
        worker.m_printerManager = NamedPrinter(c_strName, 3);
        int iFound = -7;
        QVERIFY(worker.CheckNeedStatus(iFound));
        QCOMPARE(ReadFile(strVictim), "precious");
        QVERIFY(!QFileInfo(strTemporary).isSymLink() && !QFileInfo::exists(strTemporary));
    }

    void whatTakesTheTemporaryFilesPlaceIsLeftAlone_data()
    {
        QTest::addColumn<QString>("target"); // of a link, else it is a FIFO
        QTest::newRow("link to a file") << u"/tmp/victim"_s;
        QTest::newRow("link to a device") << u"/dev/zero"_s;
        QTest::newRow("FIFO") << QString();
    }

    void whatTakesTheTemporaryFilesPlaceIsLeftAlone()
    {
        QFETCH(const QString, target);
        const QString strVictim = u"/tmp/victim"_s;
        const QString strTemporary = ToolPath() + u"printer_4.tmp"_s;
        QVERIFY(QDir().mkpath(ToolPath()));
        QVERIFY(WriteFile(strVictim, "precious"));
        const auto tidy = qScopeGuard([&] { QFile::remove(strTemporary); });
        const FakeCommand lpstat(u"lpstat"_s, "echo printing");
        ::alarm(20); // whatever blocks ends the program
        QByteArray written;
        const SystemHook swap([&](const QByteArray& command) {
            written = command;
            QFile::remove(strTemporary);
            if (target.isEmpty()) {
                ::mkfifo(QFile::encodeName(strTemporary).constData(), 0666);
            } else {
                QFile::link(target, strTemporary);
            }
        });
        TrdGetPrinterStatus worker;
        worker.Init(4, nullptr);
        worker.m_printerManager = NamedPrinter(c_strName, 3);
        int iFound = -7;
        QVERIFY(worker.CheckNeedStatus(iFound));
        ::alarm(0);
        QCOMPARE(ReadFile(strVictim), "precious");
        QVERIFY2(written.startsWith("lpstat -p 'Queue'> /proc/"), written.constData());
        QVERIFY(!QFileInfo(strTemporary).isFile() || QFileInfo(strTemporary).isSymLink());
    }

    void withoutToolFolderNothingIsPrinting()
    {
        QVERIFY(QDir(ToolPath()).removeRecursively());
        const FakeCommand lpstat(u"lpstat"_s, "echo printing");
        TrdGetPrinterStatus worker;
        worker.Init(4, nullptr);
        worker.m_printerManager = NamedPrinter(c_strName, 3);
        int iFound = -7;
        QVERIFY(!worker.CheckNeedStatus(iFound));
        QCOMPARE(iFound, 100);
        QVERIFY(lpstat.Calls().isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_StatusCommands)

#include "tst_StatusCommands.moc"
