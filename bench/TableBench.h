// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// What the GUI thread does for a status report and for a list report, the window shown.
void BenchStatusReport(const BenchOptions& options, Figures& figures);
void BenchListReport(const BenchOptions& options, Figures& figures);

/// The longest time for which the window does not answer while the workers of many printers start.
void BenchWorkerStart(const BenchOptions& options, Figures& figures);
