// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmark.h"

#include <cstdio>

int RunBenchmarks(const std::vector<stBenchmark>& listBenchmark)
{
    const BenchOptions options;
    Figures figures(options.m_strJsonPath);
    bool bFound = false;
    for (const stBenchmark& benchmark : listBenchmark) {
        if (options.m_strBenchmark.isEmpty() || options.m_strBenchmark == QLatin1String(benchmark.pName)) {
            benchmark.run(options, figures);
            bFound = true;
        }
    }
    if (!bFound) {
        std::fputs("no such benchmark here; there are:", stderr);
        for (const stBenchmark& benchmark : listBenchmark) {
            std::fprintf(stderr, " %s", benchmark.pName);
        }
        std::fputs("\n", stderr);
        return 2;
    }
    figures.Save();
    return 0;
}
