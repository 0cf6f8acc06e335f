// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTest>

/// That every benchmark runs and leaves its figures. How good they are is for people to read.
class tst_Bench : public QObject
{
    Q_OBJECT

private slots:
    void givesEveryFigure_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QString>("names");
        QTest::newRow("units") << QStringLiteral(VORA_BENCH_UNITS)
                               << QStringLiteral("decode log-line status-report "
                                                 "status-report-painted list-report worker-start changed-file");
        QTest::newRow("desktop")
            << QStringLiteral(VORA_BENCH_DESKTOP)
            << QStringLiteral(
                   "start-cpu start-cpu-dressed process-list start-wall start-wall-rest memory memory-dressed "
                   "memory-printer idle-1 idle-1-list idle-10 idle-10-list idle-20 "
                   "idle-20-list wake-ups-shown wake-ups-hidden exit vora-status");
    }

    void givesEveryFigure()
    {
        QFETCH(QString, program);
        QFETCH(QString, names);
        const QString strJsonPath = QStringLiteral("/tmp/figures.json");
        QFile::remove(strJsonPath);
        QProcess process;
        process.start(program, {QStringLiteral("--quick"), QStringLiteral("--json"), strJsonPath});
        QVERIFY(process.waitForFinished(100000));
        QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0,
                 process.readAllStandardError());

        QFile file(strJsonPath);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QJsonParseError error;
        const QJsonArray listFigure = QJsonDocument::fromJson(file.readAll(), &error).array();
        QCOMPARE(error.error, QJsonParseError::NoError);
        QStringList listName;
        for (const auto& figure : listFigure) {
            listName.append(figure.toObject().value(QStringLiteral("name")).toString());
            QVERIFY2(figure.toObject().value(QStringLiteral("value")).isDouble(), qPrintable(listName.last()));
        }
        QCOMPARE(listName, names.split(QLatin1Char(' ')));
        QCOMPARE(process.readAllStandardOutput().count("\n| "),
                 listName.size() + 1); // the first line has none before it
    }

    void refusesUnknownBenchmark()
    {
        QProcess process;
        process.start(QStringLiteral(VORA_BENCH_DESKTOP), {QStringLiteral("--only"), QStringLiteral("nothing")});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 2);
    }
};

QTEST_GUILESS_MAIN(tst_Bench)

#include "tst_Bench.moc"
