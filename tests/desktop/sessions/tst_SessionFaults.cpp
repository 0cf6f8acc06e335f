// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"
#include "StatusNotifierWatcher.h"

#include <QDBusConnectionInterface>
#include <QDBusContext>
#include <QDBusMessage>

#include <csignal>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

const QString c_strPrinter = u"Office"_s;
const QString c_strReady = u"就绪"_s;
const QString c_strService = u"org.freedesktop.Notifications"_s;
const QString c_strPath = u"/org/freedesktop/Notifications"_s;
constexpr int c_iChanges = 4; // of a status file

} // namespace

/// A poor notification server: without actions, icons and, if so told, without answers.
class PoorServer : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    enum enKind
    {
        enPlain,
        enSilent,
        enCrashing,
        enNone
    };

    explicit PoorServer(enKind enServerKind) : m_enKind(enServerKind) {}
    bool Start()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        return m_enKind == enNone || (bus.registerService(c_strService) &&
                                      bus.registerObject(c_strPath, this, QDBusConnection::ExportAllSlots));
    }

    ~PoorServer() override
    {
        QDBusConnection::sessionBus().unregisterObject(c_strPath);
        QDBusConnection::sessionBus().unregisterService(c_strService);
    }

    int m_iCount = 0;

public slots:
    QStringList GetCapabilities() { return {u"body"_s}; }

    uint Notify(const QString&, uint, const QString&, const QString&, const QString&, const QStringList&,
                const QVariantMap&, int)
    {
        ++m_iCount;
        if (m_enKind != enPlain) {
            setDelayedReply(true);
        }
        if (m_enKind == enCrashing) {
            QDBusConnection::sessionBus().unregisterService(c_strService);
        }
        return 1;
    }

private:
    enKind m_enKind;
};

/// A session whose other programs fail, or which is halted.
class tst_SessionFaults : public DesktopTest
{
    Q_OBJECT

private slots:
    /// Whenever nobody has its name, the bus would start the desktop's own notification server.
    void initTestCase()
    {
        const QString strFolder = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/dbus-1/services/"_s;
        QVERIFY(WriteFile(strFolder + c_strService + u".service"_s,
                          "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/bin/false\n"));
        QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"ReloadConfig"_s));
    }

    void notificationServerDelaysNothing_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<int>("count");
        QTest::newRow("without actions and icons") << int(PoorServer::enPlain) << c_iChanges;
        QTest::newRow("never answers") << int(PoorServer::enSilent) << c_iChanges;
        QTest::newRow("ends while it is asked") << int(PoorServer::enCrashing) << 1;
        QTest::newRow("none runs") << int(PoorServer::enNone) << 0;
    }

    void notificationServerDelaysNothing()
    {
        QFETCH(int, kind);
        QFETCH(int, count);
        PoorServer server(static_cast<PoorServer::enKind>(kind));
        QVERIFY(server.Start());
        WriteReadyPrinters({c_strPrinter});
        StartWithTray(TrayHost::enXfcePanel);
        qint64 iSlowestMSec = 0; // of the window's answers
        const auto state = [&] {
            QElapsedTimer timer;
            timer.start();
            const QString strState = m_tool->Cell(0, 3);
            iSlowestMSec = std::max(iSlowestMSec, timer.elapsed());
            return strState;
        };
        QTRY_COMPARE(state(), c_strReady);
        for (int i = 0; i < c_iChanges; ++i) {
            WriteStatus(c_strPrinter, Reply(i % 2 == 0 ? 0x11 : 0x00, {}, {0x6160}));
            QTRY_COMPARE(state(), i % 2 == 0 ? u"正在扫描"_s : c_strReady);
        }
        QCOMPARE(state(), c_strReady); // after the last notification
        QVERIFY2(iSlowestMSec < 1000, qPrintable(QString::number(iSlowestMSec)));
        QTRY_COMPARE(server.m_iCount, count);
        QCOMPARE(QDBusConnection::sessionBus().interface()->isServiceRegistered(c_strService).value(), count > 1);
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
        ExitByMenu();
    }

    void haltedSessionAndOddTimesAnnounceNothing()
    {
        PoorServer server(PoorServer::enPlain);
        QVERIFY(server.Start());
        WriteReadyPrinters({c_strPrinter});
        StartWithTray(TrayHost::enXfcePanel);
        QTRY_COMPARE(m_tool->Cell(0, 3), c_strReady);
        WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
        QTRY_COMPARE(server.m_iCount, 1);

        // What happens while all stands still is seen as one change.
        const auto iPid = static_cast<pid_t>(m_tool->Process().processId());
        QCOMPARE(::kill(iPid, SIGSTOP), 0);
        for (const quint8 byStatus : {0x11, 0x12, 0x10, 0x02, 0x11}) {
            WriteStatus(c_strPrinter, Reply(byStatus, {}, {0x6160}));
        }
        QCOMPARE(::kill(iPid, SIGCONT), 0);
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在扫描"_s);
        QTRY_COMPARE(server.m_iCount, 2);

        // A clock that is set gives the files times in the future and in the past.
        const QByteArray path = m_folder.StatusPath(c_strPrinter).toUtf8();
        for (const time_t iSeconds : {time_t{2000000000}, time_t{1}, time_t{4000000000}}) {
            const timespec times[2] = {{iSeconds, 0}, {iSeconds, 0}};
            QCOMPARE(::utimensat(AT_FDCWD, path.constData(), times, 0), 0);
            const qint64 iBefore = Looks();
            QTRY_VERIFY(Looks() >= iBefore + 5);
            QCOMPARE(m_tool->Cell(0, 3), u"正在扫描"_s);
        }
        WriteStatus(c_strPrinter, Reply(0x10, {}, {0x6160})); // and it still follows
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在打印(墨水量低)"_s);
        QTRY_COMPARE(server.m_iCount, 3);
    }

    void lostBusCostsNoTime_data()
    {
        QTest::addColumn<bool>("atFirst");
        QTest::addColumn<bool>("again");
        QTest::addColumn<bool>("notifier"); // the tray is on the bus
        QTest::newRow("none runs") << false << false << false;
        QTest::newRow("ends") << true << false << false;
        QTest::newRow("comes back") << true << true << false;
        QTest::newRow("ends with the tray") << true << false << true;
        QTest::newRow("comes back with the tray") << true << true << true;
    }

    void lostBusCostsNoTime()
    {
        QFETCH(bool, atFirst);
        QFETCH(bool, again);
        QFETCH(bool, notifier);
        const QString strSocket = u"/tmp/lost-bus"_s;
        const QString strAddress = u"unix:path="_s + strSocket;
        QProcess bus;
        const auto startBus = [&] {
            bus.start(u"dbus-daemon"_s,
                      {u"--session"_s, u"--nofork"_s, u"--nopidfile"_s, u"--address="_s + strAddress});
            return QTest::qWaitFor([&] { return QFile::exists(strSocket); });
        };
        const auto endBus = [&] {
            bus.kill();
            bus.waitForFinished();
            QFile::remove(strSocket);
        };
        QVERIFY(!atFirst || startBus());
        StatusNotifierWatcher watcher(notifier ? strAddress : QString());
        watcher.RegisterHost();
        WriteReadyPrinters({c_strPrinter});
        const QByteArray old = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        qputenv("DBUS_SESSION_BUS_ADDRESS", strAddress.toUtf8());
        if (notifier) {
            m_tool->Start();
            QTRY_VERIFY(m_tool->MainWindow());
            QTRY_COMPARE(watcher.m_iIcons, 1);
        } else {
            StartWithTray();
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", old);
        endBus();
        QVERIFY(!again || startBus());

        // Processor time, in ticks of 10 ms, while the status worker looks 30 times at its file.
        const QString strProc = u"/proc/%1/"_s.arg(m_tool->Process().processId());
        const auto ticks = [&] {
            const QList<QByteArray> listField = ReadProcFile(strProc + u"stat"_s).split(' ');
            return listField.value(13).toLongLong() + listField.value(14).toLongLong();
        };
        QTRY_VERIFY(Looks() > 0);
        const qint64 iLooks = Looks();
        const qint64 iTicks = ticks();
        QTRY_VERIFY_WITH_TIMEOUT(Looks() >= iLooks + 30, 30000);
        const qint64 iUsed = ticks() - iTicks;
        QVERIFY2(iUsed < 40, qPrintable(QString::number(iUsed))); // a busy loop takes 150 and more

        WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
        QTRY_VERIFY(notifier || m_tool->Popup()); // the program's own balloon needs no bus
        HideWindow();
        QVERIFY(notifier || m_tray->ShowWindow(*m_tool));
        endBus();
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void thousandPrintersAreShown()
    {
        QStringList listName;
        for (int i = 0; i < 1000; ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
        StartWithTray();
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 1000, 20000);
        for (const int iRow : {0, 500, 999}) {
            QTRY_COMPARE_WITH_TIMEOUT(m_tool->Cell(iRow, 3), c_strReady, 20000);
        }
        WriteStatus(listName.at(999), Reply(0x10));
        QTRY_COMPARE(m_tool->Cell(999, 3), u"正在打印"_s);
        HideWindow();
        QVERIFY(m_tray->ShowWindow(*m_tool));
        ExitByMenu();
    }

private:
    /// How often the first printer's worker has waited, which it does after each look at the status file; -1 before
    /// there is one.
    qint64 Looks() const
    {
        const QString strFolder = u"/proc/%1/task/"_s.arg(m_tool->Process().processId());
        for (const QString& strTask : QDir(strFolder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
            if (ReadProcFile(strFolder + strTask + u"/comm"_s) == "vora-status-0\n") {
                return ProcNumber(ReadProcFile(strFolder + strTask + u"/status"_s), "voluntary_ctxt_switches");
            }
        }
        return -1;
    }
};

QTEST_GUILESS_MAIN(tst_SessionFaults)

#include "tst_SessionFaults.moc"
