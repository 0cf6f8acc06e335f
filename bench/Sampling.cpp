// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Sampling.h"

#include <QTest>

#include <algorithm>

namespace {
constexpr int c_iTimeOutMSec = 60000;
} // namespace

double Median(Samples samples)
{
    std::sort(samples.begin(), samples.end());
    return (samples[(samples.size() - 1) / 2] + samples[samples.size() / 2]) / 2;
}

void TakeInTurns(int iRuns, const std::vector<std::function<void()>>& listMeasurement)
{
    const auto take = [](const std::function<void()>& measurement) { measurement(); };
    for (int i = 0; i < iRuns; ++i) {
        if (i % 2 == 0) {
            std::for_each(listMeasurement.begin(), listMeasurement.end(), take);
        } else {
            std::for_each(listMeasurement.rbegin(), listMeasurement.rend(), take);
        }
    }
}

void WaitUntil(const std::function<bool()>& condition, const char* pWhat)
{
    if (!QTest::qWaitFor(condition, c_iTimeOutMSec)) {
        qFatal("waited in vain: %s", pWhat);
    }
}
