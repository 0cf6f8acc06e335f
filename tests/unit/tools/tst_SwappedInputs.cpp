// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// A FIFO takes a file's place between the look at it and its opening, or a device stands there.

#include "StatusEncoder.h"
#include "StatusFolder.h"

#include <QProcess>
#include <QtTest>

namespace {

const QString c_strStatus = QStringLiteral(VORA_STATUS);
const QString c_strSimulator = QStringLiteral(VORA_PRINTER_SIM);
const QString c_strRoot = u"/tmp/root"_s;

} // namespace

class tst_SwappedInputs : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        DriverFolder folder(u"/opt/vora/vora-printer-k507/cfg"_s);
        const QString strName = u"Changing"_s;
        folder.WritePrinterList({{strName, u"RA7Q"_s, 1, QString(), QString()}});
        folder.WriteStatus(strName, EncodeStatusReply({}));
        QVERIFY(WriteFile(u"/tmp/become-fifo"_s, {}));
    }

    void programDoesNotWait_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("list");
        QTest::addColumn<int>("exit");
        QTest::addColumn<QByteArray>("message");
        const QString strFile = u"/opt/vora/vora-printer-k507/cfg/Changing.dat"_s;
        QTest::newRow("status file") << c_strStatus << QStringList(strFile) << false << 2
                                     << QByteArray("Changing.dat: not a regular file");
        QTest::newRow("status file of a queue")
            << c_strStatus << QStringList() << false << 2 << QByteArray("not a regular file");
        QTest::newRow("list") << c_strStatus << QStringList() << true << 0 << QByteArray();
        QTest::newRow("simulator's list")
            << c_strSimulator << QStringList({u"everyday"_s, u"--root"_s, u"/opt/vora/vora-printer-k507"_s}) << true
            << 73 << QByteArray("was not written by this program");
        QTest::newRow("scenario without end") << c_strSimulator << QStringList({u"/dev/zero"_s, u"--root"_s, c_strRoot})
                                              << false << 65 << QByteArray("/dev/zero: expected at most 16 MiB");
    }

    void programDoesNotWait()
    {
        QFETCH(const QString, program);
        QFETCH(const QStringList, arguments);
        QFETCH(const bool, list);
        if (list) {
            QVERIFY(WriteFile(u"/tmp/list-too"_s, {}));
        }
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VORA_CHANGE_BEFORE_OPEN));
        environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        process.setProcessEnvironment(environment);
        process.start(program, arguments);
        const bool bEnded = process.waitForFinished(5000);
        process.kill();
        process.waitForFinished();
        QVERIFY(bEnded);
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QTEST(process.exitCode(), "exit");
        QFETCH(const QByteArray, message);
        const QByteArray messages = process.readAllStandardError();
        QVERIFY2(messages.contains(message), messages);
    }

    void cleanup()
    {
        QFile::remove(u"/tmp/become-fifo"_s);
        QFile::remove(u"/tmp/list-too"_s);
        QDir(u"/opt/vora"_s).removeRecursively();
        QDir(c_strRoot).removeRecursively();
    }
};

QTEST_GUILESS_MAIN(tst_SwappedInputs)

#include "tst_SwappedInputs.moc"
