// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QScopeGuard>

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
    void Start()
    {
        // It starts the session's programs with its own address. This one passes that on.
        const QString strAddress = u"/tmp/session-manager"_s;
        QFile::remove(strAddress);
        QVERIFY(WriteScript(u"/tmp/session"_s, "echo $SESSION_MANAGER > /tmp/session-manager.new\n"
                                               "mv /tmp/session-manager.new /tmp/session-manager\n"));
        QVERIFY(WriteFile(QDir::homePath() + u"/.xsmstartup"_s, "/tmp/session\n"));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"SM_SAVE_DIR"_s, m_folder.path()); // no session of an earlier test to choose
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::MergedChannels);
        m_process.setStandardOutputFile(m_strOutput);
        m_process.start(u"stdbuf"_s, {u"-oL"_s, u"xsm"_s, u"-verbose"_s});
        QTRY_VERIFY(Window() && QFile::exists(strAddress));
        qputenv("SESSION_MANAGER", ReadFile(strAddress).trimmed());
    }

    /// How often a text stands in its report.
    int Count(const char* pText) const { return static_cast<int>(ReadFile(m_strOutput).count(pText)); }

    /// What its user does to log out: drags the mouse from the button to its menu's first entry, and names the session.
    void LogOut() const
    {
        const Desktop::Window window = Window().value_or(Desktop::Window());
        Desktop::Run(u"wmctrl"_s, {u"-i"_s, u"-a"_s, window.strId});
        QTRY_COMPARE(Desktop::ActiveWindow(), window.strId);
        const QRect& place = window.geometry;
        const QPoint button(place.left() + place.width() * 2 / 3, place.top() + place.height() * 7 / 10);
        const QPoint entry(button.x(), place.top() + place.height() * 7 / 6); // below the window
        const auto menu = [&entry] { return Desktop::Screen().copy({entry - QPoint(30, 8), QSize(60, 16)}); };
        const QImage before = menu();
        Desktop::MoveMouse(button);
        Desktop::Run(u"xdotool"_s, {u"mousedown"_s, u"1"_s});
        QTRY_VERIFY(menu() != before);
        Desktop::MoveMouse(entry);
        Desktop::Run(u"xdotool"_s, {u"mouseup"_s, u"1"_s});
        QTRY_VERIFY(Desktop::FindWindow(u"xsm"_s, u"Shutdown"_s, {}, {999, 999}));
        Desktop::PressKey(u"a"_s);
        Desktop::PressKey(u"Return"_s);
    }

    QProcess& Process() { return m_process; }

private:
    static std::optional<Desktop::Window> Window()
    {
        return Desktop::FindWindow(u"xsm"_s, u"xsm: Default"_s, {50, 50}, {999, 999});
    }

    QTemporaryDir m_folder;
    QString m_strOutput = u"/tmp/session-manager.txt"_s;
    QProcess m_process;
};

} // namespace

/// The end by the tray menu's last entry, by signals and by the desktop's logout: soon, without failure, and with
/// nothing left behind.
class tst_Exit : public DesktopTest
{
    Q_OBJECT

private slots:
    void windowHidden()
    {
        Start();
        HideWindow();
        Exit();
    }

    void bothWindowsOpenAndManyPrinters()
    {
        const QByteArray before = qgetenv("VORA_REAL_TIME");
        qputenv("VORA_REAL_TIME", "1"); // the workers end within their pauses
        const auto tidy = qScopeGuard([&] { before.isEmpty() ? qunsetenv("VORA_REAL_TIME") : true; });
        QStringList listName;
        for (int i = 0; i < 200; ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
        Start();
        QTRY_COMPARE(m_tool->RowCount(), 200);
        QTRY_COMPARE(m_tool->Cell(199, 3), u"就绪"_s);
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(m_tool->SettingsWindow());
        Exit();
    }

    void commandHangs()
    {
        StartWithHangingCommand();
        Exit(false);

        // The command is the print system's: it may still reach the server, and then ends by itself.
        QVERIFY(WriteFile(u"/tmp/nobody-writes"_s, "\n"));
        QTRY_COMPARE(Desktop::ProcessNames(), m_listBefore);
    }

    void terminatedWhileACommandHangs()
    {
        StartWithHangingCommand();
        CheckEndBy(SIGTERM);
    }

    /// The interrupt key goes to the command in the foreground, as in a shell; the program that waits for it stays.
    void hangingCommandGetsTheInterrupt()
    {
        StartWithHangingCommand();
        Signal(SIGINT);
        WriteStatus(u"Hall"_s, Reply(0x20));
        QTRY_COMPARE(m_tool->Cell(1, 3), u"清洁模式"_s);

        QVERIFY(WriteFile(u"/tmp/nobody-writes"_s, "\n"));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在取消任务"_s); // the command has ended
        CheckEndBy(SIGINT);
    }

    void logoutIsNotHeldUp_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::newRow("window shown") << QStringList();
        QTest::newRow("window hidden") << QStringList(u"-hide"_s);
    }

    void logoutIsNotHeldUp()
    {
        QFETCH(const QStringList, arguments);
        SessionManager manager;
        manager.Start();
        m_tool = std::make_unique<Tool>(); // with the manager's address
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start(arguments);
        QTRY_COMPARE(manager.Count("received SAVE YOURSELF DONE"), 1); // that of its registration
        QTRY_COMPARE(m_tool->MainWindow().has_value(), arguments.isEmpty());

        manager.LogOut();
        QTRY_COMPARE(manager.Count("Shutdown = True, Interact Style = Any"), 1);
        CheckEnd(5000);
        QVERIFY(manager.Process().waitForFinished(5000));
    }

private:
    void Start()
    {
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        QCOMPARE(m_tool->RowCount(), 0); // starts the accessibility service
        m_listBefore = Desktop::ProcessNames();
        QFile::remove(u"/tmp/globals-destroyed"_s);
        Preload(VORA_TELL_DESTRUCTION);
        m_tool->Start();
        qunsetenv("LD_PRELOAD");
        QTRY_VERIFY(m_tool->MainWindow());
        QVERIFY(WaitForTrayIcon());
    }

    void StartWithHangingCommand()
    {
        QFile::remove(u"/tmp/cancel-runs"_s);
        Desktop::Run(u"mkfifo"_s, {u"/tmp/nobody-writes"_s});
        FakeProgram(u"cancel"_s, "touch /tmp/cancel-runs\nread line < /tmp/nobody-writes\n");
        WriteReadyPrinters({u"Office"_s, u"Hall"_s});
        Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        WriteStatus(u"Office"_s, Reply(0x03));
        QTRY_VERIFY(QFile::exists(u"/tmp/cancel-runs"_s));
    }

    void Signal(int iSignal) { QCOMPARE(::kill(static_cast<pid_t>(m_tool->Process().processId()), iSignal), 0); }

    void CheckEndBy(int iSignal)
    {
        Signal(iSignal);
        QVERIFY(m_tool->Process().waitForFinished(500));
        QCOMPARE(m_tool->Process().exitStatus(), QProcess::CrashExit);
        QCOMPARE(m_tool->Process().exitCode(), iSignal);
    }

    /// By the menu. When it leaves a thread behind, it does not destroy its global objects, which that may still use.
    void Exit(bool bAllEnds = true)
    {
        ExitByMenu();
        QVERIFY(QFile::exists(m_tool->OutputPath()));
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
        QCOMPARE(QFile::exists(u"/tmp/globals-destroyed"_s), bAllEnds);
        QCOMPARE(Desktop::ProcessNames() == m_listBefore, bAllEnds);
    }

    QStringList m_listBefore; ///< the processes without the program
};

QTEST_GUILESS_MAIN(tst_Exit)

#include "tst_Exit.moc"
