// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>

Q_DECLARE_METATYPE(TrayHost::enKind)

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

/// What a process has cost so far.
struct stCost
{
    int iTicks = 0;    ///< of processor time
    int iSwitches = 0; ///< how often it went to sleep of its own accord
};

stCost CostOf(const QProcess& process)
{
    const QString strFolder = u"/proc/%1/"_s.arg(process.processId());
    const QByteArray stat = ReadProcFile(strFolder + u"stat"_s);
    const QList<QByteArray> listField = stat.mid(stat.lastIndexOf(')') + 2).split(' '); // from the third, the state
    const QByteArray status = ReadProcFile(strFolder + u"status"_s);
    return {listField.value(11).toInt() + listField.value(12).toInt(),
            static_cast<int>(ProcNumber(status, "voluntary_ctxt_switches"))};
}

/// Whether the panel is on the screen, as its user sees it.
bool IsPanelThere(TrayHost::enKind enKind)
{
    switch (enKind) {
    case TrayHost::enTint2: return !Desktop::Windows(u"tint2"_s).isEmpty();
    case TrayHost::enTrayer: return !Desktop::Windows(u"trayer"_s).isEmpty();
    case TrayHost::enXfcePanel: return !Desktop::Windows(u"wrapper-2.0"_s).isEmpty();
    }
    return false;
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
        QTest::addColumn<int>("lateMSec");
        const QList<QPair<QByteArray, TrayHost::enKind>> listKind = {
            {"tint2", TrayHost::enTint2}, {"trayer", TrayHost::enTrayer}, {"xfce4-panel", TrayHost::enXfcePanel}};
        for (const auto& kind : listKind) {
            for (const int iLateMSec : {-1, 1000, 5000}) {
                const QByteArray tag = iLateMSec < 0 ? "early" : QByteArray::number(iLateMSec / 1000) + "s";
                QTest::newRow((kind.first + '-' + tag).constData()) << kind.second << iLateMSec;
            }
        }
    }

    void iconFollowsPanel()
    {
        QFETCH(const TrayHost::enKind, kind);
        QFETCH(const int, lateMSec);
        Login login;
        m_tray = std::make_unique<TrayHost>(kind);
        if (lateMSec < 0) {
            QVERIFY(m_tray->Start());
            QTRY_VERIFY_WITH_TIMEOUT(IsPanelThere(kind), 20000);
            login.start();
            QTRY_VERIFY_WITH_TIMEOUT(m_tray->HasIcon(*m_tool), 5000);
        } else {
            login.start();
            Wait(login, lateMSec);
            if (QTest::currentTestFailed()) {
                return;
            }
            QVERIFY(m_tray->Start());
            QTRY_VERIFY_WITH_TIMEOUT(IsPanelThere(kind), 20000);
            QTRY_VERIFY_WITH_TIMEOUT(m_tray->HasIcon(*m_tool), 2000);
        }
        QVERIFY(IsTool(login));
        QVERIFY(!m_tool->MainWindow());
    }

    void followsStatusNotifierHost_data()
    {
        QTest::addColumn<int>("lateMSec");
        QTest::newRow("early") << -1;
        QTest::newRow("1s") << 1000;
        QTest::newRow("5s") << 5000;
    }

    /// The panels above have an XEmbed tray, too.
    void followsStatusNotifierHost()
    {
        QFETCH(const int, lateMSec);
        Login login;
        if (lateMSec > 0) {
            login.start();
            Wait(login, lateMSec);
            if (QTest::currentTestFailed()) {
                return;
            }
        }
        StatusNotifierWatcher watcher;
        if (lateMSec > 0) {
            QVERIFY(!QTest::qWaitFor([&] { return IsTool(login); }, 1000)); // nobody shows the icons yet
        }
        watcher.RegisterHost();
        if (lateMSec < 0) {
            login.start();
        }
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Icons(), 1, lateMSec < 0 ? 5000 : 2000);
        QVERIFY(IsTool(login));
        QVERIFY(!m_tool->MainWindow());
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
        Wait(login, 2900);
        if (QTest::currentTestFailed()) {
            return;
        }
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
    /// The starter waits, and does nothing else: once it has looked around, it sleeps.
    static void Wait(const QProcess& login, int iMSec)
    {
        constexpr int iLookMSec = 800;
        QVERIFY(!QTest::qWaitFor([&] { return IsTool(login); }, iLookMSec));
        const stCost before = CostOf(login);
        QVERIFY(before.iSwitches > 0); // the file was read
        QVERIFY(!QTest::qWaitFor([&] { return IsTool(login); }, iMSec - iLookMSec));
        const stCost after = CostOf(login);
        QCOMPARE(login.state(), QProcess::Running);
        QVERIFY2(after.iTicks - before.iTicks <= 2, QByteArray::number(after.iTicks - before.iTicks));
        QVERIFY2(after.iSwitches - before.iSwitches <= 20, QByteArray::number(after.iSwitches - before.iSwitches));
    }
};

QTEST_GUILESS_MAIN(tst_LoginStart)

#include "tst_LoginStart.moc"
