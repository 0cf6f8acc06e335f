// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"

#include "BenchPrinters.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "Tool.h"
#include "TrayHost.h"

namespace {

double ExitSeconds(bool bQuick)
{
    Tool tool;
    QElapsedTimer timer;
    timer.start();
    tool.Start();
    WaitUntilIdle(static_cast<pid_t>(tool.Process().processId()), timer, bQuick ? 150 : 1000);
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

void BenchExit(bool bQuick)
{
    qputenv("VORA_REAL_TIME", "1"); // the workers' pauses are most of it
    const int iPrinters = bQuick ? 20 : 1000;
    WriteBenchPrinters(iPrinters);
    Samples seconds;
    TakeInTurns(bQuick ? 1 : 10, {[&] { seconds.push_back(ExitSeconds(bQuick)); }});
    PrintFigure(enExit, seconds);
}
