// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UnitBenchmarks.h"

#include "BenchOptions.h"
#include "Figures.h"
#include "PrinterCommon.h"
#include "Sampling.h"
#include "ThreadCpu.h"
#include "UtilLog.h"

#include <QDir>
#include <QFile>

#include <cstdlib>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int c_iThreads = 50;

void WriteLine()
{
    WriteStringLog(__FILE__, __LINE__, __func__, QStringLiteral("%s"), "Office: strFWVersion=2.14.03.20260918");
}

/// The system calls that a line costs as long as nothing is kept open between two lines.
void OpenWriteClose()
{
    static const QByteArray s_path = QFile::encodeName(c_strToolPath + QStringLiteral("floor.log"));
    static const QByteArray s_line(120, 'x');
    struct stat status = {};
    (void)::stat(s_path.constData(), &status);
    const int iFd = ::open(s_path.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (iFd < 0 || ::write(iFd, s_line.constData(), static_cast<std::size_t>(s_line.size())) != s_line.size()) {
        qFatal("cannot write a line");
    }
    ::close(iFd);
}

int LinesInLogs()
{
    int iLines = 0;
    const QDir folder(c_strToolPath);
    const QStringList listName = folder.entryList({QStringLiteral("log_tool_*.log")});
    for (const QString& strName : listName) {
        QFile file(folder.filePath(strName));
        if (file.open(QIODevice::ReadOnly)) {
            iLines += static_cast<int>(file.readAll().count('\n'));
        }
    }
    return iLines;
}

/// Lines that are missing, or more than were written, as if they had been cut in two.
int LostLines(int iLinesPerThread)
{
    std::vector<std::thread> listThread;
    listThread.reserve(c_iThreads);
    for (int i = 0; i < c_iThreads; ++i) {
        listThread.emplace_back([iLinesPerThread] {
            for (int iLine = 0; iLine < iLinesPerThread; ++iLine) {
                WriteLine();
            }
        });
    }
    for (std::thread& thread : listThread) {
        thread.join();
    }
    return std::abs(c_iThreads * iLinesPerThread - LinesInLogs());
}

} // namespace

void BenchLog(const BenchOptions& options, Figures& figures)
{
    const int iLines = options.FullOrQuick(2000, 20);
    SetLogEnable(true);
    const stPair pair = MedianPair(
        options.m_iRuns, [&] { return CpuUSecOf(iLines, WriteLine); },
        [&] { return CpuUSecOf(iLines, OpenWriteClose); });
    figures.Add({QStringLiteral("log-line"), QStringLiteral("one log line, log on"), QStringLiteral("µs"), pair.dValue,
                 pair.dFloor, stBudget{stBudget::enValue, 25}});

    QDir(c_strToolPath).removeRecursively();
    SetLogEnable(true);
    figures.Add({QStringLiteral("log-lost"),
                 QStringLiteral("log lines lost, 50 threads writing"),
                 QString(),
                 static_cast<double>(LostLines(options.FullOrQuick(400, 10))),
                 {},
                 stBudget{stBudget::enValue, 0}});
    SetLogEnable(false);
}
