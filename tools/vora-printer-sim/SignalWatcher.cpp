// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "SignalWatcher.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

SignalWatcher::SignalWatcher()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signalSet, iSignal);
    }
    m_iFd = ::signalfd(-1, &signalSet, SFD_CLOEXEC | SFD_NONBLOCK);
    if (m_iFd < 0) {
        return; // blocked, they would end nothing any more
    }
    sigprocmask(SIG_BLOCK, &signalSet, nullptr);
    auto* pNotifier = new QSocketNotifier(m_iFd, QSocketNotifier::Read, this);
    connect(pNotifier, &QSocketNotifier::activated, this, [this] {
        signalfd_siginfo info{};
        if (::read(m_iFd, &info, sizeof(info)) == sizeof(info)) {
            emit SgnEnd();
        }
    });
}

SignalWatcher::~SignalWatcher()
{
    if (m_iFd >= 0) {
        ::close(m_iFd);
    }
}
