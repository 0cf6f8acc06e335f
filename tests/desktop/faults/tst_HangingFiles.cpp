// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <QDir>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

namespace {

const QString c_strHanging = u"/tmp/hanging"_s;
const QString c_strDestroyed = u"/tmp/globals-destroyed"_s;

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

/// Files that nobody can even look at without waiting.
class tst_HangingFiles : public FaultTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        AddSanitizerOption("detect_leaks=0"); // it stops all threads first, for which it would wait without end
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
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < 4 * Tool::PauseMSec()) { // the list's worker hangs by then as well
            QCOMPARE(State(1), u"就绪"_s);
            QTest::qWait(10);
        }
        CheckAnswersAndExit();
        QVERIFY(!QFile::exists(c_strDestroyed)); // which a worker that is left behind may still use
    }

private:
    static void LinkThere(const QString& strPath)
    {
        QVERIFY(QFile::remove(strPath));
        QVERIFY(QFile::link(c_strHanging + u"/file"_s, strPath));
    }
};

QTEST_GUILESS_MAIN(tst_HangingFiles)

#include "tst_HangingFiles.moc"
