// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"

namespace {

const QString c_strTrace = u"/tmp/calls.txt"_s;
constexpr int c_iPrinters = 10;
constexpr int c_iPausesOfPass = 2;

/// How often a thread has slept; -1 when there is none.
qint64 Sleeps(qint64 iPid, const QByteArray& thread)
{
    return ProcNumber(ReadProcFile(u"/proc/%1/task/%2/status"_s.arg(iPid).arg(QLatin1String(thread))),
                      "voluntary_ctxt_switches");
}

/// The thread of that name; empty when there is none.
QByteArray ThreadOf(qint64 iPid, const QByteArray& name)
{
    const QDir folder(u"/proc/%1/task"_s.arg(iPid));
    for (const QString& strThread : folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        if (ReadProcFile(folder.filePath(strThread) + u"/comm"_s).trimmed() == name) {
            return strThread.toLatin1();
        }
    }
    return {};
}

} // namespace

/// What the idle program does, counted. No figure depends on how fast the machine is.
class tst_Counts : public DesktopTest
{
    Q_OBJECT

private slots:
    void init()
    {
        QStringList listName;
        for (int i = 0; i < c_iPrinters; ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
    }

    /// A look at the file and the pause: no file is opened, nothing is locked or written.
    void passesThatFindNothingNew()
    {
        QFile::remove(c_strTrace);
        Start({u"strace"_s, u"-D"_s, u"-f"_s, u"-qq"_s, u"-o"_s, c_strTrace,
               QStringLiteral(VORA_TOOL)}); // strace leaves it its number
        const QByteArray poller = ThreadOf(m_process.processId(), "vora-status-0") + ' ';
        const QByteArray lister = ThreadOf(m_process.processId(), "vora-devices") + ' ';

        // One letter for each call: a look, a pause, anything else. Two workers that meet at the list's lock ask the
        // kernel too, which is chance.
        const auto calls = [](const QByteArray& thread, const QByteArray& file) {
            QByteArray listCall;
            for (const QByteArray& line : ReadFile(c_strTrace).split('\n')) {
                if (line.startsWith(thread) && !line.contains(" resumed>") && !line.contains(" futex(")) {
                    const bool bLook = line.contains("stat") && line.contains(file);
                    listCall += bLook ? 'l' : line.contains("nanosleep(") ? 'p' : 'x';
                }
            }
            return listCall;
        };
        // What comes before the first two passes alike is the start.
        const auto idle = [](const QByteArray& listCall, const QByteArray& pass) {
            const auto iBegin = listCall.indexOf(pass + pass);
            return iBegin < 0 ? QByteArray() : listCall.mid(iBegin);
        };
        const QByteArray poll = "lpp";
        const QByteArray list = "lpppppp";
        QByteArray polls;
        QByteArray lists;
        QTRY_VERIFY((polls = idle(calls(poller, "/Printer0.dat\""), poll)).size() >= 10 * poll.size());
        QTRY_VERIFY((lists = idle(calls(lister, "/printerlist.ini\""), list)).size() >= 4 * list.size());
        QCOMPARE(polls, poll.repeated(polls.size()).left(polls.size()));
        QCOMPARE(lists, list.repeated(lists.size()).left(lists.size()));
    }

    void windowSleeps_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("shown") << QStringList();
        QTest::newRow("hidden") << QStringList(u"-hide"_s);
    }

    /// While a worker looks at its file twenty times.
    void windowSleeps()
    {
        QFETCH(const QStringList, arguments);
        Start(QStringList(QStringLiteral(VORA_TOOL)) + arguments);
        const qint64 iPid = m_process.processId();
        const QByteArray window = QByteArray::number(iPid);
        const QByteArray worker = ThreadOf(iPid, "vora-status-0");
        const auto sleepsThrough = [=] {
            const qint64 iBefore = Sleeps(iPid, window);
            const qint64 iEnough = Sleeps(iPid, worker) + 20 * c_iPausesOfPass;
            return QTest::qWaitFor([=] { return Sleeps(iPid, worker) >= iEnough; }) && iBefore > 0 &&
                   Sleeps(iPid, window) == iBefore;
        };
        QVERIFY(QTest::qWaitFor(sleepsThrough, 12000)); // once all is painted
    }

    void cleanup()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    /// Without accessibility, which has calls and wake-ups of its own, and with short pauses.
    void Start(const QStringList& listCommand)
    {
        Preload(VORA_SHORT_SLEEP);
        m_process.start(listCommand.first(), listCommand.mid(1));
        qunsetenv("LD_PRELOAD");
        QVERIFY(m_process.waitForStarted());
        const QByteArray last = "vora-status-" + QByteArray::number(c_iPrinters - 1);
        QTRY_VERIFY(!ThreadOf(m_process.processId(), last.left(15)).isEmpty());
    }

    QProcess m_process;
};

QTEST_GUILESS_MAIN(tst_Counts)

#include "tst_Counts.moc"
