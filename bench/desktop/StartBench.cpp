// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "Sampling.h"
#include "Tool.h"

#include <cstdlib>

namespace {

const QString c_strTool = QStringLiteral(VORA_TOOL);
const QString c_strEmptyTray = QStringLiteral(VORA_EMPTY_TRAY);

constexpr int c_iCpuPrinters = 10;
constexpr int c_iWallPrinters = 20;

double ProcessListMSec()
{
    QElapsedTimer timer;
    timer.start();
    if (std::system("ps -A | grep VoraPrinterTool > /tmp/pslist.tmp") == -1) {
        qFatal("cannot list the processes");
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

/// That a program which has become idle shows what it should: the wall time is that of a complete table.
void CheckTable(int iQuietMSec)
{
    Tool tool;
    QElapsedTimer sinceStart;
    sinceStart.start();
    tool.Start();
    WaitUntilIdle(static_cast<pid_t>(tool.Process().processId()), sinceStart, iQuietMSec);
    for (int i = 0; i < c_iWallPrinters; ++i) {
        WaitUntil([&] { return tool.Cell(i, 3) == u"就绪"_s; }, "a complete table");
    }
}

} // namespace

void BenchStart(const BenchOptions& options, Figures& figures)
{
    const int iQuietMSec = options.FullOrQuick(1000, 150);
    const auto start = [&](const QString& strProgram, const QStringList& listArgument = {}) {
        return MeasuredProcess(strProgram, listArgument).WaitUntilIdle(iQuietMSec);
    };

    WriteBenchPrinters(c_iCpuPrinters);
    const stPair cpu = MedianPair(
        options.m_iRuns, [&] { return start(c_strTool).dCpuMSec; }, [&] { return start(c_strEmptyTray).dCpuMSec; });
    figures.Add({u"start-cpu"_s, u"start, CPU time until idle, 10 printers"_s, u"ms"_s, cpu.dValue, cpu.dFloor,
                 stBudget{stBudget::enRatio, 1.25}});

    const stPair dressed = MedianPair(
        options.m_iRuns, [&] { return start(c_strTool).dCpuMSec; },
        [&] { return start(c_strEmptyTray, {QStringLiteral(VORA_ICON)}).dCpuMSec; });
    figures.Add({u"start-cpu-dressed"_s,
                 u"the same beside an empty program with the same icon and texts"_s,
                 u"ms"_s,
                 dressed.dValue,
                 dressed.dFloor,
                 {}});

    const double dProcessList = MedianOf(options.m_iRuns, ProcessListMSec);
    figures.Add(
        {u"process-list"_s, u"the start's process-list command alone, wall time"_s, u"ms"_s, dProcessList, {}, {}});

    WriteBenchPrinters(c_iWallPrinters);
    CheckTable(iQuietMSec);
    const stPair wall = MedianPair(
        options.m_iRuns, [&] { return start(c_strTool).dWallMSec; }, [&] { return start(c_strEmptyTray).dWallMSec; });
    figures.Add({u"start-wall"_s, u"start, wall time until the table is complete, 20 printers"_s, u"ms"_s, wall.dValue,
                 wall.dFloor, stBudget{stBudget::enExcess, 1100}});
    figures.Add({u"start-wall-rest"_s, u"the same without the process-list command"_s, u"ms"_s,
                 wall.dValue - dProcessList, wall.dFloor, stBudget{stBudget::enExcess, 50}});
}
