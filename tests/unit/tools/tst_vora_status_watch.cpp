// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "VoraStatusTest.h"

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

/// What needs a terminal or a pipe of its own; transcripts/status/watch.txt has the rest.
class tst_vora_status_watch : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void terminal_data()
    {
        QTest::addColumn<QString>("arguments");
        QTest::addColumn<QByteArray>("start");
        QTest::newRow("fields") << u" --fields --watch reply.dat"_s << QByteArray("reply.dat: 33 bytes\r\n");
        QTest::newRow("overview") << u" --watch reply.dat"_s << QByteArray("\033[1mQUEUE");
    }

    /// Wiped each time.
    void terminal()
    {
        QFETCH(const QString, arguments);
        QFETCH(const QByteArray, start);
        WriteFile(u"reply.dat"_s, ReplyInState(0x00));
        SetModificationTime(u"reply.dat"_s, QDateTime::currentDateTime().addDays(-1)); // an age that lasts
        Watcher watcher({u"-qec"_s, c_strProgram + arguments, u"/dev/null"_s}, u"script"_s);
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count("\033[H\033[2J" + start), 1, c_iPatience);
        WriteFile(u"reply.dat"_s, ReplyInState(0x10));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("Printing"), c_iPatience);
        QCOMPARE(watcher.Output().count("\033[H\033[2J" + start), watcher.Output().count(start));
    }

    void endsThoughNobodyReads_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void endsThoughNobodyReads()
    {
        QFETCH(const int, signal);

        WriteFile(u"reply.dat"_s, WithError(0x6100));
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
