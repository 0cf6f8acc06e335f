// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the built programs take, seen from outside on a virtual desktop.

#include "Benchmark.h"
#include "ExitBench.h"
#include "IdleBench.h"
#include "MemoryBench.h"
#include "StartBench.h"
#include "StatusReaderBench.h"
#include "SystemCallsBench.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    return RunBenchmarks({
        {"start", BenchStart},
        {"memory", BenchMemory},
        {"idle", BenchIdle},
        {"wake-ups", BenchWakeUps},
        {"system-calls", BenchSystemCalls},
        {"exit", BenchExit},
        {"vora-status", BenchStatusReader},
    });
}
