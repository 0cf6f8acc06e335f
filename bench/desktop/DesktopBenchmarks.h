// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// From the click on the tray menu's last entry to the end of the process.
void BenchExit(const BenchOptions& options, Figures& figures);

/// CPU per printer and second while nothing changes, against threads that only ask for the files' times.
void BenchIdle(const BenchOptions& options, Figures& figures);
/// How often the GUI thread wakes while nothing changes, the window shown and hidden.
void BenchWakeUps(const BenchOptions& options, Figures& figures);

/// Proportional set size against an empty program, and what a further printer adds.
void BenchMemory(const BenchOptions& options, Figures& figures);

/// CPU and wall time from the start until there is nothing more to do, against an empty program.
void BenchStart(const BenchOptions& options, Figures& figures);

/// vora-status on many files, against a program that only reads them.
void BenchStatusReader(const BenchOptions& options, Figures& figures);
