// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <ctime>

/// CPU time, microseconds, of the calling thread since its start.
inline double ThreadCpuUSec()
{
    timespec time = {};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

/// CPU time, microseconds, that one of iCalls (1 or more) calls takes in the calling thread, on average.
template <typename Call>
double CpuUSecOf(int iCalls, const Call& call)
{
    const double dStart = ThreadCpuUSec();
    for (int i = 0; i < iCalls; ++i) {
        call();
    }
    return (ThreadCpuUSec() - dStart) / iCalls;
}
