// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"
#include "StatusNotifierWatcher.h"

#include <functional>

namespace {

const QString c_strFolder = u"/tmp/login-start"_s;

/// Killed with this object.
class KilledProcess : public QProcess
{
public:
    ~KilledProcess() override
    {
        kill();
        waitForFinished();
    }
};

/// The starter, and the tool that it becomes.
class Login : public KilledProcess
{
public:
    Login()
    {
        setProgram(c_strFolder + u"/vora-login-start"_s);
        setProcessChannelMode(QProcess::ForwardedChannels);
    }
};

/// A display of two screens; what is started in it is on one of them.
class TwoScreens : public KilledProcess
{
public:
    TwoScreens()
    {
        // With a number of its own: left to itself, it takes that of the desktop's display away.
        start(u"Xvfb"_s, u":9 -displayfd 1 -nolisten tcp -nolisten local -noreset -screen 0 640x480x24 "
                         "-screen 1 640x480x24"_s.split(QLatin1Char(' ')));
    }

    QProcessEnvironment Environment(const QString& strScreen)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (QTest::qWaitFor([this] { return canReadLine(); })) {
            environment.insert(u"DISPLAY"_s, QLatin1Char(':') + QString::fromLatin1(readLine().trimmed()) + strScreen);
        }
        return environment;
    }
};

/// Whether the login starter has become the tool: the process keeps its number and changes its name.
bool IsTool(const QProcess& process)
{
    return ReadProcFile(u"/proc/%1/comm"_s.arg(process.processId())).trimmed() == "VoraPrinterTool";
}

} // namespace

/// A login: the desktop starts the tool's starter, and its panel before, after or never.
class tst_LoginStart : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // The starter looks for the tool beside itself, as both are installed.
        QDir().mkpath(c_strFolder);
        QVERIFY(QFile::copy(QStringLiteral(VORA_TOOL), c_strFolder + u"/VoraPrinterTool"_s));
        QVERIFY(QFile::copy(QStringLiteral(VORA_LOGIN_START), c_strFolder + u"/vora-login-start"_s));
    }

    void iconFollowsPanel_data()
    {
        QTest::addColumn<TrayHost::enKind>("kind");
        QTest::addColumn<QString>("window"); // of the panel
        QTest::newRow("tint2") << TrayHost::enTint2 << u"tint2"_s;
        QTest::newRow("trayer") << TrayHost::enTrayer << u"trayer"_s;
        QTest::newRow("xfce4-panel") << TrayHost::enXfcePanel << u"wrapper-2.0"_s;
    }

    void iconFollowsPanel()
    {
        QFETCH(const TrayHost::enKind, kind);
        QFETCH(const QString, window);
        const auto startPanel = [&](const QProcess& /*login*/) {
            m_tray = std::make_unique<TrayHost>(kind);
            QVERIFY(m_tray->Start());
            QTRY_VERIFY_WITH_TIMEOUT(!Desktop::Windows(window).isEmpty(), 20000);
        };
        CheckFollows(
            startPanel, [&] { return m_tray->HasIcon(*m_tool); }, [&] { m_tray.reset(); });
    }

    /// The panels above have an XEmbed tray, too.
    void followsStatusNotifierHost()
    {
        std::unique_ptr<StatusNotifierWatcher> watcher;
        const auto startPanel = [&](const QProcess& login) {
            watcher = std::make_unique<StatusNotifierWatcher>(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"));
            QVERIFY(!QTest::qWaitFor([&] { return IsTool(login); }, 1000)); // nobody shows the icons yet
            watcher->RegisterHost();
        };
        CheckFollows(
            startPanel, [&] { return watcher->m_iIcons == 1; }, [&] { watcher.reset(); });
    }

    /// A watcher that is announced when its host is there already.
    void followsWatcherThatBringsItsHost()
    {
        Login login;
        login.start();
        QVERIFY(Sleeps(login, 1000));
        StatusNotifierWatcher watcher(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), true);
        QTRY_VERIFY_WITH_TIMEOUT(IsTool(login), 2000);
    }

    void watchesItsOwnScreen_data()
    {
        QTest::addColumn<QString>("screen");
        QTest::newRow("first") << u".0"_s;
        QTest::newRow("second") << u".1"_s;
    }

    void watchesItsOwnScreen()
    {
        QFETCH(const QString, screen);
        TwoScreens display;
        const QProcessEnvironment environment = display.Environment(screen);
        Login login;
        login.setProcessEnvironment(environment);
        login.start();
        QVERIFY(Sleeps(login, 1000));
        KilledProcess panel;
        panel.setProcessEnvironment(environment);
        panel.start(u"trayer"_s, QStringList());
        QTRY_VERIFY_WITH_TIMEOUT(IsTool(login), 2000);
    }

    /// After a minute, twenty seconds of which are one here.
    void startsAnywayWithoutPanel()
    {
        Login login;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LD_PRELOAD"_s, QStringLiteral(VORA_FAST_CLOCK));
        environment.insert(u"ASAN_OPTIONS"_s, u"verify_asan_link_order=0"_s);
        login.setProcessEnvironment(environment);
        QElapsedTimer timer;
        timer.start();
        login.start();
        QVERIFY(Sleeps(login, 2900));
        QTRY_VERIFY_WITH_TIMEOUT(IsTool(login), 1500);
        QVERIFY2(timer.elapsed() >= 3000, QByteArray::number(timer.elapsed()));
    }

    /// A session that ends while the starter waits takes it along.
    void endsWithTheDisplay()
    {
        TwoScreens display;
        Login login;
        login.setProcessEnvironment(display.Environment(QString()));
        login.start();
        QVERIFY(!QTest::qWaitFor([&] { return login.state() == QProcess::NotRunning || IsTool(login); }, 1000));
        display.kill();
        display.waitForFinished();
        QTRY_COMPARE(login.state(), QProcess::NotRunning);
        QCOMPARE(login.exitStatus(), QProcess::NormalExit);
        QCOMPARE(login.exitCode(), 0);
    }

private:
    /// A panel that is there before the starter, and one that comes while the starter waits.
    void CheckFollows(const std::function<void(const QProcess&)>& startPanel, const std::function<bool()>& hasIcon,
                      const std::function<void()>& endPanel)
    {
        for (const bool bEarly : {true, false}) {
            endPanel();
            Login login;
            if (bEarly) {
                startPanel(login);
            }
            login.start();
            if (!bEarly) {
                QVERIFY(Sleeps(login, 1000));
                startPanel(login);
            }
            const int iLimitMSec = bEarly ? 5000 : 2000; // the macro has no parentheses around it
            QTRY_VERIFY_WITH_TIMEOUT(hasIcon(), iLimitMSec);
            QVERIFY(IsTool(login));
            QVERIFY(!m_tool->MainWindow());
        }
    }

    /// Whether the starter waits so long and does nothing else once it has looked around.
    static bool Sleeps(const QProcess& login, int iMSec)
    {
        constexpr int iLookMSec = 800;
        const auto isTool = [&] { return IsTool(login); };
        const auto figures = [&] { // nanoseconds on a processor, and those of waiting for one, and how often it got one
            return ReadProcFile(u"/proc/%1/schedstat"_s.arg(login.processId())).split(' ');
        };
        if (QTest::qWaitFor(isTool, iLookMSec)) {
            return false;
        }
        const QByteArrayList before = figures();
        const bool bTool = QTest::qWaitFor(isTool, iMSec - iLookMSec);
        const QByteArrayList after = figures();
        const qint64 iMSecUsed = (after.value(0).toLongLong() - before.value(0).toLongLong()) / 1000000;
        const qint64 iWakeUps = after.value(2).toLongLong() - before.value(2).toLongLong();
        qInfo("%d ms of processor time, %d wake-ups", static_cast<int>(iMSecUsed), static_cast<int>(iWakeUps));
        return !bTool && before.value(2).toInt() > 0 && login.state() == QProcess::Running && iMSecUsed <= 20 &&
               iWakeUps <= 20;
    }
};

QTEST_GUILESS_MAIN(tst_LoginStart)

#include "tst_LoginStart.moc"
