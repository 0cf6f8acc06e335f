// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <QScopeGuard>

#include <atomic>
#include <cstdio>
#include <thread>

namespace {

constexpr int c_iReaders = 40;
constexpr int c_iRewrites = 20000;
constexpr int c_iLooks = 10 * c_iReaders; // at rows with each of the replies

const QString c_strPath = u"/tmp/rewritten.dat"_s;

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
    const QString strNewPath = c_strPath + u".new"_s;
    return WriteFile(strNewPath, content) &&
           std::rename(strNewPath.toLatin1().constData(), c_strPath.toLatin1().constData()) == 0;
}

/// In two halves, over what is there.
bool RewriteInPlace(const QByteArray& content)
{
    QFile file(c_strPath);
    const auto iHalf = content.size() / 2;
    return file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && file.write(content.left(iHalf)) == iHalf &&
           file.write(content.mid(iHalf)) == content.size() - iHalf;
}

using Write = bool (*)(const QByteArray& content);

} // namespace

Q_DECLARE_METATYPE(Write)

/// A status file that is rewritten without pause while many printers' workers read it.
class tst_RewrittenFile : public FaultTest
{
    Q_OBJECT

private slots:
    void workersReadOn_data()
    {
        QTest::addColumn<Write>("write");
        QTest::addColumn<bool>("whole"); // a reader cannot tell half of one reply and half of the other from a reply
        QTest::newRow("writer that replaces") << &Replace << true;
        QTest::newRow("writer in place") << &RewriteInPlace << false;
    }

    void workersReadOn()
    {
        QFETCH(const Write, write);
        QFETCH(const bool, whole);
        StartReaders();
        {
            std::atomic<bool> bEnd{false};
            m_iRewrites = 0;
            std::thread writer([&] {
                for (bool bFirst = true; !bEnd; bFirst = !bFirst) {
                    m_iRewrites += write(Content(bFirst)) ? 1 : 0;
                }
            });
            const auto end = qScopeGuard([&] {
                bEnd = true;
                writer.join();
            });
            const int iOther = WatchRows();
            QVERIFY2(!whole || iOther == 0, QByteArray::number(iOther).constData());
            CheckNeighbour();
        }
        ShowLastReply();
        CheckAnswersAndExit();
    }

private:
    QStringList Row(int iRow) { return {State(iRow), Ink(iRow)}; }

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
            QVERIFY(QFile::link(c_strPath, StatusPath(iRow)));
        }
        for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(Row(iRow), c_listFirst, c_iTimeOutMSec);
        }
    }

    /// Until the file has been rewritten often enough. Returns how many looks showed something of neither reply.
    int WatchRows()
    {
        int iFirst = 0;
        int iSecond = 0;
        int iOther = 0;
        while (m_iRewrites < c_iRewrites || iFirst < c_iLooks || iSecond < c_iLooks) {
            for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
                // Within less than the program's pause a row that is in one state before and after was not in another
                // one between.
                QElapsedTimer timer;
                timer.start();
                const QStringList listRow = Row(iRow);
                if (State(iRow) == listRow.first() && timer.elapsed() < Tool::PauseMSec() * 9 / 10) {
                    ++(listRow == c_listFirst ? iFirst : listRow == c_listSecond ? iSecond : iOther);
                }
            }
            if (m_tool->Process().state() != QProcess::Running) {
                break;
            }
        }
        qInfo("%d rewrites; rows seen: %d, %d, %d other", m_iRewrites.load(), iFirst, iSecond, iOther);
        return iOther;
    }

    /// When the writer has come to rest.
    void ShowLastReply()
    {
        // A file's time moves in ticks of some milliseconds; within one tick the new file would pass for the old one.
        const QDateTime dtBefore = QFileInfo(c_strPath).lastModified();
        do {
            QVERIFY(Replace(Content(false)));
        } while (QFileInfo(c_strPath).lastModified() == dtBefore);
        for (int iRow = 1; iRow <= c_iReaders; ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(Row(iRow), c_listSecond, c_iTimeOutMSec);
        }
    }

    std::atomic<int> m_iRewrites{0};
};

QTEST_GUILESS_MAIN(tst_RewrittenFile)

#include "tst_RewrittenFile.moc"
