// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "Sampling.h"
#include "Tool.h"
#include "TrayHost.h"

namespace {

double ExitSeconds(int iQuietMSec)
{
    Tool tool;
    QElapsedTimer timer;
    timer.start();
    tool.Start();
    WaitUntilIdle(static_cast<pid_t>(tool.Process().processId()), timer, iQuietMSec);
    const TrayHost tray(TrayHost::enTint2);
    WaitUntil([&] { return tray.HasIcon(tool); }, "a tray icon");
    if (!tray.OpenMenu(tool)) {
        qFatal("no tray menu");
    }
    const Desktop::Window menu = *tray.Menu(tool);
    timer.start();
    Desktop::Click(menu, {menu.geometry.width() / 2, menu.geometry.height() * 7 / 8});
    if (!tool.Process().waitForFinished() || tool.Process().exitStatus() != QProcess::NormalExit ||
        tool.Process().exitCode() != 0) {
        qFatal("no clean exit");
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e9;
}

} // namespace

void BenchExit(const BenchOptions& options, Figures& figures)
{
    const int iPrinters = options.FullOrQuick(1000, 20);
    WriteBenchPrinters(iPrinters);
    figures.Add({u"exit"_s,
                 u"exit with %1 printers"_s.arg(iPrinters),
                 u"s"_s,
                 MedianOf(options.m_iRuns, [&] { return ExitSeconds(options.FullOrQuick(2000, 150)); }),
                 {},
                 stBudget{stBudget::enValue, 0.8}});
}
