// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "VoraStatusTest.h"

#include <cstdio>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

class tst_vora_status_watch : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void file()
    {
        WriteFile(u"reply.dat"_s, ReplyInState(0x00));
        Watcher watcher({u"--fields"_s, u"--watch"_s, u"reply.dat"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().endsWith("0 (not in the reply)\n"), c_iPatience);
        QVERIFY(watcher.Output().startsWith("reply.dat: 33 bytes\n"));
        QVERIFY(watcher.Output().contains("  state: 0x00 Ready\n"));

        WriteFile(u"reply.dat"_s, ReplyInState(0x10));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("\n\nreply.dat: 33 bytes\n"), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x10 Printing\n"), c_iPatience);

        QVERIFY(QFile::remove(u"reply.dat"_s));
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Messages(), QByteArray("vora-status: reply.dat: there is no such file\n"),
                                  c_iPatience);
        WriteFile(u"reply.dat"_s, WithError(0x6100));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  error: 0x6100"), c_iPatience);
        // Nothing was printed but what changed.
        QCOMPARE(watcher.Output().count("reply.dat: "), 3);
        QCOMPARE(watcher.EndBy(SIGINT), 1);
    }

    void driverFolder()
    {
        const DriverFolder folder = StatusFolder();
        const stPrinterInfo one{u"one"_s, u"RA7QX"_s, 1, QString(), QString()};
        const stPrinterInfo two{u"two"_s, u"RA7QX"_s, 1, QString(), QString()};
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

    void json()
    {
        WriteFile(u"reply.dat"_s, ReplyInState(0x00));
        Watcher watcher({u"--watch"_s, u"--json"_s, u"reply.dat"_s});
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count('\n'), 1, c_iPatience);
        // The same contents in a new file are no change.
        QVERIFY(QFile::remove(u"reply.dat"_s));
        WriteFile(u"reply.dat"_s, ReplyInState(0x00));
        WriteFile(u"next.dat"_s, ReplyInState(0x03));
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

    /// The overview, which tells them, changes with them.
    void ages()
    {
        WriteFile(u"reply.dat"_s, ReplyInState(0x00));
        Watcher watcher({u"--watch"_s, u"reply.dat"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains(" 0\n\nQUEUE"), c_iPatience);
        SetModificationTime(u"reply.dat"_s, QDateTime::currentDateTime().addSecs(-200));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  3 min "), c_iPatience);
        QCOMPARE(watcher.EndBy(SIGINT), 0);
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
