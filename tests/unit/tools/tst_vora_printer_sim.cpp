// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The simulator as the printer tool meets it. tst_SimulatorTranscripts has what users see.

#include "TestFiles.h"
#include "TrdGetPrinterStatus.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QtTest>

#include <memory>
#include <set>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

const QString c_strRoot = u"/opt/vora/vora-printer-k507"_s;
const QString c_strCfg = c_strRoot + u"/cfg"_s;
const QStringList c_listUdp{u"--udp"_s, u"127.0.0.1"_s};
const QByteArray c_still = R"({"description": "d", "printers": [{"name": "Lab", "state": "printing"}]})";

} // namespace

class tst_vora_printer_sim : public QObject
{
    Q_OBJECT

private slots:
    void readerNeverSeesHalfAFile()
    {
        Play({u"--speed"_s, u"100"_s}, QByteArray(R"({"description": "d", "loop": true, "duration": 0.2,
            "printers": [{"name": "Lab", "fifth-string": "LONG"}, {"name": "Desk %1", "count": 30}],
            "timeline": [{"at": 0.1, "printer": "Lab", "fifth-string": "SHORT"},
                         {"at": 0.1, "printer": "Desk %1", "present": false}]})")
                                           .replace("LONG", QByteArray(1900, 'a'))
                                           .replace("SHORT", QByteArray(1000, 'b')));
        std::set<int> setSize;
        std::set<int> setCount;
        QElapsedTimer clock;
        clock.start();
        for (int iReads = 0; clock.elapsed() < 1000 || iReads < 1000; ++iReads) {
            TrdGetPrinterStatus worker;
            QCOMPARE(worker.GetPrinterStatusFile(u"Lab"_s, true), 0);
            const QByteArray bytes = ReadFile(c_strCfg + u"/Lab.dat"_s);
            QVERIFY(bytes.count('a') == 2 + 1900 || bytes.count('b') == 1000);
            setSize.insert(static_cast<int>(bytes.size()));
            const QByteArray list = ReadFile(c_strCfg + u"/printerlist.ini"_s);
            const int iCount = static_cast<int>(list.count("[printer_"));
            QVERIFY(list.contains("Count=" + QByteArray::number(iCount) + '\n'));
            QCOMPARE(static_cast<int>(list.count("Name=")), iCount);
            QVERIFY(list.endsWith('\n'));
            setCount.insert(iCount);
        }
        QCOMPARE(setSize.size(), std::size_t(2));
        QVERIFY(setCount == std::set<int>({1, 31}));
    }

    void udpKeepsSilentAboutAnythingElse()
    {
        Play(c_listUdp, c_still);
        const int iSocket = ::socket(AF_INET, SOCK_DGRAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(9300);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        QCOMPARE(::connect(iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        const QByteArray query = QByteArray::fromHex("a5000c50e074080300000000000000");
        // Only the last of them is answered.
        for (const QByteArray& each : {QByteArray(), QByteArray("status?"), query.left(14), query + '\0', query}) {
            ::send(iSocket, each.constData(), static_cast<std::size_t>(each.size()), 0);
        }
        QByteArray reply(4096, '\0');
        reply.truncate(static_cast<int>(std::max<ssize_t>(::recv(iSocket, reply.data(), 4096, 0), 0)));
        QCOMPARE(reply, ReadFile(c_strCfg + u"/Lab.dat"_s));
        char cMore = '\0';
        const timeval timeOut{0, 300000};
        QCOMPARE(::setsockopt(iSocket, SOL_SOCKET, SO_RCVTIMEO, &timeOut, sizeof(timeOut)), 0);
        QCOMPARE(::recv(iSocket, &cMore, 1, 0), ssize_t(-1));
        ::close(iSocket);
    }

    /// Not at all, too short, too late, and well.
    void udpMisbehavesInTurn()
    {
        Play(c_listUdp + QStringList(u"--misbehave"_s), c_still);
        TrdGetPrinterStatus worker;
        for (const auto& [iResult, bWaits] : {std::pair(-5, true), {-5, false}, {-5, true}, {0, false}}) {
            QElapsedTimer clock;
            clock.start();
            QCOMPARE(worker.GetPrinterStatusUDP(u"127.0.0.1"_s), iResult);
            QCOMPARE(clock.elapsed() >= 900, bWaits);
        }
        QCOMPARE(worker.m_printerManager.printerState.enCurrentStatus, 8);
    }

private:
    /// Returns when the first files are there.
    void Play(const QStringList& listOption, const QByteArray& scenario)
    {
        QVERIFY(WriteFile(u"/tmp/scenario.json"_s, scenario));
        m_pSimulator->start(QStringLiteral(VORA_PRINTER_SIM),
                            listOption + QStringList({u"--root"_s, c_strRoot, u"/tmp/scenario.json"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(m_pSimulator->canReadLine(), 10000);
    }

    std::unique_ptr<QProcess> m_pSimulator;

private slots:
    void init() { m_pSimulator = std::make_unique<QProcess>(); }

    void cleanup()
    {
        m_pSimulator->kill();
        m_pSimulator->waitForFinished();
        QDir(u"/opt/vora"_s).removeRecursively();
    }
};

QTEST_GUILESS_MAIN(tst_vora_printer_sim)

#include "tst_vora_printer_sim.moc"
