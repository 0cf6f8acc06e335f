// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the built programs cost their user, seen from outside on a virtual desktop.
//   bench_desktop [--quick] [NAME]...
// Without a name all benchmarks.

#include "Benchmarks.h"
#include "QtCompat.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <utility>

int main(int argc, char** argv)
{
    const std::pair<const char*, void (*)(bool)> c_benchmarkList[] = {
        {"start", BenchStart}, {"scale", BenchScale},         {"idle", BenchIdle},
        {"exit", BenchExit},   {"reader", BenchStatusReader}, {"peers", BenchPeers},
    };
    const QCoreApplication application(argc, argv);
    QStringList listName = QCoreApplication::arguments().mid(1);
    const bool bQuick = listName.removeAll(u"--quick"_s) > 0;
    for (const QString& strName : std::as_const(listName)) {
        if (std::none_of(std::begin(c_benchmarkList), std::end(c_benchmarkList),
                         [&](const auto& benchmark) { return strName == QLatin1String(benchmark.first); })) {
            std::fprintf(stderr, "no such benchmark: %s\n", qPrintable(strName));
            return 2;
        }
    }
    for (const auto& [pName, pRun] : c_benchmarkList) {
        if (listName.isEmpty() || listName.contains(QLatin1String(pName))) {
            pRun(bQuick);
        }
    }
}
