// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <csignal>

namespace {

/// A classic X session manager: asks its clients to save themselves, with leave to talk to the user, and then to end.
class SessionManager
{
public:
    ~SessionManager()
    {
        m_process.kill();
        m_process.waitForFinished();
        qunsetenv("SESSION_MANAGER");
    }

    /// Programs that are made (class Tool) after this belong to the session.
    bool Start()
    {
        // It starts the session's programs with its own address. This one passes that on.
        const QString strAddress = QStringLiteral("/tmp/session-manager");
        QFile::remove(strAddress);
        if (!WriteScript(QStringLiteral("/tmp/session"), "echo $SESSION_MANAGER > /tmp/session-manager.new\n"
                                                         "mv /tmp/session-manager.new /tmp/session-manager\n") ||
            !WriteFile(QDir::homePath() + QStringLiteral("/.xsmstartup"), "/tmp/session\n")) {
            return false;
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("SM_SAVE_DIR"), m_folder.path()); // no session of an earlier test to choose
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setStandardOutputFile(m_strOutput);
        m_process.start(QStringLiteral("stdbuf"),
                        {QStringLiteral("-oL"), QStringLiteral("xsm"), QStringLiteral("-verbose")});
        if (!QTest::qWaitFor([&] { return Window().has_value() && QFile::exists(strAddress); })) {
            return false;
        }
        qputenv("SESSION_MANAGER", ReadFile(strAddress).trimmed());
        return true;
    }

    /// How often a text stands in its report.
    int Count(const char* pText) const { return static_cast<int>(ReadFile(m_strOutput).count(pText)); }

    /// What its user does to log out: drags the mouse from the button to its menu's first entry, and names the session.
    bool LogOut() const
    {
        const std::optional<Desktop::Window> window = Window();
        if (!window) {
            return false;
        }
        Desktop::Run(QStringLiteral("wmctrl"), {QStringLiteral("-i"), QStringLiteral("-a"), window->strId});
        if (!QTest::qWaitFor([&] { return Desktop::ActiveWindow() == window->strId; })) {
            return false;
        }
        const int iX = window->geometry.width() * 2 / 3;
        const int iY = window->geometry.height();
        Drag(window->strId, {iX, iY * 7 / 10}, {iX, iY * 7 / 6});
        if (!QTest::qWaitFor([] {
                return Desktop::FindWindow(QStringLiteral("xsm"), QStringLiteral("Shutdown"), {}, {999, 999})
                    .has_value();
            })) {
            return false;
        }
        Desktop::PressKey(QStringLiteral("a"));
        Desktop::PressKey(QStringLiteral("Return"));
        return true;
    }

    QProcess& Process() { return m_process; }

private:
    static std::optional<Desktop::Window> Window()
    {
        return Desktop::FindWindow(QStringLiteral("xsm"), QStringLiteral("xsm: Default"), {50, 50}, {999, 999});
    }

    static void Drag(const QString& strId, QPoint from, QPoint to)
    {
        Desktop::Run(QStringLiteral("xdotool"),
                     {QStringLiteral("mousemove"), QStringLiteral("--window"), strId, QString::number(from.x()),
                      QString::number(from.y()), QStringLiteral("mousedown"), QStringLiteral("1"),
                      QStringLiteral("mousemove"), QStringLiteral("--window"), strId, QString::number(to.x()),
                      QString::number(to.y()), QStringLiteral("sleep"), QStringLiteral("0.3"),
                      QStringLiteral("mouseup"), QStringLiteral("1")});
    }

    QTemporaryDir m_folder;
    QString m_strOutput = QStringLiteral("/tmp/session-manager.txt");
    QProcess m_process;
};

} // namespace

/// The end that comes from outside: signals and the desktop's logout.
class tst_SessionEnd : public DesktopTest
{
    Q_OBJECT

private slots:
    void signalEndsIt_data();
    void signalEndsIt();
    void hangingCommandGetsTheInterrupt();
    void logoutIsNotHeldUp_data();
    void logoutIsNotHeldUp();

private:
    void StartWithHangingCommand();
};

void tst_SessionEnd::StartWithHangingCommand()
{
    FakeHangingCancel();
    WriteReadyPrinters({QStringLiteral("Office"), QStringLiteral("Hall")});
    m_tool->Start();
    QTRY_COMPARE(m_tool->Cell(0, 3), QStringLiteral("就绪"));
    WriteStatus(QStringLiteral("Office"), Reply(0x03));
    QTRY_VERIFY(IsCancelRunning());
}

void tst_SessionEnd::signalEndsIt_data()
{
    QTest::addColumn<int>("iSignal");
    QTest::addColumn<bool>("bCommandHangs");
    QTest::newRow("terminate") << SIGTERM << false;
    QTest::newRow("interrupt") << SIGINT << false;
    QTest::newRow("terminate-while-a-command-hangs") << SIGTERM << true;
}

void tst_SessionEnd::signalEndsIt()
{
    QFETCH(int, iSignal);
    QFETCH(bool, bCommandHangs);
    if (bCommandHangs) {
        StartWithHangingCommand();
    } else {
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
    }
    QCOMPARE(::kill(static_cast<pid_t>(m_tool->Process().processId()), iSignal), 0);
    QVERIFY(m_tool->Process().waitForFinished(500));
    QCOMPARE(m_tool->Process().exitStatus(), QProcess::CrashExit); // ended by the signal
    QCOMPARE(m_tool->Process().exitCode(), iSignal);
}

/// The interrupt key goes to the command in the foreground, as in a shell; the program that waits for it stays.
void tst_SessionEnd::hangingCommandGetsTheInterrupt()
{
    StartWithHangingCommand();
    const auto id = static_cast<pid_t>(m_tool->Process().processId());
    QCOMPARE(::kill(id, SIGINT), 0);
    WriteStatus(QStringLiteral("Hall"), Reply(0x20));
    QTRY_COMPARE(m_tool->Cell(1, 3), QStringLiteral("清洁模式"));

    EndHangingCancel();
    QTRY_COMPARE(m_tool->Cell(0, 3), QStringLiteral("正在取消任务")); // the command has ended
    QCOMPARE(::kill(id, SIGINT), 0);
    QVERIFY(m_tool->Process().waitForFinished(500));
}

void tst_SessionEnd::logoutIsNotHeldUp_data()
{
    QTest::addColumn<QStringList>("listArgument");
    QTest::newRow("window-shown") << QStringList();
    QTest::newRow("window-hidden") << QStringList(QStringLiteral("-hide"));
}

void tst_SessionEnd::logoutIsNotHeldUp()
{
    QFETCH(QStringList, listArgument);
    SessionManager manager;
    QVERIFY(manager.Start());
    m_tool = std::make_unique<Tool>(); // with the manager's address
    WriteReadyPrinters({QStringLiteral("Office")});
    m_tool->Start(listArgument);
    QTRY_COMPARE(manager.Count("received SAVE YOURSELF DONE"), 1); // that of its registration
    QTRY_COMPARE(m_tool->MainWindow().has_value(), listArgument.isEmpty());

    QVERIFY(manager.LogOut());
    QTRY_COMPARE(manager.Count("Shutdown = True, Interact Style = Any"), 1);
    QVERIFY(m_tool->Process().waitForFinished(5000));
    QCOMPARE(m_tool->Process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_tool->Process().exitCode(), 0);
    QVERIFY(manager.Process().waitForFinished(5000));
}

QTEST_GUILESS_MAIN(tst_SessionEnd)

#include "tst_SessionEnd.moc"
