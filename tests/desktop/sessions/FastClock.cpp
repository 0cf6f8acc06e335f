// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Preloaded into a program with an event loop: its monotonic clock goes twenty times as fast, and what it waits for
// with a time-out ends when that clock says so. What it starts, or becomes, has the real clock again.

#include <cstdlib>
#include <ctime>

#include <dlfcn.h>
#include <poll.h>

namespace {

constexpr int c_iFaster = 20;
constexpr long long c_iNSecPerSec = 1000000000;

template <typename Function>
Function* Real(const char* pName)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, pName));
}

[[gnu::constructor]] void KeepFromChildren()
{
    ::unsetenv("LD_PRELOAD");
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" int clock_gettime(clockid_t iClock, timespec* pTime) noexcept
{
    static const auto s_real = Real<int(clockid_t, timespec*)>("clock_gettime");
    const int iResult = s_real(iClock, pTime);
    if (iClock == CLOCK_MONOTONIC) {
        static const timespec s_start = *pTime;
        const long long iNSec =
            ((pTime->tv_sec - s_start.tv_sec) * c_iNSecPerSec + pTime->tv_nsec - s_start.tv_nsec) * c_iFaster;
        *pTime = {static_cast<time_t>(iNSec / c_iNSecPerSec), static_cast<long>(iNSec % c_iNSecPerSec)};
    }
    return iResult;
}

extern "C" int poll(pollfd* pFds, nfds_t iCount, int iMSec)
{
    static const auto s_real = Real<int(pollfd*, nfds_t, int)>("poll");
    return s_real(pFds, iCount, iMSec < 0 ? iMSec : iMSec / c_iFaster);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
