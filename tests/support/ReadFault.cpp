// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#undef _FILE_OFFSET_BITS // with which the one function below would be the other

#include "ReadFault.h"

#include <atomic>
#include <cerrno>

#include <dlfcn.h>
#include <unistd.h>

namespace {

std::atomic<int> s_iError{0};

template <typename Offset>
ssize_t HookedRead(const char* pRealName, int iFd, void* pBuffer, std::size_t iSize, Offset iOffset)
{
    if (s_iError != 0) {
        errno = s_iError;
        return -1;
    }
    const auto realRead = reinterpret_cast<ssize_t (*)(int, void*, std::size_t, Offset)>(::dlsym(RTLD_NEXT, pRealName));
    return realRead(iFd, pBuffer, iSize, iOffset);
}

} // namespace

ReadFault::ReadFault(int iError)
{
    s_iError = iError;
}

ReadFault::~ReadFault()
{
    s_iError = 0;
}

// The program's own definitions come before the C library's.

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" ssize_t pread(int iFd, void* pBuffer, std::size_t iSize, off_t iOffset)
{
    return HookedRead("pread", iFd, pBuffer, iSize, iOffset);
}

extern "C" ssize_t pread64(int iFd, void* pBuffer, std::size_t iSize, off64_t iOffset)
{
    return HookedRead("pread64", iFd, pBuffer, iSize, iOffset);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
