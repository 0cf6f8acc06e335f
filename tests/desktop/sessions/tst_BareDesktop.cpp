// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "StatusFolder.h"

#include <QScopeGuard>

#include <csignal>

namespace {

const QString c_strStarter = u"/tmp/login/vora-login-start"_s;

/// A program on a desktop of which a part is missing.
class Program : public QProcess
{
public:
    explicit Program(const QString& strPath, const QStringList& listMissing = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const QString& strName : listMissing) {
            environment.remove(strName);
        }
        setProcessEnvironment(environment);
        setProcessChannelMode(QProcess::MergedChannels);
        setProgram(strPath);
    }
    ~Program() override
    {
        kill();
        waitForFinished();
    }
};

} // namespace

/// A desktop without the one or the other of its parts.
class tst_BareDesktop : public DesktopTest
{
    Q_OBJECT

private slots:
    void toolTellsThatThereIsNoDisplay_data()
    {
        QTest::addColumn<QByteArray>("display");
        QTest::newRow("none named") << QByteArray();
        QTest::newRow("none there") << QByteArray(":77");
    }

    /// Qt's own end, by the signal that it always takes.
    void toolTellsThatThereIsNoDisplay()
    {
        QFETCH(const QByteArray, display);
        Program tool(QStringLiteral(VORA_TOOL));
        QProcessEnvironment environment = tool.processEnvironment();
        environment.insert(u"DISPLAY"_s, QString::fromLatin1(display));
        tool.setProcessEnvironment(environment);
        tool.start();
        QVERIFY(tool.waitForFinished());
        QCOMPARE(tool.exitStatus(), QProcess::CrashExit);
        QCOMPARE(tool.exitCode(), SIGABRT);
        const QByteArray output = tool.readAll();
        QVERIFY2(output.contains("could not connect to display " + display + '\n'), output);
        QVERIFY(!QFile::exists(ToolPath())); // it has done nothing yet
    }

    void starterWaitsWithoutDisplayAndBus()
    {
        Program starter(QStringLiteral(VORA_LOGIN_START), {u"DISPLAY"_s, u"DBUS_SESSION_BUS_ADDRESS"_s});
        starter.start();
        QVERIFY(!starter.waitForFinished(800));
        QCOMPARE(starter.readAll(), QByteArray());
        QCOMPARE(starter.state(), QProcess::Running);
    }

    void starterTellsThatTheToolIsMissing()
    {
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        QDir().mkpath(u"/tmp/login"_s);
        QVERIFY(QFile::exists(c_strStarter) || QFile::copy(QStringLiteral(VORA_LOGIN_START), c_strStarter));
        Program starter(c_strStarter);
        starter.start();
        QVERIFY(starter.waitForFinished());
        QCOMPARE(starter.exitStatus(), QProcess::NormalExit);
        QCOMPARE(starter.exitCode(), 127);
        QCOMPARE(starter.readAll(), QByteArray("/tmp/login/VoraPrinterTool: No such file or directory\n"));
    }

    void toolRunsWithoutBusAndThemes()
    {
        const QByteArray bus = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/tmp/no-bus");
        qputenv("XDG_DATA_DIRS", "/tmp/no-themes");
        const auto restore = qScopeGuard([&] {
            qputenv("DBUS_SESSION_BUS_ADDRESS", bus);
            qunsetenv("XDG_DATA_DIRS");
        });
        FakeProgram(u"cancel"_s, "touch /tmp/cancelled\n");
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        WriteStatus(u"Office"_s, Reply(0x03, {0x6100})); // with a message, which nobody shows
        QTRY_VERIFY(QFile::exists(u"/tmp/cancelled"_s));
        Desktop::CloseWindow(*m_tool->MainWindow());
        QTRY_VERIFY(!m_tool->MainWindow());
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
    }
};

QTEST_GUILESS_MAIN(tst_BareDesktop)

#include "tst_BareDesktop.moc"
