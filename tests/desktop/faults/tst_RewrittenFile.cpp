// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <array>
#include <atomic>
#include <cstdio>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int c_iReaders = 40;
constexpr int c_iRewrites = 20000;
constexpr int c_iLooks = 10 * c_iReaders; // at rows with each of the replies

const QByteArray c_path = "/tmp/rewritten.dat";

/// Two replies of the same length; nothing that the program shows is the same in both.
QByteArray Content(bool bFirst)
{
    stStatusReply reply;
    reply.byStatus = bFirst ? 0x10 : 0x11;
    reply.fifthString = QByteArray(1500, 'x'); // the state at one end, the ink levels at the other
    for (const enSuppliesKey enKey : {enSuppliesBlueInk, enSuppliesRedInk, enSuppliesYellowInk, enSuppliesBlackInk}) {
        reply.listSupplies.append(MakeSuppliesRecord(enKey, bFirst ? 80 : 5));
    }
    return EncodeStatusReply(reply);
}

const QStringList c_listFirst = {u"正在打印"_s, u"青色：高   红色：高   黄色：高   黑色：高"_s};
const QStringList c_listSecond = {u"正在扫描"_s, u"青色：低   红色：低   黄色：低   黑色：低"_s};

bool Replace(const QByteArray& content)
{
    const QByteArray newPath = c_path + ".new";
    const int iFd = ::open(newPath.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    const bool bWritten = ::write(iFd, content.constData(), static_cast<std::size_t>(content.size())) == content.size();
    ::close(iFd);
    return bWritten && std::rename(newPath.constData(), c_path.constData()) == 0;
}

/// In two halves, over what is there.
bool RewriteInPlace(const QByteArray& content)
{
    const int iFd = ::open(c_path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666);
    const auto iHalf = content.size() / 2;
    const bool bWritten = ::write(iFd, content.constData(), static_cast<std::size_t>(iHalf)) == iHalf &&
                          ::write(iFd, content.constData() + iHalf, static_cast<std::size_t>(content.size() - iHalf)) ==
                              content.size() - iHalf;
    ::close(iFd);
    return bWritten;
}

/// Writes the two replies in turn for as long as it lives.
class Rewriter
{
public:
    explicit Rewriter(bool (*write)(const QByteArray&)) : m_write(write), m_thread([this] { Run(); }) {}
    ~Rewriter()
    {
        m_bEnd = true;
        m_thread.join();
    }
    Rewriter(const Rewriter&) = delete;
    Rewriter& operator=(const Rewriter&) = delete;

    std::atomic<int> m_iRewrites{0};

private:
    void Run()
    {
        const std::array<QByteArray, 2> listContent = {Content(true), Content(false)};
        for (std::size_t i = 0; !m_bEnd; ++i) {
            m_iRewrites += m_write(listContent[i % 2]) ? 1 : 0;
        }
    }

    bool (*m_write)(const QByteArray&);
    std::atomic<bool> m_bEnd{false};
    std::thread m_thread; // last: it uses the others
};

} // namespace

/// A status file that is rewritten without pause while many printers' workers read it.
class tst_RewrittenFile : public FaultTest
{
    Q_OBJECT

private slots:
    void wholeRepliesOnlyOfAWriterThatReplaces()
    {
        StartReaders();
        {
            const Rewriter writer(Replace);
            QCOMPARE(WatchWhile(writer).iOther, 0);
            CheckNeighbour();
        }
        ShowLastReply();
        CheckAnswersAndExit();
    }

    void writerInPlaceHarmsNobodyElse()
    {
        StartReaders();
        {
            const Rewriter writer(RewriteInPlace);
            WatchWhile(writer); // a reader cannot tell half of one reply and half of the other from a reply
            CheckNeighbour();
        }
        ShowLastReply();
        CheckAnswersAndExit();
    }

private:
    struct stSeen
    {
        int iFirst = 0;
        int iSecond = 0;
        int iOther = 0;
    };

    /// Neighbour and printers whose status files are all one file.
    void StartReaders()
    {
        QStringList listName;
        for (int i = 0; i < c_iReaders; ++i) {
            listName.append(u"Reader%1"_s.arg(i));
        }
        StartBeside(listName);
        QVERIFY(Replace(Content(true)));
        for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
            QVERIFY(QFile::remove(StatusPath(iRow)));
            QVERIFY(QFile::link(QString::fromLatin1(c_path), StatusPath(iRow)));
        }
        for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT((QStringList{State(iRow), Ink(iRow)}), c_listFirst, c_iTimeOutMSec);
        }
    }

    /// What the rows show until the file has been rewritten often enough.
    stSeen WatchWhile(const Rewriter& writer)
    {
        stSeen seen;
        while (writer.m_iRewrites < c_iRewrites || seen.iFirst < c_iLooks || seen.iSecond < c_iLooks) {
            for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
                // Within less than the program's pause a row that is in one state before and after was not in another
                // one between.
                QElapsedTimer timer;
                timer.start();
                const QString strState = State(iRow);
                const QStringList listRow = {strState, Ink(iRow)};
                if (State(iRow) == strState && timer.elapsed() < Tool::PauseMSec() * 9 / 10) {
                    ++(listRow == c_listFirst ? seen.iFirst : listRow == c_listSecond ? seen.iSecond : seen.iOther);
                }
            }
            if (m_tool->Process().state() != QProcess::Running) {
                break;
            }
        }
        qInfo("%d rewrites; rows seen: %d of the first reply, %d of the second, %d other", writer.m_iRewrites.load(),
              seen.iFirst, seen.iSecond, seen.iOther);
        return seen;
    }

    /// When the writer has come to rest.
    void ShowLastReply()
    {
        // A file's time moves in ticks of some milliseconds; within one tick the new file would pass for the old one.
        const QString strPath = QString::fromLatin1(c_path);
        const QDateTime dtBefore = QFileInfo(strPath).lastModified();
        do {
            QVERIFY(Replace(Content(false)));
        } while (QFileInfo(strPath).lastModified() == dtBefore);
        for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT((QStringList{State(iRow), Ink(iRow)}), c_listSecond, c_iTimeOutMSec);
        }
    }
};

QTEST_GUILESS_MAIN(tst_RewrittenFile)

#include "tst_RewrittenFile.moc"
