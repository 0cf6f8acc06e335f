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
        const QString strAddress = u"/tmp/session-manager"_s;
        QFile::remove(strAddress);
        if (!WriteScript(u"/tmp/session"_s, "echo $SESSION_MANAGER > /tmp/session-manager.new\n"
                                            "mv /tmp/session-manager.new /tmp/session-manager\n") ||
            !WriteFile(QDir::homePath() + u"/.xsmstartup"_s, "/tmp/session\n")) {
            return false;
        }
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"SM_SAVE_DIR"_s, m_folder.path()); // no session of an earlier test to choose
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setStandardOutputFile(m_strOutput);
        m_process.start(u"stdbuf"_s, {u"-oL"_s, u"xsm"_s, u"-verbose"_s});
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
        Desktop::Run(u"wmctrl"_s, {u"-i"_s, u"-a"_s, window->strId});
        if (!QTest::qWaitFor([&] { return Desktop::ActiveWindow() == window->strId; })) {
            return false;
        }
        const int iX = window->geometry.width() * 2 / 3;
        const int iY = window->geometry.height();
        Drag(window->strId, {iX, iY * 7 / 10}, {iX, iY * 7 / 6});
        if (!QTest::qWaitFor([] { return Desktop::FindWindow(u"xsm"_s, u"Shutdown"_s, {}, {999, 999}).has_value(); })) {
            return false;
        }
        Desktop::PressKey(u"a"_s);
        Desktop::PressKey(u"Return"_s);
        return true;
    }

    QProcess& Process() { return m_process; }

private:
    static std::optional<Desktop::Window> Window()
    {
        return Desktop::FindWindow(u"xsm"_s, u"xsm: Default"_s, {50, 50}, {999, 999});
    }

    static void Drag(const QString& strId, QPoint from, QPoint to)
    {
        Desktop::Run(u"xdotool"_s,
                     {u"mousemove"_s, u"--window"_s, strId, QString::number(from.x()), QString::number(from.y()),
                      u"mousedown"_s, u"1"_s, u"mousemove"_s, u"--window"_s, strId, QString::number(to.x()),
                      QString::number(to.y()), u"sleep"_s, u"0.3"_s, u"mouseup"_s, u"1"_s});
    }

    QTemporaryDir m_folder;
    QString m_strOutput = u"/tmp/session-manager.txt"_s;
    QProcess m_process;
};

} // namespace

/// The end that comes from outside: signals and the desktop's logout.
class tst_SessionEnd : public DesktopTest
{
    Q_OBJECT

private slots:
    void signalEndsIt_data()
    {
        QTest::addColumn<int>("iSignal");
        QTest::addColumn<bool>("bCommandHangs");
        QTest::newRow("terminate") << SIGTERM << false;
        QTest::newRow("interrupt") << SIGINT << false;
        QTest::newRow("terminate-while-a-command-hangs") << SIGTERM << true;
    }

    void signalEndsIt()
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
    void hangingCommandGetsTheInterrupt()
    {
        StartWithHangingCommand();
        const auto id = static_cast<pid_t>(m_tool->Process().processId());
        QCOMPARE(::kill(id, SIGINT), 0);
        WriteStatus(u"Hall"_s, Reply(0x20));
        QTRY_COMPARE(m_tool->Cell(1, 3), u"清洁模式"_s);

        EndHangingCancel();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在取消任务"_s); // the command has ended
        QCOMPARE(::kill(id, SIGINT), 0);
        QVERIFY(m_tool->Process().waitForFinished(500));
    }

    void logoutIsNotHeldUp_data()
    {
        QTest::addColumn<QStringList>("listArgument");
        QTest::newRow("window-shown") << QStringList();
        QTest::newRow("window-hidden") << QStringList(u"-hide"_s);
    }

    void logoutIsNotHeldUp()
    {
        QFETCH(QStringList, listArgument);
        SessionManager manager;
        QVERIFY(manager.Start());
        m_tool = std::make_unique<Tool>(); // with the manager's address
        WriteReadyPrinters({u"Office"_s});
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

private:
    void StartWithHangingCommand()
    {
        FakeHangingCancel();
        WriteReadyPrinters({u"Office"_s, u"Hall"_s});
        m_tool->Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        WriteStatus(u"Office"_s, Reply(0x03));
        QTRY_VERIFY(IsCancelRunning());
    }
};

QTEST_GUILESS_MAIN(tst_SessionEnd)

#include "tst_SessionEnd.moc"
