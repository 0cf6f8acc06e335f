// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Desktop.h"
#include "QtCompat.h"

#include <QDir>
#include <QThread>

#include <algorithm>
#include <limits>

/// What a running program holds, as the kernel counts it.
struct stToolFigures
{
    double dMinutes = 0;                                ///< since the first look
    int iThreads = 0;                                   ///< all; Qt's own pool gives some up when they are idle
    int iWorkers = 0;                                   ///< those that the program names
    int iDescriptors = std::numeric_limits<int>::max(); ///< the fewest of some looks, as a status file is open shortly
    int iZombies = 0;                                   ///< children that ended and that nobody waited for
    int iResidentKB = 0;
};

/// The figures of a running process.
inline stToolFigures LookAt(qint64 iPid)
{
    const QString strPid = QString::number(iPid);
    const QStringList listThread = Desktop::Run(u"ps"_s, {u"-L"_s, u"-o"_s, u"comm="_s, u"-p"_s, strPid})
                                       .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    stToolFigures figures;
    figures.iThreads = static_cast<int>(listThread.size());
    figures.iWorkers = static_cast<int>(listThread.filter(u"vora-"_s).size());
    figures.iZombies =
        static_cast<int>(Desktop::Run(u"ps"_s, {u"-o"_s, u"stat="_s, u"--ppid"_s, strPid}).count(QLatin1Char('Z')));
    figures.iResidentKB = Desktop::Run(u"ps"_s, {u"-o"_s, u"rss="_s, u"-p"_s, strPid}).toInt();
    for (int i = 0; i < 10; ++i) {
        const QDir folder(u"/proc/%1/fd"_s.arg(iPid));
        const auto iOpen = folder.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot).size();
        figures.iDescriptors = std::min(figures.iDescriptors, static_cast<int>(iOpen));
        QThread::msleep(2);
    }
    return figures;
}

/// The line through the resident sizes by least squares: kB in a minute. Of two looks or more.
inline double ResidentSlope(const QList<stToolFigures>& listFigures)
{
    double dMeanX = 0;
    double dMeanY = 0;
    for (const stToolFigures& figures : listFigures) {
        dMeanX += figures.dMinutes / static_cast<double>(listFigures.size());
        dMeanY += figures.iResidentKB / static_cast<double>(listFigures.size());
    }
    double dXY = 0;
    double dXX = 0;
    for (const stToolFigures& figures : listFigures) {
        dXY += (figures.dMinutes - dMeanX) * (figures.iResidentKB - dMeanY);
        dXX += (figures.dMinutes - dMeanX) * (figures.dMinutes - dMeanX);
    }
    return dXY / dXX;
}
