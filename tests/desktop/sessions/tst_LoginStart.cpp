// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>

namespace {

const QString c_strFolder = u"/tmp/login-start"_s;

/// The starter, and the tool that it becomes. Killed with this object.
class Login : public QProcess
{
public:
    Login()
    {
        setProgram(c_strFolder + u"/vora-login-start"_s);
        setProcessChannelMode(QProcess::ForwardedChannels);
    }
    ~Login() override
    {
        kill();
        waitForFinished();
    }
};

/// Whether the login starter has become the tool: the process keeps its number and changes its name.
bool IsTool(const QProcess& process)
{
    return ReadProcFile(u"/proc/%1/comm"_s.arg(process.processId())).trimmed() == "VoraPrinterTool";
}

} // namespace

/// A desktop's list of tray icons, by StatusNotifier alone; the panel that shows them may come later than the list.
class StatusNotifierWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_bHost)

public:
    StatusNotifierWatcher()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.registerObject(u"/StatusNotifierWatcher"_s, this,
                           QDBusConnection::ExportAllProperties | QDBusConnection::ExportAllSignals |
                               QDBusConnection::ExportAllSlots);
        bus.registerService(c_strService);
    }
    ~StatusNotifierWatcher() override { QDBusConnection::sessionBus().unregisterService(c_strService); }

    void RegisterHost()
    {
        m_bHost = true;
        emit StatusNotifierHostRegistered();
    }

    int Icons() const { return m_iIcons; }

public slots:
    void RegisterStatusNotifierItem(const QString& /*strService*/) { ++m_iIcons; }

signals:
    void StatusNotifierHostRegistered();

private:
    const QString c_strService = u"org.kde.StatusNotifierWatcher"_s;
    bool m_bHost = false;
    int m_iIcons = 0;
};

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
        for (const bool bEarly : {true, false}) {
            Login login;
            m_tray = std::make_unique<TrayHost>(kind);
            if (!bEarly) {
                login.start();
                QVERIFY(Sleeps(login, 1000));
            }
            QVERIFY(m_tray->Start());
            QTRY_VERIFY_WITH_TIMEOUT(!Desktop::Windows(window).isEmpty(), 20000);
            if (bEarly) {
                login.start();
            }
            const int iTimeOutMSec = bEarly ? 5000 : 2000;
            QTRY_VERIFY_WITH_TIMEOUT(m_tray->HasIcon(*m_tool), iTimeOutMSec);
            QVERIFY(IsTool(login));
            QVERIFY(!m_tool->MainWindow());
        }
    }

    /// The panels above have an XEmbed tray, too.
    void followsStatusNotifierHost()
    {
        for (const bool bEarly : {true, false}) {
            Login login;
            if (!bEarly) {
                login.start();
                QVERIFY(Sleeps(login, 1000));
            }
            StatusNotifierWatcher watcher;
            if (!bEarly) {
                QVERIFY(!QTest::qWaitFor([&] { return IsTool(login); }, 1000)); // nobody shows the icons yet
            }
            watcher.RegisterHost();
            if (bEarly) {
                login.start();
            }
            const int iTimeOutMSec = bEarly ? 5000 : 2000;
            QTRY_COMPARE_WITH_TIMEOUT(watcher.Icons(), 1, iTimeOutMSec);
            QVERIFY(IsTool(login));
            QVERIFY(!m_tool->MainWindow());
        }
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
        QProcess display;
        display.start(u"Xvfb"_s,
                      {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-nolisten"_s, u"local"_s, u"-noreset"_s});
        QTRY_VERIFY(display.canReadLine());
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, QLatin1Char(':') + QString::fromLatin1(display.readLine().trimmed()));
        Login login;
        login.setProcessEnvironment(environment);
        login.start();
        QVERIFY(!QTest::qWaitFor([&] { return login.state() == QProcess::NotRunning || IsTool(login); }, 1000));
        display.kill();
        display.waitForFinished();
        QTRY_COMPARE(login.state(), QProcess::NotRunning);
        QCOMPARE(login.exitStatus(), QProcess::NormalExit);
    }

private:
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
