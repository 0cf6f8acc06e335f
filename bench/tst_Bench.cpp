// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TestFiles.h"

#include <QProcess>
#include <QRegularExpression>
#include <QTest>

/// That every benchmark runs and gives its figures. How good they are is for people to read.
class tst_Bench : public QObject
{
    Q_OBJECT

private slots:
    void givesEveryFigure()
    {
        QProcess process;
        process.start(QStringLiteral(VORA_BENCH), {QStringLiteral("--quick")});
        QVERIFY(process.waitForFinished(100000));
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 process.readAllStandardError());

        QString strRows = QString::fromUtf8(process.readAllStandardOutput());
        const auto mask = [&](const char* pPattern, const char* pMask) {
            strRows.replace(QRegularExpression(QString::fromUtf8(pPattern)), QString::fromUtf8(pMask));
        };
        mask("-?[\\d.]+ (\\S+) \\(-?[\\d.]+–-?[\\d.]+\\)", "N \\1 (N–N)");
        mask("\\| [\\d.]+ \\|", "| N |");
        mask("\\| (met|\\*\\*missed\\*\\*) \\|", "| verdict |");
        mask("(system-config-printer-applet.*: [a-z ]+) \\|.*", "\\1 | costs |"); // not installed for the tests
        const QString strExpected = QString::fromUtf8(ReadFile(QStringLiteral(VORA_EXPECTED)));
        QCOMPARE(strRows.split(QLatin1Char('\n')), strExpected.split(QLatin1Char('\n')));
    }

    void refusesUnknownBenchmark()
    {
        QProcess process;
        process.start(QStringLiteral(VORA_BENCH), {QStringLiteral("nothing")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
    }
};

QTEST_GUILESS_MAIN(tst_Bench)

#include "tst_Bench.moc"
