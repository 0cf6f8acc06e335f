// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the program's parts take, measured within this process.

#include "Benchmark.h"
#include "UnitBenchmarks.h"

#include <QApplication>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    return RunBenchmarks({
        {"decode", BenchDecode},
        {"log", BenchLog},
        {"status-report", BenchStatusReport},
        {"list-report", BenchListReport},
        {"worker-start", BenchWorkerStart},
        {"changed-file", BenchChangedFile},
    });
}
