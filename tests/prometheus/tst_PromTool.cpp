// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "VoraStatusTest.h"

/// What Prometheus' own checker says of the metrics and of the rules.
class tst_PromTool : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void metrics();
    void findsFaultWithOtherMetrics();
    void rules();
    void rulesUnderTest();
};

void tst_PromTool::metrics()
{
    const DriverFolder folder = StatusFolder();
    const QStringList listName{QStringLiteral("Office"), QStringLiteral("a\"b\\c"), QStringLiteral("前台"),
                               QStringLiteral("line\nfeed \r\033"), QString()};
    QList<stPrinterInfo> listPrinter;
    for (const QString& strName : listName) {
        listPrinter.append(Printer(strName, QStringLiteral("RA7QX"), 2, QStringLiteral("10.0.0.9")));
        folder.WriteStatus(strName, HandMadeReply());
    }
    listPrinter.append(Printer(QStringLiteral("gone"), QStringLiteral("RA7QX"), 2, QString()));
    folder.WritePrinterList(listPrinter);
    const QByteArray metrics = Run({QStringLiteral("--prometheus")}).output;
    QCOMPARE(metrics.count("vora_printer_up{"), 6);
    const stRun check =
        RunCommand(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("promtool check metrics < \"$0\""),
                                          Write(metrics, QStringLiteral("vora.prom"))});
    QCOMPARE(check.output + check.messages, QByteArray());
    QCOMPARE(check.iExit, 0);
}

void tst_PromTool::findsFaultWithOtherMetrics()
{
    const stRun check =
        RunCommand(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("promtool check metrics < \"$0\""),
                                          Write("# TYPE pages counter\npages 1\n", QStringLiteral("other.prom"))});
    QVERIFY(check.iExit != 0);
}

void tst_PromTool::rules()
{
    const stRun run = RunCommand(QStringLiteral("promtool"),
                                 {QStringLiteral("check"), QStringLiteral("rules"), QStringLiteral("--lint=all"),
                                  QStringLiteral("--lint-fatal"), QStringLiteral(VORA_RULES)});
    QVERIFY2(run.output.contains("SUCCESS: 6 rules found"), run.output + run.messages);
    QCOMPARE(run.iExit, 0);
}

void tst_PromTool::rulesUnderTest()
{
    const stRun run = RunCommand(QStringLiteral("promtool"),
                                 {QStringLiteral("test"), QStringLiteral("rules"), QStringLiteral(VORA_RULES_TEST)});
    QVERIFY2(run.iExit == 0, run.output + run.messages);
}

QTEST_GUILESS_MAIN(tst_PromTool)

#include "tst_PromTool.moc"
