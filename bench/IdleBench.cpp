// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"

#include "BenchPrinters.h"
#include "DriverFolder.h"
#include "Figures.h"
#include "MeasuredProcess.h"

#include <QThread>

namespace {

/// What the tool watches: the printer list and a status file for each printer.
QStringList WatchedPaths(int iCount)
{
    const DriverFolder folder(c_strCfgPath);
    QStringList listPath{folder.ListPath()};
    for (int i = 0; i < iCount; ++i) {
        listPath.append(folder.StatusPath(BenchPrinterName(i)));
    }
    return listPath;
}

/// The tool and its floor over the same time.
void BenchIdlePrinters(enFigure enMeasured, int iPrinters, bool bQuick)
{
    WriteBenchPrinters(iPrinters);
    const MeasuredProcess tool(QStringLiteral(VORA_TOOL));
    const MeasuredProcess floor(QStringLiteral(VORA_STAT_THREADS), WatchedPaths(iPrinters));
    tool.WaitUntilIdle(bQuick ? 150 : 2000);

    const unsigned long dwWindowMSec = bQuick ? 500 : 6000; // a multiple of what the list worker waits
    const double dPrinterSeconds = iPrinters * static_cast<double>(dwWindowMSec) / 1e3;
    Samples toolUSec;
    Samples floorUSec;
    for (int i = 0; i < (bQuick ? 1 : 10); ++i) {
        const double dTool = CpuMSec(tool.Pid());
        const double dFloor = CpuMSec(floor.Pid());
        QThread::msleep(dwWindowMSec);
        toolUSec.push_back((CpuMSec(tool.Pid()) - dTool) * 1e3 / dPrinterSeconds);
        floorUSec.push_back((CpuMSec(floor.Pid()) - dFloor) * 1e3 / dPrinterSeconds);
    }
    PrintFigure(enMeasured, toolUSec, floorUSec);
}

} // namespace

void BenchIdle(bool bQuick)
{
    BenchIdlePrinters(enIdleFew, bQuick ? 1 : 10, bQuick);
    BenchIdlePrinters(enIdleMany, bQuick ? 20 : 1000, bQuick);
}
