// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// A tenth of each pause that is asked for, in tests that are not about time: linked into a unit test, whose own
// functions come before the C library's, or preloaded into the program.

#include <ctime>

#include <unistd.h>

namespace {
constexpr useconds_t c_dwDivisor = 10;
constexpr useconds_t c_dwSecond = 1000000;
} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names it otherwise
extern "C" int usleep(useconds_t dwMicroSec)
{
    const useconds_t dwShort = dwMicroSec / c_dwDivisor;
    const timespec pause{static_cast<time_t>(dwShort / c_dwSecond), static_cast<long>(dwShort % c_dwSecond) * 1000};
    return ::nanosleep(&pause, nullptr);
}
