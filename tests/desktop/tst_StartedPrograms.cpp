// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "ProcFile.h"

#include <QSet>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QString c_strFolder = u"/tmp/child/"_s;

/// A script that notes what it was given by the process that started it.
const QByteArray c_note = "mkdir -p /tmp/child\n"
                          "env -0 > /tmp/child/environment\n"
                          "ls /proc/self/fd > /tmp/child/descriptors\n"
                          "grep -E '^Sig(Blk|Ign|Pnd)' /proc/self/status > /tmp/child/signals\n"
                          "printf '%s\\n' \"$PWD\" \"$@\" > /tmp/child/arguments\n"
                          "touch /tmp/child/noted\n";

/// For bash: other shells begin with no signal blocked, whatever they were given.
bool WriteNote(const QString& strPath)
{
    return WriteScript(strPath, c_note) && WriteFile(strPath, "#!/bin/bash\n" + c_note);
}

QSet<QByteArray> Entries(const QByteArray& environment)
{
    QSet<QByteArray> setEntry;
    for (const QByteArray& entry : environment.split('\0')) {
        // Those that a shell keeps for itself.
        const QByteArray name = entry.left(entry.indexOf('='));
        if (!QByteArrayList({"", "_", "PWD", "OLDPWD", "SHLVL"}).contains(name)) {
            setEntry.insert(entry);
        }
    }
    return setEntry;
}

/// One of the sets of signals, without those that the C library keeps for itself.
unsigned StandardSignals(const QByteArray& sets, const QByteArray& kind)
{
    const int iStart = static_cast<int>(sets.indexOf(kind + ":\t"));
    bool bNumber = false;
    const qulonglong iSet = sets.mid(iStart + static_cast<int>(kind.size()) + 2, 16).toULongLong(&bNumber, 16);
    return iStart >= 0 && bNumber ? static_cast<unsigned>(iSet) & 0x7FFFFFFFU : ~0U;
}

} // namespace

/// What the programs that this one starts find: the environment and the folder of the session, plain signals, and no
/// file of ours.
class tst_StartedPrograms : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const int iSignal : {SIGTERM, SIGINT, SIGQUIT, SIGHUP, SIGPIPE}) {
            std::signal(iSignal, SIG_DFL); // as a desktop starts its programs
        }
        const QStringList listFd = QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System);
        for (const QString& strFd : listFd) {
            if (strFd.toInt() > STDERR_FILENO) {
                ::fcntl(strFd.toInt(), F_SETFD, FD_CLOEXEC); // what the shells around this test have left open
            }
        }
    }

    void cancel()
    {
        FakeProgram(u"cancel"_s, c_note);
        WriteReadyPrinters({u"Office"_s, u"Hall"_s});
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        const QByteArray environment = ReadProcFile(u"/proc/%1/environ"_s.arg(m_tool->Process().processId()));
        WriteStatus(u"Office"_s, Reply(0x03));
        Check(environment, QDir::currentPath().toLocal8Bit() + "\nOffice\n");
    }

    void updateTool()
    {
        QVERIFY(WriteNote(u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s));
        WriteReadyPrinters({u"Office"_s});
        StartWithTray();
        const QByteArray environment = ReadProcFile(u"/proc/%1/environ"_s.arg(m_tool->Process().processId()));
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
        Check(environment, QDir::currentPath().toLocal8Bit() + '\n',
              1U << (SIGPIPE - 1)); // by Qt 5.15, which leaves it so in what it detaches
    }

    /// The starter's display and bus are not handed on.
    void toolAfterLogin()
    {
        const QString strStarter = u"/tmp/login-start/vora-login-start"_s;
        QVERIFY(WriteNote(u"/tmp/login-start/VoraPrinterTool"_s));
        QVERIFY(QFile::copy(QStringLiteral(VORA_LOGIN_START), strStarter));
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        QProcess login;
        login.start(strStarter, QStringList());
        QVERIFY(login.waitForFinished());
        const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
        Check(own.toStringList().join(QChar(0)).toLocal8Bit(), QDir::currentPath().toLocal8Bit() + "\n-hide\n");
    }

private:
    /// Of the program that started after this test had begun.
    static void Check(const QByteArray& environment, const QByteArray& arguments, unsigned dwMayBeIgnored = 0)
    {
        QTRY_VERIFY(QFile::exists(c_strFolder + u"noted"_s));
        QCOMPARE(ReadFile(c_strFolder + u"arguments"_s), arguments);
        QCOMPARE(ReadFile(c_strFolder + u"descriptors"_s), QByteArray("0\n1\n2\n3\n")); // the last is the look
        const QByteArray sets = ReadFile(c_strFolder + u"signals"_s);
        QCOMPARE(StandardSignals(sets, "SigPnd"), 0U);
        QCOMPARE(StandardSignals(sets, "SigBlk"), 0U);
        QCOMPARE(StandardSignals(sets, "SigIgn") & ~dwMayBeIgnored, 0U);
        QCOMPARE(Entries(ReadFile(c_strFolder + u"environment"_s)), Entries(environment));
        QVERIFY(QDir(c_strFolder).removeRecursively());
    }
};

QTEST_GUILESS_MAIN(tst_StartedPrograms)

#include "tst_StartedPrograms.moc"
