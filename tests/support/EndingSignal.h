// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <csignal>
#include <functional>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

/// The signal that ends a process which does this work; 0 when it does it all, -1 when there is no telling.
inline int EndingSignal(const std::function<void()>& work)
{
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        const rlimit noCore{0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        std::signal(SIGABRT, SIG_DFL); // the test library prints a report of its own
        work();
        ::_exit(0);
    }
    int iStatus = -1;
    if (::waitpid(iChild, &iStatus, 0) != iChild) {
        return -1;
    }
    return WIFSIGNALED(iStatus) ? WTERMSIG(iStatus) : 0;
}
