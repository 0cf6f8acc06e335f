// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// What the kernel counts of a process, read from outside.

/// CPU time of all its threads, ended ones included.
double CpuMSec(pid_t pid);

/// CPU time of one thread of it; the main thread has the process's number.
qint64 ThreadCpuNSec(pid_t pid, pid_t thread);

/// How often its main thread gave the processor away to wait.
qint64 MainThreadWaits(pid_t pid);

/// Proportional set size: a page that n processes share counts 1/n.
double PssKB(pid_t pid);

/// The thread of that name; ends the program when there is none.
pid_t ThreadOf(pid_t pid, const QByteArray& name);
