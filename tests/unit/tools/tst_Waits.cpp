// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// How long the programs of the desktop and the shell wait: what they ask for, not how long it took.

#include "QtCompat.h"
#include "StatusEncoder.h"
#include "TestFiles.h"

#include <QProcess>
#include <QtTest>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const QString c_strWaits = u"/tmp/waits"_s;

/// A program with the module in it that notes its waits. Killed with this object.
class Waiting : public QProcess
{
public:
    explicit Waiting(const QString& strBus = QString())
    {
        QFile::remove(c_strWaits);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VORA_NOTE_WAITS));
        environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, strBus);
        setProcessEnvironment(environment);
        setProcessChannelMode(QProcess::MergedChannels);
    }
    ~Waiting() override
    {
        kill();
        waitForFinished();
    }
};

/// Those between the bounds, both inclusive.
int Count(const QByteArray& kind, int iMin, int iMax)
{
    int iCount = 0;
    for (const QByteArray& line : ReadFile(c_strWaits).split('\n')) {
        const int iMSec = line.mid(line.indexOf(' ') + 1).toInt();
        iCount += line.startsWith(kind + ' ') && iMSec >= iMin && iMSec <= iMax ? 1 : 0;
    }
    return iCount;
}

constexpr int c_iEver = 1000000;

} // namespace

class tst_Waits : public QObject
{
    Q_OBJECT

private slots:
    void watchLooksEverySecond()
    {
        QVERIFY(WriteFile(u"/tmp/reply.dat"_s, EncodeStatusReply({})));
        Waiting watch;
        watch.start(QStringLiteral(VORA_STATUS), {u"--watch"_s, u"/tmp/reply.dat"_s});
        QTRY_VERIFY(Count("poll", 1000, 1000) >= 2);
        QCOMPARE(Count("poll", 0, 999), 0);
        QCOMPARE(Count("poll", 1001, c_iEver), 0);
    }

    /// And five seconds for an answer on the bus.
    void starterIsPatientForAMinute()
    {
        QProcess bus;
        bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address=unix:path=/tmp/bus"_s,
                                     u"--print-address=1"_s});
        QTRY_VERIFY(bus.canReadLine());
        {
            Waiting starter(QString::fromLatin1(bus.readLine().trimmed()));
            starter.start(QStringLiteral(VORA_LOGIN_START), QStringList());
            QTRY_COMPARE(Count("bus", 5000, 5000), 1);
            // The event loop's timers are allowed to differ by a twentieth.
            QTRY_VERIFY(Count("poll", 57000, 63000) >= 1);
            QCOMPARE(Count("poll", 63001, c_iEver), 0);
        }
        bus.kill();
        QVERIFY(bus.waitForFinished());
    }

    /// With the third of its answers.
    void simulatorIsOneAndAHalfSecondsLate()
    {
        Waiting simulator;
        simulator.start(QStringLiteral(VORA_PRINTER_SIM),
                        {u"everyday"_s, u"--root"_s, u"/tmp/root"_s, u"--udp"_s, u"127.0.0.1"_s, u"--misbehave"_s,
                         u"--speed"_s, u"0.1"_s}); // so that nothing else is due soon
        QTRY_VERIFY(simulator.canReadLine());
        QTRY_VERIFY(Count("poll", 15000, 20000) >= 1); // until the first step, after two seconds of the scenario
        QCOMPARE(Count("poll", 1400, 1500), 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(9300);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        const int iSocket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        const QByteArray query = QByteArray::fromHex("a5000c50e074080300000000000000");
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(::sendto(iSocket, query.constData(), 15, 0, reinterpret_cast<const sockaddr*>(&address),
                              sizeof(address)),
                     ssize_t(15));
        }
        ::close(iSocket);
        QTRY_VERIFY(Count("poll", 1400, 1500) >= 1);
    }
};

QTEST_GUILESS_MAIN(tst_Waits)

#include "tst_Waits.moc"
