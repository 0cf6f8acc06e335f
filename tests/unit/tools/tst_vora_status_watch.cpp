// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "VoraStatusWatcher.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

class tst_vora_status_watch : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void watchFile()
    {
        const QString strPath = Write(ReplyInState(0x00));
        Watcher watcher({u"--fields"_s, u"--watch"_s, u"reply.dat"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().endsWith("0 (not in the reply)\n"), c_iPatience);
        QVERIFY(watcher.Output().startsWith("reply.dat: 33 bytes\n"));
        QVERIFY(watcher.Output().contains("  state: 0x00 Ready\n"));

        Write(ReplyInState(0x10));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("\n\nreply.dat: 33 bytes\n"), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x10 Printing\n"), c_iPatience);

        QVERIFY(QFile::remove(strPath));
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Messages(), QByteArray("vora-status: reply.dat: there is no such file\n"),
                                  c_iPatience);
        Write(WithErrors({0x6100}));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  error: 0x6100"), c_iPatience);
        // Nothing was printed but what changed.
        QCOMPARE(watcher.Output().count("reply.dat: "), 3);
        QCOMPARE(watcher.EndBy(SIGINT), 1);
    }

    void watchDriverFolder()
    {
        const DriverFolder folder = StatusFolder();
        const stPrinterInfo one = Printer(u"one"_s, u"RA7QX"_s, 1, QString());
        const stPrinterInfo two = Printer(u"two"_s, u"RA7QX"_s, 1, QString());
        folder.WritePrinterList({one});
        folder.WriteStatus(u"one"_s, ReplyInState(0x00));
        folder.WriteStatus(u"two"_s, ReplyInState(0x11));
        Watcher watcher({u"--fields"_s, u"--watch"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("one: 33 bytes\n"), c_iPatience);
        folder.WritePrinterList({one, two});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x11 Scanning\n"), c_iPatience);
        // The printer that came is followed too.
        folder.WriteStatus(u"two"_s, ReplyInState(0x12));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x12 Copying\n"), c_iPatience);
        QCOMPARE(watcher.EndBy(SIGINT), 0);
    }

    void watchJson()
    {
        Write(ReplyInState(0x00));
        Watcher watcher({u"--watch"_s, u"--json"_s, u"reply.dat"_s});
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count('\n'), 1, c_iPatience);
        // The same contents in a new file are no change.
        QVERIFY(QFile::remove(u"reply.dat"_s));
        Write(ReplyInState(0x00));
        Write(ReplyInState(0x03), u"next.dat"_s);
        const QDateTime start = QDateTime::currentDateTime();
        QTRY_VERIFY_WITH_TIMEOUT(start.msecsTo(QDateTime::currentDateTime()) > 2200, c_iPatience); // two looks
        QCOMPARE(std::rename("next.dat", "reply.dat"), 0);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("Canceling job"), c_iPatience);
        const QList<QByteArray> listLine = watcher.Output().trimmed().split('\n');
        QCOMPARE(listLine.size(), 2);
        for (const QByteArray& line : listLine) {
            QCOMPARE(QJsonDocument::fromJson(line).object().value(u"format"_s).toInt(), 1);
        }
        QCOMPARE(watcher.EndBy(SIGTERM), 0);
    }

    void watchOnTerminal()
    {
        Write(ReplyInState(0x00));
        Watcher watcher({u"-qec"_s, c_strProgram + u" --fields --watch reply.dat"_s, u"/dev/null"_s}, u"script"_s);
        const QByteArray wiped = "\033[H\033[2Jreply.dat: 33 bytes\r\n";
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count(wiped), 1, c_iPatience);
        Write(ReplyInState(0x10));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("0x10 Printing"), c_iPatience);
        QCOMPARE(watcher.Output().count(wiped), watcher.Output().count("reply.dat: 33"));
    }

    void watchIsIdle()
    {
        Write(ReplyInState(0x00));
        Watcher watcher({u"--fields"_s, u"--watch"_s, u"reply.dat"_s});
        const QDateTime start = QDateTime::currentDateTime();
        QTRY_VERIFY_WITH_TIMEOUT(start.msecsTo(QDateTime::currentDateTime()) > 3000, c_iPatience);
        QVERIFY(!watcher.Output().isEmpty());
        const QByteArray stat = ReadFile(u"/proc/%1/stat"_s.arg(watcher.Pid()));
        const QList<QByteArray> listPart = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
        const long iTicks = listPart.at(11).toLong() + listPart.at(12).toLong();
        QVERIFY2(iTicks < ::sysconf(_SC_CLK_TCK) / 4, stat);
        QCOMPARE(watcher.EndBy(SIGINT), 0);
    }

    void watchEnds_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("expected");

        QTest::newRow("SIGINT, good") << SIGINT << ReplyInState(0x00) << 0;
        QTest::newRow("SIGINT, error") << SIGINT << WithErrors({0x6100}) << 1;
        QTest::newRow("SIGTERM, rejected") << SIGTERM << QByteArray("short") << 2;
    }

    void watchEnds()
    {
        QFETCH(const int, signal);
        QFETCH(const QByteArray, reply);
        QFETCH(const int, expected);

        Write(reply);
        Watcher watcher({u"--watch"_s, u"--hex"_s, u"reply.dat"_s});
        QTRY_VERIFY_WITH_TIMEOUT(!watcher.Output().isEmpty(), c_iPatience);
        QCOMPARE(watcher.EndBy(signal), expected);
    }

    void watchEndsThoughNobodyReads_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void watchEndsThoughNobodyReads()
    {
        QFETCH(const int, signal);

        Write(WithErrors({0x6100}));
        QCOMPARE(::mkfifo("pipe", 0600), 0);
        const int iPipe = ::open("pipe", O_RDWR | O_CLOEXEC);
        QVERIFY(iPipe >= 0);
        const QString strFiles = u" reply.dat"_s.repeated(100);
        Watcher watcher({u"-c"_s, u"exec \"$0\" --fields --watch"_s + strFiles + u" > pipe"_s, c_strProgram}, u"sh"_s);
        const auto unread = [iPipe] {
            int iBytes = 0;
            ::ioctl(iPipe, FIONREAD, &iBytes);
            return iBytes;
        };
        QTRY_COMPARE_WITH_TIMEOUT(unread(), ::fcntl(iPipe, F_GETPIPE_SZ), c_iPatience);
        QCOMPARE(watcher.EndBy(signal), 1);
        ::close(iPipe);
    }
};

QTEST_GUILESS_MAIN(tst_vora_status_watch)

#include "tst_vora_status_watch.moc"
