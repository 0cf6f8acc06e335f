// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the built programs take, seen from outside on a virtual desktop.

#include "Benchmark.h"
#include "DesktopBenchmarks.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return RunBenchmarks({
        {"start", BenchStart},
        {"memory", BenchMemory},
        {"idle", BenchIdle},
        {"wake-ups", BenchWakeUps},
        {"exit", BenchExit},
        {"vora-status", BenchStatusReader},
    });
}
