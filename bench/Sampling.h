// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

double Median(std::vector<double> listValue);

/// The medians of a value and of its floor.
struct stPair
{
    double dValue = 0;
    double dFloor = 0;
};

/// Measures the two in turns, so that a machine that is busy for a while is so for both.
stPair MedianPair(int iRuns, const std::function<double()>& value, const std::function<double()>& floor);

double MedianOf(int iRuns, const std::function<double()>& value);

/// Looks every few milliseconds until the condition holds; ends the program when that takes more than a minute.
void WaitUntil(const std::function<bool()>& condition, const char* pWhat);
