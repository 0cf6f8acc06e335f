// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Preloaded into a program: notes in /tmp/waits how long each wait for events, and each answer on the bus, may take at
// most, in milliseconds.

#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>

#include <dlfcn.h>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

template <typename Function>
Function* Real(const char* pName)
{
    return reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, pName));
}

void Note(const char* pWhat, long iMSec)
{
    char line[64] = {};
    std::snprintf(line, sizeof(line), "%s %ld\n", pWhat, iMSec);
    const int iFd = ::open("/tmp/waits", O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
    [[maybe_unused]] const ssize_t iWritten = ::write(iFd, line, std::strlen(line));
    ::close(iFd);
}

} // namespace

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the libraries name them otherwise
extern "C" int poll(pollfd* pFds, nfds_t iCount, int iMSec)
{
    static const auto s_real = Real<int(pollfd*, nfds_t, int)>("poll");
    Note("poll", iMSec);
    return s_real(pFds, iCount, iMSec);
}

extern "C" int ppoll(pollfd* pFds, nfds_t iCount, const timespec* pTimeOut, const sigset_t* pMask)
{
    static const auto s_real = Real<int(pollfd*, nfds_t, const timespec*, const sigset_t*)>("ppoll");
    Note("poll", pTimeOut == nullptr ? -1 : pTimeOut->tv_sec * 1000 + pTimeOut->tv_nsec / 1000000);
    return s_real(pFds, iCount, pTimeOut, pMask);
}

extern "C" unsigned dbus_connection_send_with_reply(void* pConnection, void* pMessage, void** ppReply, int iMSec)
{
    static const auto s_real = Real<unsigned(void*, void*, void**, int)>("dbus_connection_send_with_reply");
    Note("bus", iMSec);
    return s_real(pConnection, pMessage, ppReply, iMSec);
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
