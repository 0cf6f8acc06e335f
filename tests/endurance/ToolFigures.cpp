// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ToolFigures.h"

#include "QtCompat.h"

#include "ProcFile.h"

#include <QDir>
#include <QThread>

#include <algorithm>
#include <limits>

namespace {

int FewestDescriptors(const QString& strProcess)
{
    auto iFewest = std::numeric_limits<int>::max();
    for (int i = 0; i < 10; ++i) {
        const QDir folder(strProcess + u"/fd"_s);
        iFewest = std::min(
            iFewest, static_cast<int>(folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size()));
        QThread::msleep(2);
    }
    return iFewest;
}

int Workers(const QString& strProcess)
{
    int iWorkers = 0;
    for (const QString& strThread : QDir(strProcess + u"/task"_s).entryList({u"[0-9]*"_s})) {
        iWorkers += ReadProcFile(strProcess + u"/task/%1/comm"_s.arg(strThread)).startsWith("vora-") ? 1 : 0;
    }
    return iWorkers;
}

int Zombies(qint64 iParent)
{
    int iZombies = 0;
    for (const QString& strPid : QDir(u"/proc"_s).entryList({u"[0-9]*"_s}, QDir::Dirs)) {
        const QByteArray status = ReadProcFile(u"/proc/%1/status"_s.arg(strPid));
        if (status.contains("\nState:\tZ") && ProcNumber(status, "PPid") == iParent) {
            ++iZombies;
        }
    }
    return iZombies;
}

} // namespace

stToolFigures LookAt(qint64 iPid)
{
    const QString strProcess = u"/proc/%1"_s.arg(iPid);
    const QByteArray status = ReadProcFile(strProcess + u"/status"_s);
    stToolFigures figures;
    figures.iThreads = static_cast<int>(ProcNumber(status, "Threads"));
    figures.iWorkers = Workers(strProcess);
    figures.iDescriptors = FewestDescriptors(strProcess);
    figures.iZombies = Zombies(iPid);
    figures.iResidentKB = static_cast<int>(ProcNumber(status, "VmRSS"));
    return figures;
}

double ResidentSlope(const QList<stToolFigures>& listFigures)
{
    const double dCount = static_cast<double>(listFigures.size());
    double dSumX = 0;
    double dSumY = 0;
    double dSumXX = 0;
    double dSumXY = 0;
    for (const stToolFigures& figures : listFigures) {
        dSumX += figures.dMinutes;
        dSumY += figures.iResidentKB;
        dSumXX += figures.dMinutes * figures.dMinutes;
        dSumXY += figures.dMinutes * figures.iResidentKB;
    }
    const double dDivisor = dCount * dSumXX - dSumX * dSumX;
    return dDivisor > 0 ? (dCount * dSumXY - dSumX * dSumY) / dDivisor : 0;
}
