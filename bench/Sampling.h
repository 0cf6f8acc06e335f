// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

// Called from the main thread, with an application object.

/// The middle value, of an even number the higher of the two; one value at least.
double Median(std::vector<double> listValue);

/// A value and its floor, in the same unit.
struct stPair
{
    double dValue = 0;
    double dFloor = 0;
};

/// The medians of iRuns (1 or more) values and floors, measured in turns, so that a machine that is busy for a while is
/// so for both.
stPair MedianPair(int iRuns, const std::function<double()>& value, const std::function<double()>& floor);

/// The median of iRuns (1 or more) values.
double MedianOf(int iRuns, const std::function<double()>& value);

/// Handles events until the condition, asked every few milliseconds, holds; ends the program, with pWhat, after a
/// minute in vain.
void WaitUntil(const std::function<bool()>& condition, const char* pWhat);
