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

    void Take(bool bQuick, const char* pProgram, const QStringList& listArgument = {})
    {
        MeasuredProcess process(QString::fromLocal8Bit(pProgram), listArgument);
        const stStart start = process.WaitUntilIdle(bQuick ? 150 : 1000);
        cpuMSec.push_back(start.dCpuMSec);
        wallMSec.push_back(start.dWallMSec);
        memoryMB.push_back(PssMB(process.Pid()));
        const double dOwnMSec = CpuMSec(process.Pid());
        childrenMSec.push_back(process.Kill() - dOwnMSec);
    }
};

} // namespace

void BenchStart(bool bQuick)
{
    WriteBenchPrinters(c_iFewPrinters);
    stStarts tool;
    stStarts floor;
    TakeInTurns(bQuick ? 1 : 20, {[&] { tool.Take(bQuick, VORA_TOOL); },
                                  [&] { floor.Take(bQuick, VORA_EMPTY_TRAY, {QStringLiteral(VORA_ICON)}); }});
    PrintFigure(enStartCpu, tool.cpuMSec, floor.cpuMSec);
    PrintFigure(enStartChildren, tool.childrenMSec);
    PrintFigure(enStartWall, tool.wallMSec, floor.wallMSec);
    PrintFigure(enMemory, tool.memoryMB, floor.memoryMB);
}

void BenchScale(bool bQuick)
{
    const int iPrinters = bQuick ? 30 : 1000;
    stStarts few;
    stStarts many;
    const auto take = [bQuick](int iCount, stStarts& starts) {
        WriteBenchPrinters(iCount);
        starts.Take(bQuick, VORA_TOOL);
    };
    TakeInTurns(bQuick ? 1 : 6, {[&] { take(c_iFewPrinters, few); }, [&] { take(iPrinters, many); }});
    PrintFigure(enManyWall, many.wallMSec);
    Samples kBPerPrinter;
    for (std::size_t i = 0; i < many.memoryMB.size(); ++i) {
        kBPerPrinter.push_back((many.memoryMB[i] - few.memoryMB[i]) * 1024 / (iPrinters - c_iFewPrinters));
    }
    PrintFigure(enMemoryPerPrinter, kBPerPrinter);
}
