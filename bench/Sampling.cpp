// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Sampling.h"

#include <QTest>

#include <algorithm>

namespace {
constexpr int c_iTimeOutMSec = 60000;
} // namespace

double Median(std::vector<double> listValue)
{
    const auto middle = listValue.begin() + static_cast<std::ptrdiff_t>(listValue.size() / 2);
    std::nth_element(listValue.begin(), middle, listValue.end());
    return *middle;
}

stPair MedianPair(int iRuns, const std::function<double()>& value, const std::function<double()>& floor)
{
    std::vector<double> listValue;
    std::vector<double> listFloor;
    for (int i = 0; i < iRuns; ++i) {
        listFloor.push_back(floor());
        listValue.push_back(value());
    }
    return {Median(listValue), Median(listFloor)};
}

double MedianOf(int iRuns, const std::function<double()>& value)
{
    std::vector<double> listValue(static_cast<std::size_t>(iRuns));
    std::generate(listValue.begin(), listValue.end(), value);
    return Median(listValue);
}

void WaitUntil(const std::function<bool()>& condition, const char* pWhat)
{
    if (!QTest::qWaitFor(condition, c_iTimeOutMSec)) {
        qFatal("waited in vain: %s", pWhat);
    }
}
