// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "UdpResponder.h"
#include "VoraStatusTest.h"

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
