// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"
#include "Sampling.h"

#include <QStringList>

/// What is measured; Figures.cpp has the text and the budget of each, and why it is that one.
enum enFigure
{
    enStartCpu,
    enStartChildren,
    enStartWall,
    enMemory,
    enManyWall,
    enMemoryPerPrinter,
    enIdleFew,
    enIdleMany,
    enExit,
    enStatusReader,
    enFigureCount
};

// Rows of Markdown tables on standard output, each as soon as it is there.

void PrintRow(const QStringList& listCell);

/// Begins a table.
void PrintHeader(const QStringList& listColumn);

/// The first begins the table. The floor is in the same unit; none: the figure has no floor.
void PrintFigure(enFigure enMeasured, const Samples& value, const Samples& floor = {});

/// The median with the lowest and highest value, such as "42.3 ms (41.0–44.9)".
QString SpreadText(const Samples& samples, const QString& strUnit);
