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
    void watchFile();
    void watchDriverFolder();
    void watchJson();
    void watchOnTerminal();
    void watchIsIdle();
    void watchEnds_data();
    void watchEnds();
    void watchEndsThoughNobodyReads_data();
    void watchEndsThoughNobodyReads();
};

void tst_vora_status_watch::watchFile()
{
    const QString strPath = Write(ReplyInState(0x00));
    Watcher watcher({QStringLiteral("--fields"), QStringLiteral("--watch"), QStringLiteral("reply.dat")});
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

void tst_vora_status_watch::watchDriverFolder()
{
    const DriverFolder folder = StatusFolder();
    const stPrinterInfo one = Printer(QStringLiteral("one"), QStringLiteral("RA7QX"), 1, QString());
    const stPrinterInfo two = Printer(QStringLiteral("two"), QStringLiteral("RA7QX"), 1, QString());
    folder.WritePrinterList({one});
    folder.WriteStatus(QStringLiteral("one"), ReplyInState(0x00));
    folder.WriteStatus(QStringLiteral("two"), ReplyInState(0x11));
    Watcher watcher({QStringLiteral("--fields"), QStringLiteral("--watch")});
    QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("one: 33 bytes\n"), c_iPatience);
    folder.WritePrinterList({one, two});
    QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x11 Scanning\n"), c_iPatience);
    // The printer that came is followed too.
    folder.WriteStatus(QStringLiteral("two"), ReplyInState(0x12));
    QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x12 Copying\n"), c_iPatience);
    QCOMPARE(watcher.EndBy(SIGINT), 0);
}

void tst_vora_status_watch::watchJson()
{
    Write(ReplyInState(0x00));
    Watcher watcher({QStringLiteral("--watch"), QStringLiteral("--json"), QStringLiteral("reply.dat")});
    QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count('\n'), 1, c_iPatience);
    // The same contents in a new file are no change.
    QVERIFY(QFile::remove(QStringLiteral("reply.dat")));
    Write(ReplyInState(0x00));
    Write(ReplyInState(0x03), QStringLiteral("next.dat"));
    const QDateTime start = QDateTime::currentDateTime();
    QTRY_VERIFY_WITH_TIMEOUT(start.msecsTo(QDateTime::currentDateTime()) > 2200, c_iPatience); // two looks
    QCOMPARE(std::rename("next.dat", "reply.dat"), 0);
    QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("Canceling job"), c_iPatience);
    const QList<QByteArray> listLine = watcher.Output().trimmed().split('\n');
    QCOMPARE(listLine.size(), 2);
    for (const QByteArray& line : listLine) {
        QCOMPARE(QJsonDocument::fromJson(line).object().value(QStringLiteral("format")).toInt(), 1);
    }
    QCOMPARE(watcher.EndBy(SIGTERM), 0);
}

void tst_vora_status_watch::watchOnTerminal()
{
    Write(ReplyInState(0x00));
    Watcher watcher({QStringLiteral("-qec"), c_strProgram + QStringLiteral(" --fields --watch reply.dat"),
                     QStringLiteral("/dev/null")},
                    QStringLiteral("script"));
    const QByteArray wiped = "\033[H\033[2Jreply.dat: 33 bytes\r\n";
    QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count(wiped), 1, c_iPatience);
    Write(ReplyInState(0x10));
    QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("0x10 Printing"), c_iPatience);
    QCOMPARE(watcher.Output().count(wiped), watcher.Output().count("reply.dat: 33"));
}

void tst_vora_status_watch::watchIsIdle()
{
    Write(ReplyInState(0x00));
    Watcher watcher({QStringLiteral("--fields"), QStringLiteral("--watch"), QStringLiteral("reply.dat")});
    const QDateTime start = QDateTime::currentDateTime();
    QTRY_VERIFY_WITH_TIMEOUT(start.msecsTo(QDateTime::currentDateTime()) > 3000, c_iPatience);
    QVERIFY(!watcher.Output().isEmpty());
    const QByteArray stat = ReadFile(QStringLiteral("/proc/%1/stat").arg(watcher.Pid()));
    const QList<QByteArray> listPart = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    const long iTicks = listPart.at(11).toLong() + listPart.at(12).toLong();
    QVERIFY2(iTicks < ::sysconf(_SC_CLK_TCK) / 4, stat);
    QCOMPARE(watcher.EndBy(SIGINT), 0);
}

void tst_vora_status_watch::watchEnds_data()
{
    QTest::addColumn<int>("signal");
    QTest::addColumn<QByteArray>("reply");
    QTest::addColumn<int>("expected");

    QTest::newRow("SIGINT, good") << SIGINT << ReplyInState(0x00) << 0;
    QTest::newRow("SIGINT, error") << SIGINT << WithErrors({0x6100}) << 1;
    QTest::newRow("SIGTERM, rejected") << SIGTERM << QByteArray("short") << 2;
}

void tst_vora_status_watch::watchEnds()
{
    QFETCH(const int, signal);
    QFETCH(const QByteArray, reply);
    QFETCH(const int, expected);

    Write(reply);
    Watcher watcher({QStringLiteral("--watch"), QStringLiteral("--hex"), QStringLiteral("reply.dat")});
    QTRY_VERIFY_WITH_TIMEOUT(!watcher.Output().isEmpty(), c_iPatience);
    QCOMPARE(watcher.EndBy(signal), expected);
}

void tst_vora_status_watch::watchEndsThoughNobodyReads_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void tst_vora_status_watch::watchEndsThoughNobodyReads()
{
    QFETCH(const int, signal);

    Write(WithErrors({0x6100}));
    QCOMPARE(::mkfifo("pipe", 0600), 0);
    const int iPipe = ::open("pipe", O_RDWR | O_CLOEXEC);
    QVERIFY(iPipe >= 0);
    const QString strFiles = QStringLiteral(" reply.dat").repeated(100);
    Watcher watcher({QStringLiteral("-c"),
                     QStringLiteral("exec \"$0\" --fields --watch") + strFiles + QStringLiteral(" > pipe"),
                     c_strProgram},
                    QStringLiteral("sh"));
    const auto unread = [iPipe] {
        int iBytes = 0;
        ::ioctl(iPipe, FIONREAD, &iBytes);
        return iBytes;
    };
    QTRY_COMPARE_WITH_TIMEOUT(unread(), ::fcntl(iPipe, F_GETPIPE_SZ), c_iPatience);
    QCOMPARE(watcher.EndBy(signal), 1);
    ::close(iPipe);
}

QTEST_GUILESS_MAIN(tst_vora_status_watch)

#include "tst_vora_status_watch.moc"
