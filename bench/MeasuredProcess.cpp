// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "MeasuredProcess.h"

#include "ProcFile.h"
#include "QtCompat.h"
#include "Sampling.h"

#include <QThread>

#include <ctime>

#include <sys/resource.h>

namespace {

constexpr int c_iLookMSec = 2;

/// CPU time of all children that have ended, and of theirs.
double ChildrenCpuMSec()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto msec = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return msec(usage.ru_utime) + msec(usage.ru_stime);
}

/// How long the main thread has run.
qint64 MainThreadNSec(pid_t pid)
{
    const QByteArray text = ReadProcFile(u"/proc/%1/task/%1/schedstat"_s.arg(pid));
    if (text.isEmpty()) {
        qFatal("process %d has ended", pid);
    }
    return text.split(' ').constFirst().toLongLong();
}

} // namespace

MeasuredProcess::MeasuredProcess(const QString& strProgram, const QStringList& listArgument)
{
    m_process.setStandardOutputFile(u"/tmp/output.txt"_s); // not the null device, which takes nothing for writing
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_sinceStart.start();
    m_process.start(strProgram, listArgument);
    if (!m_process.waitForStarted()) {
        qFatal("cannot start %s", qPrintable(strProgram));
    }
}

MeasuredProcess::~MeasuredProcess()
{
    Kill();
}

stStart MeasuredProcess::WaitUntilIdle(int iQuietMSec) const
{
    return ::WaitUntilIdle(Pid(), m_sinceStart, iQuietMSec);
}

double MeasuredProcess::Kill()
{
    const double dBefore = ChildrenCpuMSec();
    m_process.kill();
    m_process.waitForFinished();
    return ChildrenCpuMSec() - dBefore;
}

double MeasuredProcess::WaitForEnd()
{
    const double dBefore = ChildrenCpuMSec();
    if (!m_process.waitForFinished(-1) || m_process.exitStatus() != QProcess::NormalExit || m_process.exitCode() > 1) {
        qFatal("%s failed", qPrintable(m_process.program()));
    }
    return ChildrenCpuMSec() - dBefore;
}

stStart WaitUntilIdle(pid_t pid, const QElapsedTimer& sinceStart, int iQuietMSec)
{
    stStart start;
    qint64 iRun = -1;
    QElapsedTimer quiet;
    WaitUntil(
        [&] {
            QThread::msleep(c_iLookMSec);
            const qint64 iRunBefore = std::exchange(iRun, MainThreadNSec(pid));
            if (iRun != iRunBefore) {
                start = {static_cast<double>(sinceStart.nsecsElapsed()) / 1e6, CpuMSec(pid)};
                quiet.start();
            }
            return quiet.elapsed() >= iQuietMSec;
        },
        "an idle program");
    return start;
}

double CpuMSec(pid_t pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        qFatal("no CPU time of process %d", pid);
    }
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

double PssMB(pid_t pid)
{
    const qint64 iKB = ProcNumber(ReadProcFile(u"/proc/%1/smaps_rollup"_s.arg(pid)), "Pss");
    if (iKB < 0) {
        qFatal("no memory of process %d", pid);
    }
    return static_cast<double>(iKB) / 1024;
}
