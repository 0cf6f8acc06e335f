// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

// Groups of figures, each printed as a row when it is there. With bQuick everything is exercised on few printers and
// nothing is worth reading. Called from the main thread; what does not work ends the program.

/// CPU time, wall time and memory of a start, against an empty program with the same icon and texts.
void BenchStart(bool bQuick);

/// The same with many printers.
void BenchScale(bool bQuick);

/// CPU per printer and second while nothing changes, against threads that only ask for the files' times.
void BenchIdle(bool bQuick);

/// From the click on the tray menu's last entry to the end of the process.
void BenchExit(bool bQuick);

/// vora-status on many files, against a program that reads them and writes as much text.
void BenchStatusReader(bool bQuick);

/// The tool beside what else tells a Debian user of printers.
void BenchPeers(bool bQuick);
