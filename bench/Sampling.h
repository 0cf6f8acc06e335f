// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <functional>
#include <vector>

// Called from the main thread, with an application object.

/// One figure, measured several times.
using Samples = std::vector<double>;

/// The middle value, of an even number the mean of the two; one value at least.
double Median(Samples samples);

/// Takes each measurement iRuns times, in the order given and then in the reverse one, so that none always follows the
/// same other.
void TakeInTurns(int iRuns, const std::vector<std::function<void()>>& listMeasurement);

/// Handles events until the condition, asked every few milliseconds, holds; ends the program, with pWhat, after a
/// minute in vain.
void WaitUntil(const std::function<bool()>& condition, const char* pWhat);
