// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "VoraStatusTest.h"

/// What Prometheus' own checker says of the metrics and of the rules.
class tst_PromTool : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void metrics()
    {
        const DriverFolder folder = StatusFolder();
        const QStringList listName{u"Office"_s, u"a\"b\\c"_s, u"前台"_s, u"line\nfeed \r\033"_s, QString()};
        QList<stPrinterInfo> listPrinter;
        for (const QString& strName : listName) {
            listPrinter.append(Printer(strName, u"RA7QX"_s, 2, u"10.0.0.9"_s));
            folder.WriteStatus(strName, HandMadeReply());
        }
        listPrinter.append(Printer(u"gone"_s, u"RA7QX"_s, 2, QString()));
        folder.WritePrinterList(listPrinter);
        const QByteArray metrics = Run({u"--prometheus"_s}).output;
        QCOMPARE(metrics.count("vora_printer_up{"), 6);
        const stRun check =
            RunCommand(u"sh"_s, {u"-c"_s, u"promtool check metrics < \"$0\""_s, Write(metrics, u"vora.prom"_s)});
        QCOMPARE(check.output + check.messages, QByteArray());
        QCOMPARE(check.iExit, 0);
    }

    void findsFaultWithOtherMetrics()
    {
        const stRun check = RunCommand(u"sh"_s, {u"-c"_s, u"promtool check metrics < \"$0\""_s,
                                                 Write("# TYPE pages counter\npages 1\n", u"other.prom"_s)});
        QVERIFY(check.iExit != 0);
    }

    void rules()
    {
        const stRun run = RunCommand(
            u"promtool"_s, {u"check"_s, u"rules"_s, u"--lint=all"_s, u"--lint-fatal"_s, QStringLiteral(VORA_RULES)});
        QVERIFY2(run.output.contains("SUCCESS: 6 rules found"), run.output + run.messages);
        QCOMPARE(run.iExit, 0);
    }

    void rulesUnderTest()
    {
        const stRun run = RunCommand(u"promtool"_s, {u"test"_s, u"rules"_s, QStringLiteral(VORA_RULES_TEST)});
        QVERIFY2(run.iExit == 0, run.output + run.messages);
    }
};

QTEST_GUILESS_MAIN(tst_PromTool)

#include "tst_PromTool.moc"
