// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// The time from a changed status file to the worker's report, all files of many printers rewritten within a second.
void BenchChangedFile(const BenchOptions& options, Figures& figures);

/// Decoding a rich reply and converting it into a record, against building that record from ready values.
void BenchDecode(const BenchOptions& options, Figures& figures);

/// One log line against opening, writing and closing alone, and whether lines of 50 threads are lost.
void BenchLog(const BenchOptions& options, Figures& figures);

/// What the GUI thread does for a status report and for a list report, the window shown.
void BenchStatusReport(const BenchOptions& options, Figures& figures);
void BenchListReport(const BenchOptions& options, Figures& figures);
/// The longest time for which the window does not answer while the workers of many printers start.
void BenchWorkerStart(const BenchOptions& options, Figures& figures);
