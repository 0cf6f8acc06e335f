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
const QString c_strUpdateTool = u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s;

/// A script that notes what it was given by the process that started it.
const QByteArray c_note = "mkdir -p /tmp/child\n"
                          "env -0 > /tmp/child/environment\n"
                          "ls /proc/self/fd > /tmp/child/descriptors\n"
                          "sed -nE 's/^Sig(Pnd|Blk|Ign):\t.{8}//p' /proc/self/status > /tmp/child/signals\n" // 1 to 32
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
        if (!QByteArrayList({"", "_", "PWD", "OLDPWD", "SHLVL"}).contains(entry.split('=').constFirst())) {
            setEntry.insert(entry);
        }
    }
    return setEntry;
}

/// The running update tools: number, parent's number and command line of each; "<defunct>" stands in that of one that
/// has ended and that nobody has asked about.
QStringList UpdateTools()
{
    const QString strList = Desktop::Run(u"ps"_s, {u"-A"_s, u"-o"_s, u"pid=,ppid=,args="_s});
    return strList.split(QLatin1Char('\n')).filter(QRegularExpression(u"voraK507FW|<defunct>"_s));
}

QString Field(const QString& strLine, int iField)
{
    return strLine.simplified().section(QLatin1Char(' '), iField, iField);
}

} // namespace

/// What the programs that this one starts find: the environment and the folder of the session, plain signals, and no
/// file of ours; and what becomes of the firmware-update tools that the tray menu's entry starts.
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
        WriteStatus(u"Office"_s, Reply(0x03));
        Check(ToolEnvironment(), "\nOffice\n");
    }

    void updateTool()
    {
        QVERIFY(WriteNote(c_strUpdateTool));
        StartWithTray();
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
        Check(ToolEnvironment(), "\n", u"[01]"_s); // SIGPIPE, by Qt 5.15, which leaves it so in what it detaches
    }

    /// The starter's display and bus are not handed on.
    void toolAfterLogin()
    {
        const QString strStarter = u"/tmp/login-start/vora-login-start"_s;
        QVERIFY(WriteNote(u"/tmp/login-start/VoraPrinterTool"_s));
        QVERIFY(QFile::copy(QStringLiteral(VORA_LOGIN_START), strStarter));
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        QCOMPARE(QProcess::execute(strStarter, {}), 0);
        const QProcessEnvironment own = QProcessEnvironment::systemEnvironment();
        Check(own.toStringList().join(QChar(0)).toLocal8Bit(), "\n-hide\n");
    }

    void eachClickStartsOneMoreUpdateTool()
    {
        QVERIFY(WriteScript(c_strUpdateTool, "read line < /tmp/nobody-writes\n"));
        Desktop::Run(u"mkfifo"_s, {u"/tmp/nobody-writes"_s});
        StartWithTray();
        for (int iCount = 1; iCount <= 2; ++iCount) {
            QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
            QTRY_COMPARE(UpdateTools().size(), iCount);
        }
        for (const QString& strUpdateTool : UpdateTools()) {
            QVERIFY2(strUpdateTool.endsWith(QLatin1String("/bin/sh ") + c_strUpdateTool), qPrintable(strUpdateTool));
            // The program would have to ask about its own children.
            QVERIFY(Field(strUpdateTool, 1).toLongLong() != m_tool->Process().processId());
        }
        Desktop::Run(u"kill"_s, {Field(UpdateTools().first(), 0)});
        QTRY_COMPARE(UpdateTools().size(), 1);

        ExitByMenu();
        QTRY_COMPARE(UpdateTools().size(), 1);
        Desktop::Run(u"kill"_s, {Field(UpdateTools().first(), 0)});
        QTRY_COMPARE(UpdateTools(), QStringList());
    }

    void missingUpdateToolIsNoMatter()
    {
        StartWithTray();
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
        QTRY_VERIFY(!m_tray->Menu(*m_tool));
        QVERIFY(m_tray->OpenMenu(*m_tool)); // the choice is dealt with by then
        Desktop::PressKey(u"Escape"_s);
        QTRY_VERIFY(!m_tray->Menu(*m_tool));

        QCOMPARE(Desktop::Windows(m_tool->Class()).size(), 2); // the window and the icon
        QVERIFY(QFile::exists(m_tool->OutputPath()));
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
        QCOMPARE(UpdateTools(), QStringList());
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

private:
    QByteArray ToolEnvironment() { return ReadProcFile(u"/proc/%1/environ"_s.arg(m_tool->Process().processId())); }

    /// Of the program that started after this test had begun, in this test's folder.
    static void Check(const QByteArray& environment, const QByteArray& arguments, const QString& strPipe = u"0"_s)
    {
        QTRY_VERIFY(QFile::exists(c_strFolder + u"noted"_s));
        QCOMPARE(ReadFile(c_strFolder + u"arguments"_s), QDir::currentPath().toLocal8Bit() + arguments);
        QCOMPARE(ReadFile(c_strFolder + u"descriptors"_s), QByteArray("0\n1\n2\n3\n")); // the last is the look
        // The pending, the blocked and the ignored ones; the 32nd is the C library's own.
        const QString strSets = QString::fromLatin1(ReadFile(c_strFolder + u"signals"_s));
        const QRegularExpression none(u"^([08]0{7}\n){2}[08]000"_s + strPipe + u"000\n$"_s);
        QVERIFY2(none.match(strSets).hasMatch(), qPrintable(strSets));
        QCOMPARE(Entries(ReadFile(c_strFolder + u"environment"_s)), Entries(environment));
        QVERIFY(QDir(c_strFolder).removeRecursively());
    }
};

QTEST_GUILESS_MAIN(tst_StartedPrograms)

#include "tst_StartedPrograms.moc"
