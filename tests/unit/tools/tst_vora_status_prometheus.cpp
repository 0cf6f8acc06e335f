// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "VoraStatusTest.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString c_strPrometheus = u"--prometheus"_s;

stPrinterInfo Plain(const QString& strName)
{
    return Printer(strName, u"RA7QX"_s, 2, u"10.0.0.9"_s);
}

/// The lines that begin with the text.
QStringList LinesOf(const stRun& run, const QString& strStart)
{
    return run.Lines().filter(QRegularExpression(QLatin1Char('^') + QRegularExpression::escape(strStart)));
}

/// The program behind words of a shell.
stRun RunInShell(const QString& strBefore, const QString& strPath)
{
    return RunCommand(u"sh"_s, {u"-c"_s, strBefore + u"; exec \"$0\" \"$@\""_s, c_strProgram, c_strPrometheus,
                                u"--output"_s, strPath});
}

} // namespace

namespace {

/// Of the printer Office, which is in the state iValue.
QString StateSamples(int iValue)
{
    QString strText;
    for (const stGoldenCode& code : GoldenStates()) {
        strText += u"vora_printer_state{queue=\"Office\",state=\"%1\"} %2\n"_s.arg(code.strName)
                       .arg(code.iValue == iValue ? 1 : 0);
    }
    return strText;
}

} // namespace

class tst_vora_status_prometheus : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void everyFamily()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList(
            {Printer(u"Office"_s, u"RA7QX"_s, 1, u"usb"_s), Printer(u"前台"_s, u"RB9X"_s, 2, u"10.0.0.9"_s)});
        folder.WriteStatus(u"Office"_s, HandMadeReply());
        QVERIFY(SetModificationTime(folder.StatusPath(u"Office"_s), QDateTime::fromMSecsSinceEpoch(1700000000250)));
        const stRun run = Run({c_strPrometheus});
        QCOMPARE(QString::fromUtf8(run.output), uR"(# HELP vora_printers Printers in the driver package's list.
    # TYPE vora_printers gauge
    vora_printers 2
    # HELP vora_printer_info A listed printer; product, firmware and serial are empty without a reply.
    # TYPE vora_printer_info gauge
    vora_printer_info{queue="Office",model="RA7QX",connection="usb",product="RA7QX",firmware="2.1.7",serial="SN1234"} 1
    vora_printer_info{queue="前台",model="RB9X",connection="network",product="",firmware="",serial=""} 1
    # HELP vora_printer_up 1 when the printer's status file has a reply that could be decoded.
    # TYPE vora_printer_up gauge
    vora_printer_up{queue="Office"} 1
    vora_printer_up{queue="前台"} 0
    # HELP vora_printer_reply_timestamp_seconds When the printer's status file was written.
    # TYPE vora_printer_reply_timestamp_seconds gauge
    vora_printer_reply_timestamp_seconds{queue="Office"} 1700000000.250
    # HELP vora_printer_state 1 for the state that the printer is in.
    # TYPE vora_printer_state gauge
    %1# HELP vora_printer_ink_ratio Ink left, 0 to 1.
    # TYPE vora_printer_ink_ratio gauge
    vora_printer_ink_ratio{queue="Office",color="black"} 0.5
    vora_printer_ink_ratio{queue="Office",color="cyan"} 0.51
    vora_printer_ink_ratio{queue="Office",color="magenta"} 0.52
    vora_printer_ink_ratio{queue="Office",color="yellow"} 0.53
    # HELP vora_printer_error 1 for each error of the printer.
    # TYPE vora_printer_error gauge
    vora_printer_error{queue="Office",code="0x6110",name="paper-jam"} 1
    vora_printer_error{queue="Office",code="0x6156",name="yellow-ink-empty"} 1
    # HELP vora_printer_warning 1 for each warning of the printer.
    # TYPE vora_printer_warning gauge
    vora_printer_warning{queue="Office",code="0x6160",name="black-ink-low"} 1
    # HELP vora_printer_pages_total Pages, as the supply counts them.
    # TYPE vora_printer_pages_total counter
    vora_printer_pages_total{queue="Office"} 256
    # HELP vora_printer_prints_total Prints, as the supply counts them.
    # TYPE vora_printer_prints_total counter
    vora_printer_prints_total{queue="Office"} 5
    # HELP vora_printer_print_dots_total Printed dots.
    # TYPE vora_printer_print_dots_total counter
    vora_printer_print_dots_total{queue="Office"} 1000
    # HELP vora_printer_drum_rotations_total Rotations of the drum.
    # TYPE vora_printer_drum_rotations_total counter
    vora_printer_drum_rotations_total{queue="Office"} 4660
    # HELP vora_printer_printer_pages_total Pages, as the printer counts them.
    # TYPE vora_printer_printer_pages_total counter
    vora_printer_printer_pages_total{queue="Office"} 65536
    # HELP vora_printer_printer_prints_total Prints, as the printer counts them.
    # TYPE vora_printer_printer_prints_total counter
    vora_printer_printer_prints_total{queue="Office"} 16909060
    # HELP vora_printer_remaining_toner Toner or ink left over all, in the printer's own unit.
    # TYPE vora_printer_remaining_toner gauge
    vora_printer_remaining_toner{queue="Office"} 300
    # HELP vora_printer_waste_toner Waste toner or ink, in the printer's own unit.
    # TYPE vora_printer_waste_toner gauge
    vora_printer_waste_toner{queue="Office"} 7
    )"_s.arg(StateSamples(8)));
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 0); // errors of a printer are no failure
    }

    void withoutPrinters()
    {
        const stRun run = Run({c_strPrometheus});
        QCOMPARE(run.output, QByteArray("# HELP vora_printers Printers in the driver package's list.\n"
                                        "# TYPE vora_printers gauge\n"
                                        "vora_printers 0\n"));
        QCOMPARE(run.iExit, 0);
    }

    void nothingIsMadeUp_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<bool>("missing");

        QTest::newRow("missing") << QByteArray() << true;
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("truncated") << HandMadeReply().left(100) << false;
        QTest::newRow("fatal") << WithSupplies({{0x4043, QByteArray(66, 'x')}}) << false;
    }

    void nothingIsMadeUp()
    {
        QFETCH(const QByteArray, reply);
        QFETCH(const bool, missing);

        StatusFolder().WritePrinterList({Plain(u"Office"_s)});
        if (!missing) {
            StatusFolder().WriteStatus(u"Office"_s, reply);
        }
        const stRun run = Run({c_strPrometheus});
        QStringList listName;
        for (const QString& strLine : LinesOf(run, u"vora_"_s)) {
            listName.append(strLine.section(QRegularExpression(u"[{ ]"_s), 0, 0));
        }
        QStringList listExpected{u"vora_printers"_s, u"vora_printer_info"_s, u"vora_printer_up"_s};
        if (!missing) {
            listExpected.append(u"vora_printer_reply_timestamp_seconds"_s);
        }
        QCOMPARE(listName, listExpected);
        QVERIFY(run.Lines().contains(u"vora_printer_up{queue=\"Office\"} 0"_s));
        QCOMPARE(run.iExit, 0);
    }

    void states_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("state");

        for (const stGoldenCode& code : Sent(GoldenStates())) {
            QTest::newRow(qPrintable(code.strName)) << code.iRawCode << code.strName;
        }
        QTest::newRow("unknown") << c_iNoState << u"unknown"_s;
    }

    void states()
    {
        QFETCH(const int, code);
        QFETCH(const QString, state);

        StatusFolder().WritePrinterList({Plain(u"Office"_s)});
        StatusFolder().WriteStatus(u"Office"_s, ReplyInState(static_cast<quint8>(code)));
        const QStringList listState = LinesOf(Run({c_strPrometheus}), u"vora_printer_state{"_s);
        QCOMPARE(listState.size(), GoldenStates().size());
        QCOMPARE(listState.filter(QRegularExpression(u" 1$"_s)),
                 QStringList(u"vora_printer_state{queue=\"Office\",state=\"%1\"} 1"_s.arg(state)));
        QCOMPARE(listState.filter(QRegularExpression(u" 0$"_s)).size(), GoldenStates().size() - 1);
    }

    void codes()
    {
        StatusFolder().WritePrinterList({Plain(u"Office"_s)});
        StatusFolder().WriteStatus(u"Office"_s,
                                   WithErrors({0x6800, 0x0001, 0x6100, 0x0001, 0xFFFF, 0x6100}, {0x6100, 0x6165}));
        const stRun run = Run({c_strPrometheus});
        QCOMPARE(LinesOf(run, u"vora_printer_error{"_s),
                 (QStringList{u"vora_printer_error{queue=\"Office\",code=\"0x0001\",name=\"unknown\"} 1"_s,
                              u"vora_printer_error{queue=\"Office\",code=\"0x6100\",name=\"no-paper\"} 1"_s,
                              u"vora_printer_error{queue=\"Office\",code=\"0x6800\",name=\"code-6800\"} 1"_s,
                              u"vora_printer_error{queue=\"Office\",code=\"0xFFFF\",name=\"unknown\"} 1"_s}));
        QCOMPARE(LinesOf(run, u"vora_printer_warning{"_s),
                 (QStringList{u"vora_printer_warning{queue=\"Office\",code=\"0x6100\",name=\"no-paper\"} 1"_s,
                              u"vora_printer_warning{queue=\"Office\",code=\"0x6165\",name=\"yellow-ink-low\"} 1"_s}));
    }

    void pagesGiveThePrints()
    {
        StatusFolder().WritePrinterList({Plain(u"Office"_s)});
        StatusFolder().WriteStatus(u"Office"_s,
                                   WithSupplies({MakeSuppliesRecord(enSuppliesNumberOfPages, 4294967295)}));
        QCOMPARE(LinesOf(Run({c_strPrometheus}), u"vora_printer_p"_s),
                 (QStringList{u"vora_printer_pages_total{queue=\"Office\"} 4294967295"_s,
                              u"vora_printer_prints_total{queue=\"Office\"} 4294967295"_s}));
    }

    void inkOutOfRange()
    {
        StatusFolder().WritePrinterList({Plain(u"Office"_s)});
        StatusFolder().WriteStatus(
            u"Office"_s,
            WithSupplies({MakeSuppliesRecord(enSuppliesBlueInk, 101), MakeSuppliesRecord(enSuppliesRedInk, 100),
                          MakeSuppliesRecord(enSuppliesYellowInk, 7), MakeSuppliesRecord(enSuppliesBlackInk, 0)}));
        QCOMPARE(LinesOf(Run({c_strPrometheus}), u"vora_printer_ink_ratio{"_s),
                 (QStringList{u"vora_printer_ink_ratio{queue=\"Office\",color=\"black\"} 0"_s,
                              u"vora_printer_ink_ratio{queue=\"Office\",color=\"magenta\"} 1"_s,
                              u"vora_printer_ink_ratio{queue=\"Office\",color=\"yellow\"} 0.07"_s}));
    }

    void labels_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("label");

        QTest::newRow("quote and backslash") << u"a\"b\\c"_s << u"a\\\"b\\\\c"_s;
        QTest::newRow("line feed") << u"a\nb"_s << u"a\\nb"_s;
        QTest::newRow("braces") << u"a{b=\"c\"} 1 #"_s << u"a{b=\\\"c\\\"} 1 #"_s;
        QTest::newRow("other controls") << u"a\r\033\u0085\u2028\177"_s
                                        << u"a\\\\u000D\\\\u001B\\\\u0085\\\\u2028\\\\u007F"_s;
        QTest::newRow("Chinese") << u"前台 ①"_s << u"前台 ①"_s;
        QTest::newRow("empty") << QString() << QString();
    }

    void labels()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, label);

        StatusFolder().WritePrinterList({Plain(name)});
        const stRun run = Run({c_strPrometheus});
        const QString strLine = u"vora_printer_up{queue=\"%1\"} 0"_s.arg(label);
        QVERIFY2(run.Lines().contains(strLine), run.output);
        QCOMPARE(run.output.count('\n'), 9);
    }

    void twoPrintersOfOneName()
    {
        StatusFolder().WritePrinterList(
            {Plain(u"Office"_s), Printer(u"Office"_s, u"RB9X"_s, 1, QString()), Plain(u"a\r"_s), Plain(u"a\\u000D"_s)});
        StatusFolder().WriteStatus(u"Office"_s, HandMadeReply());
        const stRun run = Run({c_strPrometheus});
        QVERIFY(run.Lines().contains(u"vora_printers 4"_s));
        QCOMPARE(LinesOf(run, u"vora_printer_info{queue=\"Office\",model=\"RA7QX\""_s).size(), 1);
        QStringList listSample = LinesOf(run, u"vora_"_s);
        QCOMPARE(listSample.removeDuplicates(), 0);
        QCOMPARE(LinesOf(run, u"vora_printer_up{"_s).size(), 2);
    }

    void twoHundredPrinters()
    {
        QList<stPrinterInfo> listPrinter;
        for (int i = 0; i < 200; ++i) {
            listPrinter.append(Plain(u"floor-12-room-%1-西侧"_s.arg(i, 4, 10, QLatin1Char('0'))));
            StatusFolder().WriteStatus(listPrinter.last().strPrinterName, HandMadeReply());
        }
        StatusFolder().WritePrinterList(listPrinter);
        const stRun run = Run({c_strPrometheus});
        QCOMPARE(LinesOf(run, u"vora_"_s).size(), 1 + 200 * (18 + GoldenStates().size()));
        QVERIFY2(run.output.size() < 600000, qPrintable(QString::number(run.output.size())));
    }

    void replacesTheFile()
    {
        Write("something older and longer than what comes\n" + QByteArray(1000, 'x'), u"vora.prom"_s);
        const stRun run = Run({c_strPrometheus, u"--output"_s, u"vora.prom"_s});
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 0);
        QCOMPARE(ReadFile(u"vora.prom"_s), Run({c_strPrometheus}).output);
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList(u"vora.prom"_s));
    }

    void modeOfTheFile()
    {
        const auto mode = [] {
            struct stat status = {};
            return ::stat("vora.prom", &status) == 0 ? status.st_mode & 07777U : 0;
        };
        QCOMPARE(RunInShell(u"umask 077"_s, u"vora.prom"_s).iExit, 0);
        QCOMPARE(mode(), 0644U);
        QCOMPARE(::chmod("vora.prom", 0666), 0);
        QCOMPARE(RunInShell(u"umask 0"_s, u"vora.prom"_s).iExit, 0);
        QCOMPARE(mode(), 0644U);
    }

    void leavesTheFileWhenItCannotBeWritten()
    {
        QList<stPrinterInfo> listPrinter;
        for (int i = 0; i < 100; ++i) {
            listPrinter.append(Plain(QString::number(i)));
        }
        StatusFolder().WritePrinterList(listPrinter);
        Write("older", u"vora.prom"_s);
        // As on a file system that is full: of 17 kB, 4 have room.
        const stRun run = RunInShell(u"trap '' XFSZ; ulimit -f 8"_s, u"vora.prom"_s);
        QCOMPARE(run.messages, QByteArray("vora-status: vora.prom cannot be written: File too large\n"));
        QCOMPARE(run.iExit, 2);
        QCOMPARE(ReadFile(u"vora.prom"_s), QByteArray("older"));
        QCOMPARE(QDir().entryList(QDir::Files | QDir::Hidden), QStringList(u"vora.prom"_s));
    }

    void writesThroughNoLink()
    {
        Write("precious", u"precious"_s);
        QVERIFY(QFile::link(u"precious"_s, u"vora.prom"_s));
        const stRun run = Run({c_strPrometheus, u"--output"_s, u"vora.prom"_s});
        QCOMPARE(run.messages, QByteArray("vora-status: vora.prom cannot be written: it is a link\n"));
        QCOMPARE(run.iExit, 2);
        QCOMPARE(ReadFile(u"precious"_s), QByteArray("precious"));
        QVERIFY(QFileInfo(u"vora.prom"_s).isSymLink());
    }

    void notWritten_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("message");

        QTest::newRow("no folder") << "gone/\033.prom"
                                   << QByteArray("gone/\\x1B.prom cannot be written: No such file or directory");
        QTest::newRow("a folder") << "/tmp" << QByteArray("/tmp cannot be written: Filename refers to a directory");
    }

    void notWritten()
    {
        QFETCH(const QString, path);
        QFETCH(const QByteArray, message);

        const stRun run = Run({c_strPrometheus, u"--output"_s, path});
        QCOMPARE(run.messages, "vora-status: " + message + '\n');
        QCOMPARE(run.iExit, 2);
        const stRun chinese = Run({c_strPrometheus, u"--lang=zh"_s, u"--output"_s, path});
        QVERIFY2(chinese.messages.contains("无法写入："), chinese.messages);
        const stRun full = RunCommand(u"sh"_s, {u"-c"_s, u"exec \"$0\" --prometheus > /dev/full"_s, c_strProgram});
        QCOMPARE(full.messages, QByteArray("vora-status: the output cannot be written\n"));
        QCOMPARE(full.iExit, 2);
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("words");

        const QByteArray alone = "--prometheus takes no files, --udp or --watch.";
        QTest::newRow("file") << QStringList{c_strPrometheus, u"a.dat"_s} << alone;
        QTest::newRow("address") << QStringList{c_strPrometheus, u"--udp=127.0.0.1"_s} << alone;
        QTest::newRow("watch") << QStringList{c_strPrometheus, u"--watch"_s} << alone;
        QTest::newRow("output alone") << QStringList{u"--output=a.prom"_s}
                                      << QByteArray("--output goes with --prometheus.");
        QTest::newRow("output of JSON") << QStringList{u"--json"_s, u"--output=a.prom"_s}
                                        << QByteArray("--output goes with --prometheus.");
        QTest::newRow("JSON") << QStringList{u"--json"_s, c_strPrometheus}
                              << QByteArray("--json and --prometheus exclude each other.");
        QTest::newRow("fields") << QStringList{u"--hex"_s, u"--fields"_s}
                                << QByteArray("--hex and --fields exclude each other.");
    }

    void usageErrors()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QByteArray, words);

        const stRun run = Run(arguments);
        QCOMPARE(run.messages, "vora-status: " + words + "\nSee 'vora-status --help'.\n");
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.iExit, 64);
        QVERIFY(QDir().entryList(QDir::Files).isEmpty());
    }
};

QTEST_GUILESS_MAIN(tst_vora_status_prometheus)

#include "tst_vora_status_prometheus.moc"
