// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "MeasuredProcess.h"

#include "ProcessFigures.h"
#include "Sampling.h"

#include <QThread>

namespace {
constexpr int c_iLookMSec = 2;
} // namespace

MeasuredProcess::MeasuredProcess(const QString& strProgram, const QStringList& listArgument)
{
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_sinceStart.start();
    m_process.start(strProgram, listArgument);
    if (!m_process.waitForStarted()) {
        qFatal("cannot start %s", qPrintable(strProgram));
    }
}

MeasuredProcess::~MeasuredProcess()
{
    m_process.kill();
    m_process.waitForFinished();
}

stStartFigures MeasuredProcess::WaitUntilIdle(int iQuietMSec) const
{
    return ::WaitUntilIdle(Pid(), m_sinceStart, iQuietMSec);
}

stStartFigures WaitUntilIdle(pid_t pid, const QElapsedTimer& sinceStart, int iQuietMSec)
{
    stStartFigures figures;
    qint64 iLastRun = -1;
    QElapsedTimer quiet;
    quiet.start();
    WaitUntil(
        [&] {
            QThread::msleep(c_iLookMSec);
            const qint64 iRun = ThreadCpuNSec(pid, pid);
            if (iRun != iLastRun) {
                iLastRun = iRun;
                figures = {CpuMSec(pid), static_cast<double>(sinceStart.nsecsElapsed()) / 1e6};
                quiet.start();
            }
            return quiet.elapsed() >= iQuietMSec;
        },
        "an idle program");
    return figures;
}
