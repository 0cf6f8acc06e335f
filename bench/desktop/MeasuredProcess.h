// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QElapsedTimer>
#include <QProcess>

/// What a program took until it had nothing more to do.
struct stStartFigures
{
    double dCpuMSec = 0;
    double dWallMSec = 0;
};

/// A program seen from outside, without accessibility, which users mostly do not run and which weighs more than the
/// program. Killed with this object.
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
    stStartFigures WaitUntilIdle(int iQuietMSec) const;

private:
    QElapsedTimer m_sinceStart;
    QProcess m_process;
};

/// The same for a program that was started elsewhere, at about the time when sinceStart was.
stStartFigures WaitUntilIdle(pid_t pid, const QElapsedTimer& sinceStart, int iQuietMSec);
