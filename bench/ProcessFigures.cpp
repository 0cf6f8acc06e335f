// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ProcessFigures.h"

#include <QDir>
#include <QFile>

#include <ctime>

namespace {

QByteArray ReadProcFile(const QString& strPath)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(strPath));
    }
    return file.readAll();
}

/// The number in the line that begins with the key.
qint64 LineNumber(const QByteArray& text, const QByteArray& key)
{
    const auto iKey = text.indexOf('\n' + key + ':');
    const QByteArray line = text.mid(iKey + 1 + key.size() + 1).split('\n').first();
    return line.trimmed().split(' ').first().toLongLong();
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
    return ReadProcFile(QStringLiteral("/proc/%1/task/%2/schedstat").arg(pid).arg(thread))
        .split(' ')
        .first()
        .toLongLong();
}

qint64 MainThreadWaits(pid_t pid)
{
    return LineNumber(ReadProcFile(QStringLiteral("/proc/%1/task/%1/status").arg(pid)), "voluntary_ctxt_switches");
}

double PssKB(pid_t pid)
{
    return static_cast<double>(LineNumber(ReadProcFile(QStringLiteral("/proc/%1/smaps_rollup").arg(pid)), "Pss"));
}

pid_t ThreadOf(pid_t pid, const QByteArray& name)
{
    const QDir folder(QStringLiteral("/proc/%1/task").arg(pid));
    const QStringList listThread = folder.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& strThread : listThread) {
        if (ReadProcFile(folder.filePath(strThread) + QStringLiteral("/comm")).trimmed() == name) {
            return strThread.toInt();
        }
    }
    qFatal("no thread %s", name.constData());
}
