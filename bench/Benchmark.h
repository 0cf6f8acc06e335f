// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "BenchOptions.h"
#include "Figures.h"

#include <functional>
#include <vector>

/// A group of figures that are measured together, under the name that --only takes.
/// run is called from the main thread and ends the program when what it measures fails.
struct stBenchmark
{
    const char* pName;
    std::function<void(const BenchOptions&, Figures&)> run;
};

/// Runs those that the command line asks for; returns the program's exit status.
int RunBenchmarks(const std::vector<stBenchmark>& listBenchmark);
