// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "UdpResponder.h"
#include "VoraStatusWatcher.h"

#include <QSet>

class tst_vora_status_udp : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void udpGood()
    {
        UdpResponder printer({HandMadeReply(), EncodeStatusReply(Ready()), EncodeStatusReply(Ready()) + "tail"});
        const stRun run = RunFields({u"--udp"_s, u"127.0.0.1"_s});
        QVERIFY2(run.output.startsWith("127.0.0.1: 145 bytes\n  not examined: \"564f5241000102\"\n"), run.output);
        QVERIFY2(run.output.contains("  prints of the printer (0x1102): 16909060\n"), run.output);
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 1);

        // Zero bytes at the end are part of it.
        const stRun json = Run({u"--json"_s, u"--udp"_s, u"127.0.0.1"_s});
        QCOMPARE(json.Report().value(u"source"_s).toString(), u"udp"_s);
        QCOMPARE(json.Report().value(u"name"_s).toString(), u"127.0.0.1"_s);
        QCOMPARE(json.Report().value(u"length"_s).toInt(), 37);
        QCOMPARE(json.iExit, 0);

        const stRun hex = Run({u"--hex"_s, u"--udp"_s, u"127.0.0.1"_s});
        QVERIFY2(hex.output.endsWith("    37  74 61 69 6C              ignored\n"), hex.output);

        const QByteArray request = QByteArray::fromHex("A5000C50E0740803 00000000000000");
        QCOMPARE(printer.Requests(), (QList<QByteArray>{request, request, request}));
    }

    void udpRejected_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("length");
        QTest::addColumn<QString>("reason");
        QTest::addColumn<QByteArray>("words");

        QTest::newRow("in a text") << EncodeStatusReply(Ready()).left(16) << 16 << "truncated"
                                   << QByteArray(
                                          "it ends at byte 16, but the field at byte 14 (vendor name) has 4 bytes");
        QTest::newRow("8 zero bytes") << QByteArray(8, '\0') << 8 << "truncated"
                                      << QByteArray(
                                             "it ends at byte 8, but the field at byte 8 (header field 1) has 2 bytes");
        QTest::newRow("fatal") << WithSupplies({{0x4043, QByteArray(66, 'x')}}) << 106 << "fatal-supplies"
                               << QByteArray(
                                      "byte 39 (supplies data length) announces 66 data bytes, more than the 65 on "
                                      "which the program does not end");
        QTest::newRow("fatal, zero bytes")
            << WithSupplies({{0x4043, QByteArray(255, '\0')}}) << 295 << "fatal-supplies"
            << QByteArray("byte 39 (supplies data length) announces 255 data bytes, more than "
                          "the 65 on which the program does not end");
    }

    void udpRejected()
    {
        QFETCH(const QByteArray, reply);
        QFETCH(const int, length);
        QFETCH(const QString, reason);
        QFETCH(const QByteArray, words);

        UdpResponder printer({reply, reply, reply});
        const QStringList listUdp{u"--udp"_s, u"127.0.0.1"_s};
        const stRun text = RunFields(listUdp);
        QCOMPARE(text.output, QByteArray());
        QCOMPARE(text.messages, "vora-status: 127.0.0.1: reply rejected: " + words + '\n');
        QCOMPARE(text.iExit, 2);
        const stRun json = Run(QStringList(u"--json"_s) + listUdp);
        QCOMPARE(json.Report().value(u"length"_s).toInt(), length);
        QCOMPARE(json.Report().value(u"failure"_s).toObject().value(u"reason"_s).toString(), reason);
        const stRun hex = Run(QStringList(u"--hex"_s) + listUdp);
        QVERIFY2(hex.output.startsWith("127.0.0.1: " + QByteArray::number(length) + " bytes\n     0  00 "), hex.output);
        QVERIFY2(hex.output.endsWith("reply rejected: " + words + '\n'), hex.output);
    }

    void udpNotReached_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<QList<QByteArray>>("replies");
        QTest::addColumn<QByteArray>("english");
        QTest::addColumn<QByteArray>("chinese");
        QTest::addColumn<QString>("reason");

        const QList<QByteArray> none;
        const QByteArray seven(7, 'x');
        const QByteArray noAddress = "not an IPv4 address";
        const QByteArray silent = "no reply of at least 8 bytes within one second";
        QTest::newRow("silent") << "127.0.0.1" << none << silent << QByteArray("一秒之内没有收到至少8字节的应答")
                                << "silent";
        QTest::newRow("7 bytes") << "127.0.0.1" << QList<QByteArray>{seven, seven, seven} << silent
                                 << QByteArray("一秒之内没有收到至少8字节的应答") << "silent";
        QTest::newRow("no route") << "192.0.2.1" << none << QByteArray("the request could not be sent")
                                  << QByteArray("无法发送请求") << "send";
        QTest::newRow("empty address") << "" << none << noAddress << QByteArray("不是IPv4地址") << "address";
        QTest::newRow("host name") << "localhost" << none << noAddress << QByteArray("不是IPv4地址") << "address";
        QTest::newRow("short address") << "127.1" << none << noAddress << QByteArray("不是IPv4地址") << "address";
    }

    void udpNotReached()
    {
        QFETCH(const QString, address);
        QFETCH(const QList<QByteArray>, replies);
        QFETCH(const QByteArray, english);
        QFETCH(const QByteArray, chinese);
        QFETCH(const QString, reason);

        const UdpResponder printer(replies);
        const QStringList listUdp{u"--udp="_s + address};
        const QByteArray head = "vora-status: " + address.toUtf8();
        const stRun text = RunFields(listUdp);
        QCOMPARE(text.output, QByteArray());
        QCOMPARE(text.messages, head + ": " + english + '\n');
        QCOMPARE(text.iExit, 2);
        QCOMPARE(RunFields(QStringList(u"--lang=zh"_s) + listUdp).messages, head + "：" + chinese + '\n');
        const stRun json = Run(QStringList(u"--json"_s) + listUdp);
        QVERIFY(json.Report().value(u"length"_s).isNull());
        QCOMPARE(json.Report().value(u"failure"_s).toObject().value(u"reason"_s).toString(), reason);
    }

    void udpWithoutFileDescriptors()
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

    void udpWithoutTimeOut()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VORA_REFUSE_TIME_OUT));
        const QString strSanitizer = u"ASAN_OPTIONS"_s;
        environment.insert(strSanitizer, environment.value(strSanitizer) + u":verify_asan_link_order=0"_s);
        const UdpResponder printer({});
        const QStringList listUdp{u"--udp"_s, u"127.0.0.1"_s};
        const stRun english = RunCommand(c_strProgram, listUdp, environment);
        QCOMPARE(english.messages, QByteArray("vora-status: 127.0.0.1: the time-out for the reply could not be set\n"));
        QCOMPARE(english.iExit, 2);
        const stRun chinese = RunCommand(c_strProgram, listUdp + QStringList(u"--lang=zh"_s), environment);
        QCOMPARE(chinese.messages, QByteArray("vora-status: 127.0.0.1：无法设置应答的超时\n"));
        const stRun json = RunCommand(c_strProgram, listUdp + QStringList(u"--json"_s), environment);
        QCOMPARE(json.Report().value(u"failure"_s).toObject().value(u"reason"_s).toString(), u"time-out"_s);
    }

    void watchUdp()
    {
        UdpResponder printer({ReplyInState(0x00), ReplyInState(0x00), ReplyInState(0x10)});
        Watcher watcher({u"--fields"_s, u"--watch"_s, u"--udp"_s, u"127.0.0.1"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  state: 0x10 Printing\n"), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Messages().contains("127.0.0.1: no reply of at least 8 bytes"), c_iPatience);
        QCOMPARE(watcher.Output().count("127.0.0.1: "), 2);
        QCOMPARE(watcher.EndBy(SIGINT), 2);
    }
};

QTEST_GUILESS_MAIN(tst_vora_status_udp)

#include "tst_vora_status_udp.moc"
