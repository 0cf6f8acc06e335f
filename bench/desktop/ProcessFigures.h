// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <sys/types.h>

// What the kernel counts of a process, read from outside. All end the program when the process or thread is not there.
/// CPU time, milliseconds, of all its threads since its start, ended ones included.
double CpuMSec(pid_t pid);

/// CPU time, nanoseconds, of one thread of it; the main thread has the process's number.
qint64 ThreadCpuNSec(pid_t pid, pid_t thread);

/// How often its main thread gave the processor away to wait, since its start.
qint64 MainThreadWaits(pid_t pid);

/// Proportional set size, KiB: a page that n processes share counts 1/n.
double PssKB(pid_t pid);

/// The number of its thread of that name, which has 15 bytes at most.
pid_t ThreadOf(pid_t pid, const QByteArray& name);
