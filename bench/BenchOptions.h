// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// What the command line of a benchmark program asks for.
class BenchOptions
{
public:
    /// Reads the application's arguments; ends the program with a usage message when they are wrong.
    BenchOptions();

    int m_iRuns = 9;
    bool m_bQuick = false;  ///< everything is exercised, nothing is worth reading
    QString m_strJsonPath;  ///< the figures are added to those of this file; empty: none is written
    QString m_strBenchmark; ///< the only one to run; empty: all

    /// iFull, or iQuick with --quick.
    int FullOrQuick(int iFull, int iQuick) const { return m_bQuick ? iQuick : iFull; }
};
