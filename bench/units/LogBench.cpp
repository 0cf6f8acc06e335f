// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UnitBenchmarks.h"

#include "BenchOptions.h"
#include "Figures.h"
#include "PrinterCommon.h"
#include "Sampling.h"
#include "ThreadCpu.h"
#include "UtilLog.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void WriteLine()
{
    WriteStringLog(__FILE__, __LINE__, __func__, u"%s"_s, "Office: strFWVersion=2.14.03.20260918");
}

/// The system calls that a line costs as long as nothing is kept open between two lines.
void OpenWriteClose()
{
    static const QByteArray s_path = QFile::encodeName(c_strToolPath + u"floor.log"_s);
    static const QByteArray s_line(120, 'x');
    struct stat status = {};
    (void)::stat(s_path.constData(), &status);
    const int iFd = ::open(s_path.constData(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (iFd < 0 || ::write(iFd, s_line.constData(), static_cast<std::size_t>(s_line.size())) != s_line.size()) {
        qFatal("cannot write a line");
    }
    ::close(iFd);
}

} // namespace

void BenchLog(const BenchOptions& options, Figures& figures)
{
    const int iLines = options.FullOrQuick(2000, 20);
    SetLogEnable(true);
    const stPair pair = MedianPair(
        options.m_iRuns, [&] { return CpuUSecOf(iLines, WriteLine); },
        [&] { return CpuUSecOf(iLines, OpenWriteClose); });
    figures.Add(
        {u"log-line"_s, u"one log line, log on"_s, u"µs"_s, pair.dValue, pair.dFloor, stBudget{stBudget::enValue, 25}});
    SetLogEnable(false);
}
