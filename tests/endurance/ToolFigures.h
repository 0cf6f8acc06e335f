// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>

/// What a running program holds, as the kernel counts it.
struct stToolFigures
{
    double dMinutes = 0;  ///< since the first look
    int iThreads = 0;     ///< all; Qt's own pool gives some up when they are idle
    int iWorkers = 0;     ///< those that the program names
    int iDescriptors = 0; ///< the fewest of some looks: a status file is open for a moment while it is read
    int iZombies = 0;     ///< children that ended and that nobody waited for
    int iResidentKB = 0;
};

/// The figures of a running process; -1 for some of them when it has ended.
stToolFigures LookAt(qint64 iPid);

/// The line through the resident sizes by least squares: kB in a minute. 0 for fewer than two looks.
double ResidentSlope(const QList<stToolFigures>& listFigures);
