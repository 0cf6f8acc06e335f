// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ProcessFigures.h"

#include "QtCompat.h"

#include "ProcFile.h"

#include <QDir>

#include <ctime>

namespace {

/// A figure that must be there.
qint64 Number(const QString& strPath, const QByteArray& key)
{
    const qint64 iNumber = ProcNumber(ReadProcFile(strPath), key);
    if (iNumber < 0) {
        qFatal("no %s in %s", key.constData(), qPrintable(strPath));
    }
    return iNumber;
}

} // namespace

double CpuMSec(pid_t pid)
{
    clockid_t clock = 0;
    timespec time = {};
    if (clock_getcpuclockid(pid, &clock) != 0 || clock_gettime(clock, &time) != 0) {
        qFatal("no CPU time of process %d", pid);
    }
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

qint64 ThreadCpuNSec(pid_t pid, pid_t thread)
{
    const QByteArray text = ReadProcFile(u"/proc/%1/task/%2/schedstat"_s.arg(pid).arg(thread));
    if (text.isEmpty()) {
        qFatal("no CPU time of thread %d", thread);
    }
    return text.split(' ').constFirst().toLongLong();
}

qint64 MainThreadWaits(pid_t pid)
{
    return Number(u"/proc/%1/task/%1/status"_s.arg(pid), "voluntary_ctxt_switches");
}

double PssKB(pid_t pid)
{
    return static_cast<double>(Number(u"/proc/%1/smaps_rollup"_s.arg(pid), "Pss"));
}

pid_t ThreadOf(pid_t pid, const QByteArray& name)
{
    const QDir folder(u"/proc/%1/task"_s.arg(pid));
    const QStringList listThread = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& strThread : listThread) {
        if (ReadProcFile(folder.filePath(strThread) + u"/comm"_s).trimmed() == name) {
            return strThread.toInt();
        }
    }
    qFatal("no thread %s", name.constData());
}
