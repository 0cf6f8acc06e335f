// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"

#include "BenchPrinters.h"
#include "Figures.h"
#include "MeasuredProcess.h"

namespace {

constexpr int c_iFewPrinters = 10; // as the empty program shows

struct stStarts
{
    Samples cpuMSec;
    Samples childrenMSec;
    Samples wallMSec;
    Samples memoryMB;

    void Take(const QString& strProgram, const QStringList& listArgument, bool bQuick)
    {
        MeasuredProcess process(strProgram, listArgument);
        const stStart start = process.WaitUntilIdle(bQuick ? 150 : 1000);
        cpuMSec.push_back(start.dCpuMSec);
        wallMSec.push_back(start.dWallMSec);
        memoryMB.push_back(PssMB(process.Pid()));
        const double dOwnMSec = CpuMSec(process.Pid());
        childrenMSec.push_back(process.Kill() - dOwnMSec);
    }
};

stStarts TakeStarts(int iPrinters, int iRuns, bool bQuick)
{
    WriteBenchPrinters(iPrinters);
    stStarts starts;
    for (int i = 0; i < iRuns; ++i) {
        starts.Take(QStringLiteral(VORA_TOOL), {}, bQuick);
    }
    return starts;
}

} // namespace

void BenchStart(bool bQuick)
{
    WriteBenchPrinters(c_iFewPrinters);
    stStarts tool;
    stStarts floor;
    TakeInTurns(bQuick ? 1 : 20,
                {[&] { tool.Take(QStringLiteral(VORA_TOOL), {}, bQuick); },
                 [&] { floor.Take(QStringLiteral(VORA_EMPTY_TRAY), {QStringLiteral(VORA_ICON)}, bQuick); }});
    PrintFigure(enStartCpu, tool.cpuMSec, floor.cpuMSec);
    PrintFigure(enStartChildren, tool.childrenMSec);
    PrintFigure(enStartWall, tool.wallMSec, floor.wallMSec);
    PrintFigure(enMemory, tool.memoryMB, floor.memoryMB);
}

void BenchScale(bool bQuick)
{
    const int iPrinters = bQuick ? 30 : 1000;
    const int iRuns = bQuick ? 1 : 6;
    const double dFewMB = Median(TakeStarts(c_iFewPrinters, iRuns, bQuick).memoryMB);
    const stStarts many = TakeStarts(iPrinters, iRuns, bQuick);
    PrintFigure(enManyWall, many.wallMSec);
    Samples kBPerPrinter;
    for (const double dMB : many.memoryMB) {
        kBPerPrinter.push_back((dMB - dFewMB) * 1024 / (iPrinters - c_iFewPrinters));
    }
    PrintFigure(enMemoryPerPrinter, kBPerPrinter);
}
