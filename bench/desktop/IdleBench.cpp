// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "DriverFolder.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "ProcessFigures.h"
#include "Sampling.h"

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

/// CPU time so far of the two programs and of the one's list worker, microseconds.
struct stIdleSample
{
    double dTool;
    double dFloor;
    double dListWorker;
};

void BenchIdlePrinters(const BenchOptions& options, Figures& figures, int iPrinters)
{
    WriteBenchPrinters(iPrinters);
    const MeasuredProcess tool(QStringLiteral(VORA_TOOL));
    const MeasuredProcess floor(QStringLiteral(VORA_STAT_THREADS), WatchedPaths(iPrinters));
    tool.WaitUntilIdle(options.FullOrQuick(2000, 150));
    const pid_t listWorker = ThreadOf(tool.Pid(), "vora-devices");
    const auto read = [&]() -> stIdleSample {
        return {CpuMSec(tool.Pid()) * 1e3, CpuMSec(floor.Pid()) * 1e3,
                static_cast<double>(ThreadCpuNSec(tool.Pid(), listWorker)) / 1e3};
    };

    const int iSampleMSec = options.FullOrQuick(6000, 500); // a multiple of what the list worker waits
    const double dPrinterSeconds = iPrinters * iSampleMSec / 1e3;
    std::vector<double> listTool;
    std::vector<double> listFloor;
    std::vector<double> listListWorker;
    for (int i = 0; i < options.m_iRuns; ++i) {
        const stIdleSample before = read();
        QThread::msleep(static_cast<unsigned long>(iSampleMSec));
        const stIdleSample after = read();
        listTool.push_back((after.dTool - before.dTool) / dPrinterSeconds);
        listFloor.push_back((after.dFloor - before.dFloor) / dPrinterSeconds);
        listListWorker.push_back((after.dListWorker - before.dListWorker) / dPrinterSeconds);
    }
    const QString strName = u"idle-%1"_s.arg(iPrinters);
    figures.Add({strName, u"idle CPU per printer and second, %1 printers"_s.arg(iPrinters), u"µs"_s, Median(listTool),
                 Median(listFloor), stBudget{stBudget::enRatio, 1.3}});
    figures.Add({strName + u"-list"_s, u"of which the list worker"_s, u"µs"_s, Median(listListWorker), {}, {}});
}

/// Of the tool and of the empty program over the same time: what the desktop sends wakes both.
stPair WakeUps(const QStringList& listArgument, const BenchOptions& options)
{
    const MeasuredProcess floor(QStringLiteral(VORA_EMPTY_TRAY));
    const MeasuredProcess tool(QStringLiteral(VORA_TOOL), listArgument);
    const int iQuietMSec = options.FullOrQuick(2000, 150);
    floor.WaitUntilIdle(iQuietMSec);
    tool.WaitUntilIdle(iQuietMSec);
    // Half a minute after the last painting Qt clears its pixmap cache.
    QThread::msleep(static_cast<unsigned long>(options.FullOrQuick(35000, 0)));
    const qint64 iFloorBefore = MainThreadWaits(floor.Pid());
    const qint64 iToolBefore = MainThreadWaits(tool.Pid());
    QThread::msleep(static_cast<unsigned long>(options.FullOrQuick(60000, 500)));
    return {static_cast<double>(MainThreadWaits(tool.Pid()) - iToolBefore),
            static_cast<double>(MainThreadWaits(floor.Pid()) - iFloorBefore)};
}

} // namespace

void BenchIdle(const BenchOptions& options, Figures& figures)
{
    for (const int iPrinters :
         {options.FullOrQuick(10, 1), options.FullOrQuick(200, 10), options.FullOrQuick(1000, 20)}) {
        BenchIdlePrinters(options, figures, iPrinters);
    }
}

void BenchWakeUps(const BenchOptions& options, Figures& figures)
{
    WriteBenchPrinters(10);
    const stPair shown = WakeUps({}, options);
    figures.Add({u"wake-ups-shown"_s, u"wake-ups of the GUI thread in 60 s, window shown"_s, QString(), shown.dValue,
                 shown.dFloor, stBudget{stBudget::enValue, 0}});
    const stPair hidden = WakeUps({u"-hide"_s}, options);
    figures.Add({u"wake-ups-hidden"_s, u"wake-ups of the GUI thread in 60 s, window hidden"_s, QString(), hidden.dValue,
                 hidden.dFloor, stBudget{stBudget::enValue, 0}});
}
