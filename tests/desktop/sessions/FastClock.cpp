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

timespec FromNSec(long long iNSec)
{
    return {static_cast<time_t>(iNSec / c_iNSecPerSec), static_cast<long>(iNSec % c_iNSecPerSec)};
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
        *pTime =
            FromNSec(((pTime->tv_sec - s_start.tv_sec) * c_iNSecPerSec + pTime->tv_nsec - s_start.tv_nsec) * c_iFaster);
    }
    return iResult;
}

extern "C" int ppoll(pollfd* pFds, nfds_t iCount, const timespec* pTimeOut, const sigset_t* pMask)
{
    static const auto s_real = Real<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
    if (pTimeOut == nullptr) {
        return s_real(pFds, iCount, nullptr, pMask);
    }
    const timespec slower = FromNSec((pTimeOut->tv_sec * c_iNSecPerSec + pTimeOut->tv_nsec) / c_iFaster);
    return s_real(pFds, iCount, &slower, pMask);
}

extern "C" int poll(pollfd* pFds, nfds_t iCount, int iMSec)
{
    const timespec timeOut = FromNSec(iMSec * 1000000LL);
    return ppoll(pFds, iCount, iMSec < 0 ? nullptr : &timeOut, nullptr);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
