// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndSignals.h"

#include <array>
#include <csignal>

#include <poll.h>
#include <sys/signalfd.h>

EndSignals::EndSignals()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signalSet, iSignal);
    }
    m_iFd = ::signalfd(-1, &signalSet, SFD_CLOEXEC);
    if (m_iFd >= 0) { // else they would end nothing any more
        sigprocmask(SIG_BLOCK, &signalSet, nullptr);
    }
}

bool EndSignals::WaitFor(int iMSec) const
{
    pollfd signal = {m_iFd, POLLIN, 0};
    return ::poll(&signal, 1, iMSec) > 0;
}

bool EndSignals::WaitUntilWritable(int iFd) const
{
    std::array<pollfd, 2> listFd = {{{m_iFd, POLLIN, 0}, {iFd, POLLOUT, 0}}};
    ::poll(listFd.data(), listFd.size(), -1);
    return listFd[0].revents == 0;
}
