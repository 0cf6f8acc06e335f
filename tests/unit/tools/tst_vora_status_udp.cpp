// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "UdpResponder.h"
#include "VoraStatusTest.h"

#include <QSet>

namespace {

const QStringList c_listUdp{u"--udp"_s, u"127.0.0.1"_s};

QByteArray FatalReply(int iDataBytes, char cData)
{
    return ReplyWithSupplies({{0x4043, QByteArray(iDataBytes, cData)}});
}

} // namespace

class tst_vora_status_udp : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void replyArrives()
    {
        const QByteArray ready = ReplyInState(0x00);
        UdpResponder printer({HandMadeReply(), HandMadeReply(), ready, ready + "tail"});
        const stRun overview = Run(c_listUdp);
        QCOMPARE(overview.output,
                 QByteArray("QUEUE      CONNECTION  STATE                                      CYAN  MAGENTA  YELLOW"
                            "  BLACK  AGE  MORE\n"
                            "127.0.0.1  network     A paper jam occurs at the paper feed tray   51%      52%     53%"
                            "    50%  0 s     2\n"));
        QCOMPARE(overview.messages, QByteArray());
        QCOMPARE(overview.iExit, 1);

        WriteFile(u"127.0.0.1"_s, HandMadeReply());
        QCOMPARE(Run(QStringList(u"--fields"_s) + c_listUdp).output, Run({u"--fields"_s, u"127.0.0.1"_s}).output);

        // Zero bytes at the end are part of it.
        const stRun json = Run(QStringList(u"--json"_s) + c_listUdp);
        QCOMPARE(json.Report().value(u"source"_s).toString(), u"udp"_s);
        QCOMPARE(json.Report().value(u"name"_s).toString(), u"127.0.0.1"_s);
        QCOMPARE(json.Report().value(u"length"_s).toInt(), 33);
        QCOMPARE(json.iExit, 0);

        const stRun hex = Run(QStringList(u"--hex"_s) + c_listUdp);
        QVERIFY2(hex.output.endsWith("    33  74 61 69 6C              ignored\n"), hex.output);

        const QByteArray request = QByteArray::fromHex("A5000C50E0740803 00000000000000");
        QCOMPARE(printer.Requests(), QList<QByteArray>({request, request, request, request}));
    }

    /// As a file of that name is.
    void replyIsRejected_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("in a text") << HandMadeReply().left(16);
        QTest::newRow("8 zero bytes") << QByteArray(8, '\0');
        QTest::newRow("fatal") << FatalReply(66, 'x');
        QTest::newRow("fatal, zero bytes") << FatalReply(255, '\0');
    }

    void replyIsRejected()
    {
        QFETCH(const QByteArray, reply);
        UdpResponder printer({reply, reply, reply});
        WriteFile(u"127.0.0.1"_s, reply);
        for (const QString& strFormat : {u"--fields"_s, u"--hex"_s, u"--json"_s}) {
            const stRun file = Run({strFormat, u"127.0.0.1"_s});
            stRun udp = Run(QStringList(strFormat) + c_listUdp);
            QCOMPARE(udp.output.replace("\"udp\"", "\"file\""), file.output);
            QCOMPARE(udp.messages, file.messages);
            QVERIFY2(udp.messages.startsWith("vora-status: 127.0.0.1: reply rejected: "), udp.messages);
            QCOMPARE(udp.iExit, 2);
        }
    }

    void printerIsNotReached_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QList<QByteArray>>("replies");
        QTest::addColumn<QByteArray>("english");
        QTest::addColumn<QByteArray>("chinese");
        QTest::addColumn<QString>("reason");

        const QList<QByteArray> none;
        const QByteArray seven(7, 'x');
        const QByteArray silent = "no reply of at least 8 bytes within one second";
        const QByteArray silentZh = "一秒之内没有收到至少8字节的应答";
        const QByteArray noAddress = "not an IPv4 address";
        const QByteArray noAddressZh = "不是IPv4地址";
        QTest::newRow("silent") << "127.0.0.1" << none << silent << silentZh << "silent";
        QTest::newRow("7 bytes") << "127.0.0.1" << QList<QByteArray>{seven, seven, seven} << silent << silentZh
                                 << "silent";
        QTest::newRow("no route") << "192.0.2.1" << none << QByteArray("the request could not be sent")
                                  << QByteArray("无法发送请求") << "send";
        QTest::newRow("empty address") << "" << none << noAddress << noAddressZh << "address";
        QTest::newRow("host name") << "localhost" << none << noAddress << noAddressZh << "address";
        QTest::newRow("short address") << "127.1" << none << noAddress << noAddressZh << "address";
    }

    void printerIsNotReached()
    {
        QFETCH(const QString, address);
        QFETCH(const QList<QByteArray>, replies);
        QFETCH(const QByteArray, english);
        QFETCH(const QByteArray, chinese);

        const UdpResponder printer(replies);
        const QString strUdp = u"--udp="_s + address;
        const QByteArray head = "vora-status: " + address.toUtf8();
        const stRun text = Run({u"--fields"_s, strUdp});
        QCOMPARE(text.output, QByteArray());
        QCOMPARE(text.messages, head + ": " + english + '\n');
        QCOMPARE(text.iExit, 2);
        const stRun overview = Run({u"--lang=zh"_s, strUdp});
        QCOMPARE(overview.messages, head + "：" + chinese + '\n');
        QVERIFY2(overview.output.contains("  网络      " + chinese + "  "), overview.output);
        const QJsonObject report = Run({u"--json"_s, strUdp}).Report();
        QVERIFY(report.value(u"length"_s).isNull());
        QTEST(report.value(u"failure"_s).toObject().value(u"reason"_s).toString(), "reason");
    }

    void withoutFileDescriptors()
    {
        QSet<QString> reasons;
        for (int i = 4; i < 16; ++i) { // a leak sanitizer would need a descriptor of its own at the end
            const stRun run = RunCommand(u"sh"_s, {u"-c"_s,
                                                   u"ulimit -n %1; ASAN_OPTIONS=$ASAN_OPTIONS:detect_leaks=0 "
                                                   "exec \"$0\" --json --udp 192.0.2.1"_s.arg(i),
                                                   c_strProgram});
            if (run.iExit == 127) {
                continue; // not even its libraries could be loaded
            }
            QCOMPARE(run.iExit, 2);
            const QJsonObject failure = run.Report().value(u"failure"_s).toObject();
            reasons.insert(failure.value(u"reason"_s).toString() + QLatin1Char(':') +
                           failure.value(u"english"_s).toString());
        }
        QCOMPARE(reasons,
                 (QSet<QString>{u"socket:no network socket could be made"_s, u"send:the request could not be sent"_s}));
    }

    void withoutTimeOut()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VORA_REFUSE_TIME_OUT));
        environment.insert(u"ASAN_OPTIONS"_s, environment.value(u"ASAN_OPTIONS"_s) + u":verify_asan_link_order=0"_s);
        const UdpResponder printer({});
        const stRun run = RunCommand(c_strProgram, QStringList(u"--json"_s) + c_listUdp, environment);
        QCOMPARE(run.messages, QByteArray("vora-status: 127.0.0.1: the time-out for the reply could not be set\n"));
        QCOMPARE(run.iExit, 2);
        const QJsonObject failure = run.Report().value(u"failure"_s).toObject();
        QCOMPARE(failure.value(u"reason"_s).toString(), u"time-out"_s);
        QCOMPARE(failure.value(u"chinese"_s).toString(), u"无法设置应答的超时"_s);
    }

    void watch()
    {
        UdpResponder printer({ReplyInState(0x00), ReplyInState(0x00), ReplyInState(0x10)});
        Watcher watcher(QStringList({u"--fields"_s, u"--watch"_s}) + c_listUdp);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x10 Printing\n"), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Messages().contains("127.0.0.1: no reply of at least 8 bytes"), c_iPatience);
        QCOMPARE(watcher.Output().count("127.0.0.1: "), 2);
        QCOMPARE(watcher.EndBy(SIGINT), 2);
    }
};

QTEST_GUILESS_MAIN(tst_vora_status_udp)

#include "tst_vora_status_udp.moc"
