// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Desktop.h"
#include "TestFiles.h"

#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

#include <algorithm>
#include <csignal>

/// A print server of the test's own, without queues at first; its jobs are numbered from 1. Killed with this object.
class PrintServer
{
public:
    /// Programs that start after this find the server, and this one the server's programs and what they answer.
    PrintServer()
    {
        qputenv("LC_ALL", "C.UTF-8");
        qputenv("CUPS_SERVER", QFile::encodeName(m_strFolder + u"/socket"_s));
        qputenv("PATH", qgetenv("PATH") + ":/usr/sbin");
    }
    ~PrintServer() { Kill(); }

    /// Starts the server and waits until it answers.
    bool Start()
    {
        QDir(m_strFolder).removeRecursively();
        for (const char* pName : {"cache", "spool/tmp", "bin/backend", "root", "state"}) {
            QDir(m_strFolder).mkpath(QLatin1String(pName));
        }
        const QString strConfiguration = QStringLiteral(VORA_PRINT_SERVER "/");
        const QString strBackend = m_strFolder + u"/bin/backend/endless"_s;
        QFile::copy(strConfiguration + u"endless"_s, strBackend);
        QFile::setPermissions(strBackend, QFile::Permissions(0x5555)); // the server insists on it
        QFile::link(u"/usr/lib/cups/daemon"_s, m_strFolder + u"/bin/daemon"_s);
        m_process.start(u"cupsd"_s, {u"-f"_s, u"-c"_s, strConfiguration + u"cupsd.conf"_s, u"-s"_s,
                                     strConfiguration + u"cups-files.conf"_s});
        const auto answers = [] { return Desktop::Run(u"lpstat"_s, {u"-r"_s}) == u"scheduler is running\n"_s; };
        return WriteFile(m_strDocument, "a page\n") && QTest::qWaitFor(answers);
    }

    /// A stopped one, whose jobs wait for ever.
    bool AddQueue(const QString& strQueue) const { return Add(strQueue, u"file:/dev/null"_s, {}); }

    /// One whose jobs are printed one by one, each without end.
    bool AddPrintingQueue(const QString& strQueue) const { return Add(strQueue, u"endless:/printer"_s, {u"-E"_s}); }

    /// Gives a queue a job and returns the job's number, 0 when the server does not take it.
    int AddJob(const QString& strQueue) const
    {
        const QString strAnswer = Desktop::Run(u"lp"_s, {u"-d"_s, strQueue, m_strDocument});
        static const QRegularExpression c_number(u"^request id is .*-(\\d+) \\(1 file"_s);
        return c_number.match(strAnswer).captured(1).toInt();
    }

    /// The numbers of the jobs of all queues that have not ended, in rising order.
    QList<int> Jobs() const
    {
        QList<int> listJob;
        const QStringList listLine = Desktop::Run(u"lpstat"_s, {u"-o"_s}).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        for (const QString& strLine : listLine) { // "Queue-7   user   size ..."
            listJob.append(strLine.section(QLatin1Char(' '), 0, 0).section(QLatin1Char('-'), -1).toInt());
        }
        std::sort(listJob.begin(), listJob.end());
        return listJob;
    }

    /// SIGSTOP makes it take connections and never answer.
    void Signal(int iSignal) const { ::kill(static_cast<pid_t>(m_process.processId()), iSignal); }

    void Kill()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    static bool Add(const QString& strQueue, const QString& strUri, const QStringList& listOption)
    {
        const QStringList listArgument = {u"-p"_s, strQueue, u"-v"_s, strUri,
                                          u"-m"_s, u"raw"_s, u"-o"_s, u"printer-is-accepting-jobs=true"_s};
        return QProcess::execute(u"lpadmin"_s, listArgument + listOption) == 0;
    }

    const QString m_strFolder = u"/tmp/print-server"_s;
    const QString m_strDocument = m_strFolder + u"/document"_s;
    QProcess m_process;
};
