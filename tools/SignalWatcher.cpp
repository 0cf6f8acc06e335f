// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "SignalWatcher.h"

#include <QSocketNotifier>

#include <csignal>

#include <sys/signalfd.h>
#include <unistd.h>

SignalWatcher::SignalWatcher(QObject* parent) : QObject(parent)
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    for (const int iSignal : {SIGINT, SIGTERM, SIGHUP}) {
        sigaddset(&signalSet, iSignal);
    }
    sigprocmask(SIG_BLOCK, &signalSet, nullptr);
    m_iFd = ::signalfd(-1, &signalSet, SFD_CLOEXEC | SFD_NONBLOCK);
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
    ::close(m_iFd);
}
