// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QProcess>

/// What a program took until it had nothing more to do.
struct stStart
{
    double dWallMSec = 0;
    double dCpuMSec = 0; ///< without children
};

/// A program seen from outside, without accessibility, which users mostly do not run and which weighs more than the
/// program. Killed with this object unless it ended before.
class MeasuredProcess
{
public:
    /// Starts it; ends the benchmark when it does not start.
    explicit MeasuredProcess(const QString& strProgram, const QStringList& listArgument = {});
    ~MeasuredProcess();

    MeasuredProcess(const MeasuredProcess&) = delete;
    MeasuredProcess& operator=(const MeasuredProcess&) = delete;

    pid_t Pid() const { return static_cast<pid_t>(m_process.processId()); }

    /// Waits until the main thread has not run for so long; the figures are those of the moment when it last ran.
    stStart WaitUntilIdle(int iQuietMSec) const;

    // End the program, and return the CPU time, milliseconds, of it and of its children, the programs that it waited
    // for.
    double Kill();
    double WaitForEnd(); ///< ends the benchmark at an exit status above 1

private:
    QElapsedTimer m_sinceStart;
    QProcess m_process;
};

// What the kernel counts of a process. All end the benchmark when the process is not there.

/// WaitUntilIdle for one that was started elsewhere, at about the time when sinceStart was.
stStart WaitUntilIdle(pid_t pid, const QElapsedTimer& sinceStart, int iQuietMSec);

/// CPU time, milliseconds, of all its threads since its start, ended ones included and children not.
double CpuMSec(pid_t pid);

/// Proportional set size, MiB: a page that n processes share counts 1/n.
double PssMB(pid_t pid);
