// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "DriverFolder.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "ProcessFigures.h"

#include <QFile>
#include <QThread>

#include <algorithm>

namespace {

/// A program under strace, which leaves it the process number that it has without.
class TracedProcess
{
public:
    TracedProcess(const QString& strProgram, const QStringList& listArgument, const QString& strTracePath)
        : m_trace(strTracePath)
        , m_process(QStringLiteral("strace"),
                    QStringList{QStringLiteral("-D"), QStringLiteral("-f"), QStringLiteral("-qq"), QStringLiteral("-o"),
                                strTracePath, strProgram} +
                        listArgument)
    {
        m_process.WaitUntilIdle(500);
        if (!m_trace.open(QIODevice::ReadOnly)) {
            qFatal("no output of strace");
        }
        m_trace.seek(m_trace.size());
    }

    pid_t Pid() const { return m_process.Pid(); }

    /// What its threads have called since it was idle, each line with the thread's number; a call that is resumed
    /// stands there once.
    QByteArrayList Calls()
    {
        QByteArrayList listCall = m_trace.readAll().split('\n');
        listCall.removeLast(); // half a line, or nothing
        listCall.erase(std::remove_if(listCall.begin(), listCall.end(),
                                      [](const QByteArray& line) { return line.contains(" resumed>"); }),
                       listCall.end());
        return listCall;
    }

private:
    QFile m_trace;
    MeasuredProcess m_process;
};

QByteArrayList CallsOf(pid_t thread, const QByteArrayList& listCall)
{
    const QByteArray prefix = QByteArray::number(thread) + ' ';
    QByteArrayList listOwn;
    for (const QByteArray& line : listCall) {
        if (line.startsWith(prefix)) {
            listOwn.append(line);
        }
    }
    return listOwn;
}

/// The greatest number of calls from one that begins a round, by a call on the file for its status, to the next.
double CallsPerRound(const QByteArrayList& listCall, const QString& strPath)
{
    const QByteArray path = '"' + QFile::encodeName(strPath) + '"';
    int iRounds = 0;
    int iCalls = 0;
    int iMost = 0;
    QByteArray previous;
    for (const QByteArray& line : listCall) {
        if (line.contains(path) && !previous.contains(path)) { // a round may ask more than once
            iMost = iRounds > 0 ? std::max(iMost, iCalls) : 0;
            ++iRounds;
            iCalls = 0;
        }
        ++iCalls;
        previous = line;
    }
    if (iRounds < 2) {
        qFatal("no two rounds on %s", path.constData());
    }
    return iMost;
}

bool IsOpening(const QByteArray& line)
{
    return line.contains(" open");
}

} // namespace

void BenchSystemCalls(const BenchOptions& options, Figures& figures)
{
    WriteBenchPrinters(1);
    const DriverFolder folder(c_strCfgPath);
    const QString strStatusPath = folder.StatusPath(BenchPrinterName(0));
    TracedProcess floor(QStringLiteral(VORA_STAT_THREADS), {strStatusPath}, QStringLiteral("/tmp/floor-calls.txt"));
    TracedProcess tool(QStringLiteral(VORA_TOOL), {}, QStringLiteral("/tmp/tool-calls.txt"));
    const pid_t poller = ThreadOf(tool.Pid(), "vora-status-0");
    const pid_t lister = ThreadOf(tool.Pid(), "vora-devices");
    QThread::msleep(static_cast<unsigned long>(options.FullOrQuick(20000, 6500))); // two list passes at least
    const double dFloor = CallsPerRound(floor.Calls(), strStatusPath);
    const QByteArrayList listCall = tool.Calls();

    figures.Add({QStringLiteral("calls-poll"), QStringLiteral("system calls of an idle poll, its two sleeps included"),
                 QString(), CallsPerRound(CallsOf(poller, listCall), strStatusPath), dFloor,
                 stBudget{stBudget::enExcess, 0}});

    const QByteArrayList listListCall = CallsOf(lister, listCall);
    figures.Add({QStringLiteral("calls-list"),
                 QStringLiteral("system calls of an unchanged list pass, its six sleeps included"),
                 QString(),
                 CallsPerRound(listListCall, folder.ListPath()),
                 {},
                 {}});
    figures.Add({QStringLiteral("list-opened"),
                 QStringLiteral("files that unchanged list passes opened"),
                 QString(),
                 static_cast<double>(std::count_if(listListCall.begin(), listListCall.end(), IsOpening)),
                 {},
                 stBudget{stBudget::enValue, 0}});
}
