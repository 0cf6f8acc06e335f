// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "DriverFolder.h"
#include "Figures.h"
#include "FullReply.h"
#include "Sampling.h"

#include <QProcess>

#include <sys/resource.h>

namespace {

/// CPU time of all children that have ended.
double ChildrenCpuMSec()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto msec = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_usec) / 1e3;
    };
    return msec(usage.ru_utime) + msec(usage.ru_stime);
}

double RunCpuMSec(const char* pProgram, const QStringList& listArgument)
{
    const double dBefore = ChildrenCpuMSec();
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start(QString::fromLocal8Bit(pProgram), listArgument);
    // Its exit status tells of the errors in the replies too.
    if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() > 1) {
        qFatal("%s failed: %s", pProgram, process.readAllStandardError().constData());
    }
    return ChildrenCpuMSec() - dBefore;
}

} // namespace

void BenchStatusReader(const BenchOptions& options, Figures& figures)
{
    const int iFiles = options.FullOrQuick(10000, 100);
    const DriverFolder folder(c_strCfgPath);
    QStringList listPath;
    for (int i = 0; i < iFiles; ++i) {
        WriteBenchStatus(i, EncodeStatusReply(FullReply()));
        listPath.append(folder.StatusPath(BenchPrinterName(i)));
    }
    const stPair pair = MedianPair(
        options.m_iRuns, [&] { return RunCpuMSec(VORA_STATUS, QStringList(u"--fields"_s) + listPath); },
        [&] { return RunCpuMSec(VORA_READ_FILES, listPath); });
    figures.Add({u"vora-status"_s, u"vora-status on %1 files, CPU time"_s.arg(iFiles), u"ms"_s, pair.dValue,
                 pair.dFloor, stBudget{stBudget::enRatio, 2}});
}
