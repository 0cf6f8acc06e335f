// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrintServer.h"

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
const QString c_strDocument = c_strFolder + QStringLiteral("/document");
const QString c_strBackend = c_strFolder + QStringLiteral("/bin/backend/endless");

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
    return strPath.isEmpty() ? QStringLiteral("/usr/sbin/") + strName : strPath;
}

} // namespace

QString PrintServer::Address()
{
    return c_strFolder + QStringLiteral("/socket");
}

bool PrintServer::Start()
{
    QDir(c_strFolder).removeRecursively();
    for (const char* pName : {"cache", "spool/tmp", "bin/backend", "root", "state"}) {
        QDir(c_strFolder).mkpath(QLatin1String(pName));
    }
    if (!WriteFile(c_strFolder + QStringLiteral("/cupsd.conf"), c_configuration) ||
        !WriteFile(c_strFolder + QStringLiteral("/cups-files.conf"), c_files) ||
        !WriteFile(c_strDocument, "a page\n") || !WriteFile(c_strBackend, "#!/bin/sh\nexec sleep infinity\n")) {
        return false;
    }
    // Readable and executable for all, which the server insists on, and started by a program of its own.
    QFile::setPermissions(c_strBackend, QFile::Permissions(0x5555));
    QFile::link(QStringLiteral("/usr/lib/cups/daemon"), c_strFolder + QStringLiteral("/bin/daemon"));

    m_process.start(ServerProgram(QStringLiteral("cupsd")),
                    {QStringLiteral("-f"), QStringLiteral("-c"), c_strFolder + QStringLiteral("/cupsd.conf"),
                     QStringLiteral("-s"), c_strFolder + QStringLiteral("/cups-files.conf")});
    return QTest::qWaitFor([] {
        return Desktop::Run(QStringLiteral("lpstat"), {QStringLiteral("-r")}) ==
               QLatin1String("scheduler is running\n");
    });
}

bool PrintServer::AddQueue(const QString& strQueue, enQueue enKind)
{
    const QString strUri =
        enKind == enQueuePrinting ? QStringLiteral("endless:/printer") : QStringLiteral("file:/dev/null");
    QStringList listArgument = {QStringLiteral("-p"), strQueue,
                                QStringLiteral("-v"), strUri,
                                QStringLiteral("-m"), QStringLiteral("raw"),
                                QStringLiteral("-o"), QStringLiteral("printer-is-accepting-jobs=true")};
    if (enKind == enQueuePrinting) {
        listArgument.append(QStringLiteral("-E"));
    }
    QProcess process;
    process.start(ServerProgram(QStringLiteral("lpadmin")), listArgument);
    return process.waitForFinished() && process.exitCode() == 0;
}

int PrintServer::AddJob(const QString& strQueue)
{
    const QString strAnswer = Desktop::Run(QStringLiteral("lp"), {QStringLiteral("-d"), strQueue, c_strDocument});
    static const QRegularExpression c_number(QStringLiteral("^request id is .*-(\\d+) \\(1 file"));
    return c_number.match(strAnswer).captured(1).toInt();
}

QList<int> PrintServer::Jobs() const
{
    static const QRegularExpression c_number(QStringLiteral("^\\S+-(\\d+) "), QRegularExpression::MultilineOption);
    QList<int> listJob;
    QRegularExpressionMatchIterator match =
        c_number.globalMatch(Desktop::Run(QStringLiteral("lpstat"), {QStringLiteral("-o")}));
    while (match.hasNext()) {
        listJob.append(match.next().captured(1).toInt());
    }
    std::sort(listJob.begin(), listJob.end());
    return listJob;
}

bool PrintServer::IsPrinting(const QString& strQueue, int iJob) const
{
    return Desktop::Run(QStringLiteral("lpstat"), {QStringLiteral("-p")})
        .contains(QStringLiteral("printer %1 now printing %1-%2.").arg(strQueue).arg(iJob));
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
