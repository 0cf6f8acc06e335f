// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UnitBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "Figures.h"
#include "Sampling.h"
#include "ShownWindow.h"
#include "ThreadCpu.h"

#include <QElapsedTimer>
#include <QTimer>

#include <algorithm>

namespace {

/// What a status worker does before it reports. The row is one of the few that are in sight.
void ChangeState(VoraPrinterToolWidget& window, int iIndex)
{
    const std::lock_guard lock(g_mutexPrinterList);
    stPrinterState& state = window.m_listPrinterManager[iIndex].printerState;
    const bool bReady = state.enCurrentStatus == enStatusReady;
    state.enCurrentStatus = bReady ? enStatusBusy : enStatusReady;
    state.dwBlackInkRemainer = bReady ? 20 : 90;
}

double LongestSilenceMSec(int iPrinters)
{
    WriteBenchPrinters(0);
    ShownWindow window;
    double dLongest = 0;
    QElapsedTimer sinceTick;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] {
        dLongest = std::max(dLongest, static_cast<double>(sinceTick.nsecsElapsed()) / 1e6);
        sinceTick.start();
    });
    window.WaitForReadyPrinters(0);
    WriteBenchPrinters(iPrinters);
    sinceTick.start();
    timer.start(1);
    window.WaitForReadyPrinters(iPrinters);
    return dLongest;
}

} // namespace

void BenchStatusReport(const BenchOptions& options, Figures& figures)
{
    constexpr int c_iPrinters = 5;
    WriteBenchPrinters(c_iPrinters);
    ShownWindow window;
    window.WaitForReadyPrinters(c_iPrinters);
    const int iReports = options.FullOrQuick(500, 10);
    int iRow = 0;
    const auto report = [&] {
        iRow = (iRow + 1) % c_iPrinters;
        ChangeState(window.m_widget, iRow);
        window.m_widget.SlotUpdatePrinterStatus(iRow);
    };
    figures.Add({u"status-report"_s,
                 u"one status report into the table, window shown"_s,
                 u"µs"_s,
                 MedianOf(options.m_iRuns, [&] { return CpuUSecOf(iReports, report); }),
                 {},
                 stBudget{stBudget::enValue, 100}});

    const auto reportAndPaint = [&] {
        report();
        window.WaitForPaint();
    };
    figures.Add({u"status-report-painted"_s,
                 u"the same and its painting, one by one"_s,
                 u"µs"_s,
                 MedianOf(options.m_iRuns, [&] { return CpuUSecOf(iReports, reportAndPaint); }),
                 {},
                 {}});
}

void BenchListReport(const BenchOptions& options, Figures& figures)
{
    const int iPrinters = options.FullOrQuick(1000, 20);
    WriteBenchPrinters(iPrinters);
    ShownWindow window;
    window.WaitForReadyPrinters(iPrinters);
    const auto reportAndPaint = [&] {
        window.m_widget.SlotUpdatePrinterList();
        window.WaitForPaint();
    };
    figures.Add({u"list-report"_s,
                 u"list report of %1 printers into the table, painting included"_s.arg(iPrinters),
                 u"ms"_s,
                 MedianOf(options.m_iRuns, [&] { return CpuUSecOf(1, reportAndPaint) / 1000; }),
                 {},
                 stBudget{stBudget::enValue, 30}});
}

void BenchWorkerStart(const BenchOptions& options, Figures& figures)
{
    const int iPrinters = options.FullOrQuick(1000, 20);
    figures.Add({u"worker-start"_s,
                 u"longest silence of the window while %1 workers start"_s.arg(iPrinters),
                 u"ms"_s,
                 MedianOf(options.m_iRuns, [&] { return LongestSilenceMSec(iPrinters); }),
                 {},
                 stBudget{stBudget::enValue, 100}});
}
