// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the usual signals do to each program while it runs.

#include "StatusEncoder.h"
#include "StatusFolder.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace {

const QString c_strTool = QStringLiteral(VORA_TOOL);
const QString c_strLoginStart = QStringLiteral(VORA_LOGIN_START);
const QString c_strStatus = QStringLiteral(VORA_STATUS);
const QString c_strSimulator = QStringLiteral(VORA_PRINTER_SIM);

/// Whether it sleeps and has done nothing since the last look.
bool IsIdle(qint64 iPid, QByteArray& last)
{
    const QByteArrayList listField = ReadFile(u"/proc/%1/stat"_s.arg(iPid)).split(' ');
    const QByteArray now = ReadFile(u"/proc/%1/schedstat"_s.arg(iPid));
    const bool bIdle = listField.value(2) == "S" && now == last;
    last = now;
    return bIdle;
}

} // namespace

class tst_Signals : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const int iSignal : {SIGTERM, SIGINT, SIGHUP, SIGPIPE}) {
            std::signal(iSignal, SIG_DFL); // as a desktop starts its programs
        }
        QVERIFY(WriteFile(u"/tmp/reply.dat"_s, EncodeStatusReply({})));
    }

    void signalHasItsEffect_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<int>("signal");
        QTest::addColumn<QString>("end");
        const QList<QPair<QByteArray, int>> listSignal = {
            {"terminate", SIGTERM}, {"interrupt", SIGINT}, {"hang-up", SIGHUP}, {"pipe", SIGPIPE}};
        const QString strByIt = u"by the signal"_s;
        const QString strInOrder = u"exit status 0"_s;
        for (const auto& signal : listSignal) {
            const bool bPipe = signal.second == SIGPIPE;
            QTest::newRow("VoraPrinterTool, " + signal.first) << c_strTool << QStringList() << signal.second << strByIt;
            QTest::newRow("vora-login-start, " + signal.first)
                << c_strLoginStart << QStringList() << signal.second << strByIt;
            QTest::newRow("vora-status, " + signal.first)
                << c_strStatus << QStringList({u"--watch"_s, u"/tmp/reply.dat"_s}) << signal.second
                << (bPipe ? strByIt : strInOrder);
            QTest::newRow("vora-printer-sim, " + signal.first)
                << c_strSimulator << QStringList({u"--root"_s, u"/tmp/root"_s}) << signal.second
                << (bPipe ? u"none"_s : strInOrder);
        }
    }

    void signalHasItsEffect()
    {
        QFETCH(const QString, program);
        QFETCH(const QStringList, arguments);
        QFETCH(const int, signal);
        QFETCH(const QString, end);
        QProcess process;
        process.start(program, arguments);
        QVERIFY(process.waitForStarted());
        QByteArray last;
        QTRY_VERIFY(IsIdle(process.processId(), last));
        QCOMPARE(::kill(static_cast<pid_t>(process.processId()), signal), 0);
        if (end == QLatin1String("none")) {
            QVERIFY(!process.waitForFinished(300));
            process.terminate();
        }
        QVERIFY(process.waitForFinished(5000));
        const bool bBySignal = end == QLatin1String("by the signal");
        QCOMPARE(process.exitStatus(), bBySignal ? QProcess::CrashExit : QProcess::NormalExit);
        QCOMPARE(process.exitCode(), bBySignal ? signal : 0);
    }
};

QTEST_GUILESS_MAIN(tst_Signals)

#include "tst_Signals.moc"
