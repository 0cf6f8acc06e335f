// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <unistd.h>

namespace {

const QString c_strReady = u"就绪"_s;
const QString c_strOffline = u"脱机"_s;

constexpr int c_iTimeOutMSec = 40000; // eleven failed reads

constexpr int c_iRewritten = 100; // printers of a list

const QString c_strHanging = u"/tmp/hanging"_s;
const QString c_strDestroyed = u"/tmp/globals-destroyed"_s;

/// What is wrong with a status file and what the program shows of its printer after a while. A file that is there and
/// cannot be used is one failed read until its time changes; only one that is missing fails each time, which makes its
/// printer off-line.
struct stFault
{
    QString strName;
    QString strCommand; ///< makes $F, which then takes the place of the status file, $1
    QString strState = c_strReady;
    QString strInk = u"青色：高   红色：中   黄色：较低   黑色：低"_s;
};

const QList<stFault> c_listFault = {
    {u"Fifo"_s, u"mkfifo $F"_s},
    {u"Folder"_s, u"mkdir $F"_s},
    {u"Zeros"_s, u"ln -s /dev/zero $F"_s},
    {u"Terminal"_s, u"ln -s /dev/ptmx $F"_s},
    {u"Dangling"_s, u"ln -s /nowhere $F"_s, c_strOffline},
    {u"Loop"_s, u"ln -s $1 $F"_s, c_strOffline},
    {u"Forbidden"_s, u"cp /tmp/scanning $F; chmod 0 $F"_s},
    {u"Empty"_s, u": > $F"_s},
    {u"CutOff"_s, u"head -c -1 /tmp/scanning > $F"_s},
    {u"Missing"_s, u"exit"_s, c_strOffline},
    {u"Sparse"_s, u"cp /tmp/scanning $F; truncate -s 4G $F"_s, u"正在扫描"_s},
    // A reply of zeros is well-formed: ready, and no ink.
    {u"Nul"_s, u"head -c 512 /dev/zero > $F"_s, c_strReady, u"青色：无   红色：无   黄色：无   黑色：无"_s},
};

/// A file system whose server does not answer, like that of a remote machine that is out of reach: whoever looks into
/// it waits. The kernel's requests to the server stay unread. Mounting takes root.
class HangingFileSystem
{
public:
    explicit HangingFileSystem(const QString& strFolder) : m_path(QFile::encodeName(strFolder))
    {
        QDir().mkpath(strFolder);
        m_iServer = ::open("/dev/fuse", O_RDWR | O_CLOEXEC);
        const QByteArray options = "fd=" + QByteArray::number(m_iServer) + ",rootmode=40000,user_id=0,group_id=0";
        if (::mount("hanging", m_path.constData(), "fuse", 0, options.constData()) != 0) {
            qFatal("mounting fails: %s", std::strerror(errno));
        }
    }
    ~HangingFileSystem()
    {
        ::close(m_iServer); // everybody who waits gets an error
        ::umount2(m_path.constData(), MNT_DETACH);
    }
    HangingFileSystem(const HangingFileSystem&) = delete;
    HangingFileSystem& operator=(const HangingFileSystem&) = delete;

private:
    QByteArray m_path;
    int m_iServer;
};

} // namespace

/// Files in every wrong form, and those that nobody can even look at without waiting, under the running program:
/// another printer is followed all the same, the window answers and the program ends in time.
class tst_FileFaults : public DesktopTest
{
    Q_OBJECT

private slots:
    /// What is forbidden by a file's mode is forbidden to the programs that this one starts, root's included.
    void initTestCase()
    {
        AddSanitizerOption("detect_leaks=0"); // it stops all threads first, for which it would wait without end
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
        const QString strPath = u"/tmp/forbidden"_s;
        QVERIFY(WriteFile(strPath, "secret"));
        QCOMPARE(Desktop::Run(u"cat"_s, {strPath}), u"secret"_s);
        QVERIFY(QFile::setPermissions(strPath, {}));
        QCOMPARE(Desktop::Run(u"cat"_s, {strPath}), QString());
    }

    void faultStaysWithItsPrinter()
    {
        QVERIFY(WriteFile(u"/tmp/scanning"_s, EncodeStatusReply(Reply(0x11))));
        QStringList listName;
        QList<QStringList> listExpected;
        for (const stFault& fault : c_listFault) {
            listName.append(fault.strName);
            listExpected.append({fault.strName, fault.strState, fault.strInk});
        }
        StartBeside(listName);
        PutFaults();
        CheckNeighbour();
        const auto shown = [&] {
            QList<QStringList> listShown;
            for (int iRow = 1; iRow <= listName.size(); ++iRow) {
                listShown.append({m_tool->Cell(iRow, 0), State(iRow), Ink(iRow)});
            }
            return listShown;
        };
        QTRY_COMPARE_WITH_TIMEOUT(shown(), listExpected, c_iTimeOutMSec);

        for (const QString& strName : std::as_const(listName)) { // all is well again
            std::remove(QFile::encodeName(m_folder.StatusPath(strName)).constData());
            WriteStatus(strName, Reply(0x12));
        }
        for (int iRow = 1; iRow <= listName.size(); ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"正在复印"_s, c_iTimeOutMSec);
        }
        PutFaults();
        CheckNeighbour();
        CheckAnswersAndExit();
    }

    void hangingFileHoldsUpItsPrinterAlone()
    {
        const QString strName = u"Remote"_s;
        StartBeside({strName});
        {
            const HangingFileSystem server(c_strHanging);
            LinkThere(StatusPath(1));
            for (int i = 0; i < 5; ++i) { // longer than eleven failed reads take: waiting is no failure
                CheckNeighbour();
            }
            QCOMPARE(State(1), u"就绪"_s);
        }
        QVERIFY(QFile::remove(StatusPath(1)));
        WriteStatus(strName, Reply(0x10));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在打印"_s, c_iTimeOutMSec);

        const HangingFileSystem server(c_strHanging);
        LinkThere(StatusPath(1));
        CheckNeighbour();
        CheckAnswersAndExit();
    }

    /// A list that changes while it is read, or between two looks, is not believed: the old one stays.
    void listRewrittenWithoutPauseIsWholeOrTheOldOne()
    {
        QStringList listOther = {u"Neighbour"_s};
        for (int i = 0; i < c_iRewritten; ++i) {
            listOther.append(u"Other%1"_s.arg(i));
        }
        WriteReadyPrinters(listOther);
        const QByteArray otherList = ReadFile(m_folder.ListPath());
        StartBeside(QStringList(listOther).replaceInStrings(u"Other"_s, u"Office"_s).mid(1));
        const QByteArray officeList = ReadFile(m_folder.ListPath());
        std::atomic<bool> bEnd{false};
        std::thread writer([&] {
            while (!bEnd) {
                RewriteInHalves(officeList);
                RewriteInHalves(otherList);
            }
        });
        QElapsedTimer timer;
        timer.start();
        QSet<int> setRows;
        bool bNamed = true;
        while (timer.elapsed() < 30 * Tool::PauseMSec()) { // ten passes
            setRows.insert(m_tool->RowCount());
            bNamed = bNamed && !m_tool->Cell(c_iRewritten, 0).isEmpty();
        }
        bEnd = true;
        writer.join();
        QCOMPARE(setRows, QSet<int>{c_iRewritten + 1});
        QVERIFY(bNamed);
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->Cell(c_iRewritten, 0), listOther.last(), c_iTimeOutMSec);
        CheckAnswersAndExit();
    }

    void hangingListHoldsUpNeitherWindowNorExit_data()
    {
        QTest::addColumn<QString>("place");
        QTest::newRow("the list alone") << c_strHanging;
        QTest::newRow("the whole folder") << m_folder.Path();
    }

    void hangingListHoldsUpNeitherWindowNorExit()
    {
        QFETCH(const QString, place);
        QFile::remove(c_strDestroyed);
        Preload(VORA_TELL_DESTRUCTION);
        StartBeside({u"Office"_s});
        qunsetenv("LD_PRELOAD");
        const HangingFileSystem server(place);
        if (place == c_strHanging) {
            LinkThere(m_folder.ListPath());
            CheckNeighbour();
        }
        const auto isLost = [this] { return State(1) != u"就绪"_s; };
        QVERIFY(!QTest::qWaitFor(isLost, 4 * Tool::PauseMSec())); // the list's worker hangs by then as well
        CheckAnswersAndExit();
        QVERIFY(!QFile::exists(c_strDestroyed)); // which a worker that is left behind may still use
    }

private:
    /// Starts the tool with the neighbour in row 0 and these printers in the rows below it, all ready.
    void StartBeside(const QStringList& listName)
    {
        m_listName = QStringList{u"Neighbour"_s} + listName;
        m_iSlowestMSec = 0;
        WriteReadyPrinters(m_listName);
        StartWithTray();
        for (int iRow = 0; iRow < m_listName.size(); ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"就绪"_s, c_iTimeOutMSec);
        }
    }

    QString Ink(int iRow) const { return m_tool->Cell(iRow, 2); }

    /// What stands in the state column. Each call takes the time of an answer, too.
    QString State(int iRow)
    {
        QElapsedTimer timer;
        timer.start();
        m_tool->RowCount();
        m_iSlowestMSec = std::max(m_iSlowestMSec, timer.elapsed());
        return m_tool->Cell(iRow, 3);
    }

    /// The neighbour takes one state after the other, and each is shown.
    void CheckNeighbour()
    {
        const QList<std::pair<quint8, QString>> listState = {
            {0x10, u"正在打印"_s}, {0x11, u"正在扫描"_s}, {0x02, u"忙碌"_s}};
        for (const auto& state : listState) {
            WriteStatus(m_listName.first(), Reply(state.first));
            QTRY_COMPARE_WITH_TIMEOUT(State(0), state.second, c_iTimeOutMSec);
        }
    }

    /// Ends the tool by its menu, within two seconds, and checks that each answer took less than one.
    void CheckAnswersAndExit()
    {
        ExitByMenu();
        qInfo("slowest answer %lld ms", static_cast<long long>(m_iSlowestMSec)); // 100 on an idle machine
        QVERIFY(m_iSlowestMSec < 1000);
    }

    QString StatusPath(int iRow) const { return m_folder.StatusPath(m_listName.at(iRow)); }

    void PutFaults() const
    {
        for (const stFault& fault : c_listFault) {
            const QString strScript = u"F=$1.new; rm $1 && "_s + fault.strCommand + u"; mv -T $F $1"_s;
            const QStringList listArgument = {u"-ec"_s, strScript, u"sh"_s, m_folder.StatusPath(fault.strName)};
            QCOMPARE(QProcess::execute(u"sh"_s, listArgument), 0);
        }
    }

    /// Over what is there.
    void RewriteInHalves(const QByteArray& content) const
    {
        QFile file(m_folder.ListPath());
        if (file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
            file.write(content.left(content.size() / 2));
            file.write(content.mid(content.size() / 2));
        }
    }

    static void LinkThere(const QString& strPath)
    {
        QVERIFY(QFile::remove(strPath));
        QVERIFY(QFile::link(c_strHanging + u"/file"_s, strPath));
    }

    QStringList m_listName;
    qint64 m_iSlowestMSec = 0;
};

QTEST_GUILESS_MAIN(tst_FileFaults)

#include "tst_FileFaults.moc"
