// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrintServer.h"

#include "QtCompat.h"

#include "Desktop.h"
#include "TestFiles.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTest>

#include <algorithm>

#include <signal.h>

#define SERVER_FOLDER "/tmp/print-server"

namespace {

const QString c_strFolder = QStringLiteral(SERVER_FOLDER);
const QString c_strDocument = c_strFolder + u"/document"_s;
const QString c_strBackend = c_strFolder + u"/bin/backend/endless"_s;

constexpr char c_configuration[] = "Listen " SERVER_FOLDER "/socket\n"
                                   "Browsing Off\n"
                                   "DefaultAuthType None\n"
                                   "<Location />\nAllow all\n</Location>\n"
                                   "<Policy default>\n<Limit All>\nAllow all\n</Limit>\n</Policy>\n";

constexpr char c_files[] = "FileDevice Yes\n"
                           "AccessLog " SERVER_FOLDER "/access.log\n"
                           "ErrorLog " SERVER_FOLDER "/error.log\n"
                           "PageLog " SERVER_FOLDER "/page.log\n"
                           "CacheDir " SERVER_FOLDER "/cache\n"
                           "RequestRoot " SERVER_FOLDER "/spool\n"
                           "ServerBin " SERVER_FOLDER "/bin\n"
                           "ServerRoot " SERVER_FOLDER "/root\n"
                           "StateDir " SERVER_FOLDER "/state\n"
                           "TempDir " SERVER_FOLDER "/spool/tmp\n";

/// The server's programs are not in the PATH of every user.
QString ServerProgram(const QString& strName)
{
    const QString strPath = QStandardPaths::findExecutable(strName);
    return strPath.isEmpty() ? u"/usr/sbin/"_s + strName : strPath;
}

} // namespace

QString PrintServer::Address()
{
    return c_strFolder + u"/socket"_s;
}

bool PrintServer::Start()
{
    QDir(c_strFolder).removeRecursively();
    for (const char* pName : {"cache", "spool/tmp", "bin/backend", "root", "state"}) {
        QDir(c_strFolder).mkpath(QLatin1String(pName));
    }
    if (!WriteFile(c_strFolder + u"/cupsd.conf"_s, c_configuration) ||
        !WriteFile(c_strFolder + u"/cups-files.conf"_s, c_files) || !WriteFile(c_strDocument, "a page\n") ||
        !WriteFile(c_strBackend, "#!/bin/sh\nexec sleep infinity\n")) {
        return false;
    }
    // Readable and executable for all, which the server insists on, and started by a program of its own.
    QFile::setPermissions(c_strBackend, QFile::Permissions(0x5555));
    QFile::link(u"/usr/lib/cups/daemon"_s, c_strFolder + u"/bin/daemon"_s);

    m_process.start(ServerProgram(u"cupsd"_s),
                    {u"-f"_s, u"-c"_s, c_strFolder + u"/cupsd.conf"_s, u"-s"_s, c_strFolder + u"/cups-files.conf"_s});
    return QTest::qWaitFor(
        [] { return Desktop::Run(u"lpstat"_s, {u"-r"_s}) == QLatin1String("scheduler is running\n"); });
}

bool PrintServer::AddQueue(const QString& strQueue, enQueue enKind)
{
    const QString strUri = enKind == enQueuePrinting ? u"endless:/printer"_s : u"file:/dev/null"_s;
    QStringList listArgument = {u"-p"_s, strQueue, u"-v"_s, strUri,
                                u"-m"_s, u"raw"_s, u"-o"_s, u"printer-is-accepting-jobs=true"_s};
    if (enKind == enQueuePrinting) {
        listArgument.append(u"-E"_s);
    }
    QProcess process;
    process.start(ServerProgram(u"lpadmin"_s), listArgument);
    return process.waitForFinished() && process.exitCode() == 0;
}

int PrintServer::AddJob(const QString& strQueue)
{
    const QString strAnswer = Desktop::Run(u"lp"_s, {u"-d"_s, strQueue, c_strDocument});
    static const QRegularExpression c_number(u"^request id is .*-(\\d+) \\(1 file"_s);
    return c_number.match(strAnswer).captured(1).toInt();
}

QList<int> PrintServer::Jobs() const
{
    static const QRegularExpression c_number(u"^\\S+-(\\d+) "_s, QRegularExpression::MultilineOption);
    QList<int> listJob;
    QRegularExpressionMatchIterator match = c_number.globalMatch(Desktop::Run(u"lpstat"_s, {u"-o"_s}));
    while (match.hasNext()) {
        listJob.append(match.next().captured(1).toInt());
    }
    std::sort(listJob.begin(), listJob.end());
    return listJob;
}

bool PrintServer::IsPrinting(const QString& strQueue, int iJob) const
{
    return Desktop::Run(u"lpstat"_s, {u"-p"_s}).contains(u"printer %1 now printing %1-%2."_s.arg(strQueue).arg(iJob));
}

void PrintServer::Halt()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGSTOP);
}

void PrintServer::Continue()
{
    ::kill(static_cast<pid_t>(m_process.processId()), SIGCONT);
}

void PrintServer::Kill()
{
    m_process.kill();
    m_process.waitForFinished();
}
