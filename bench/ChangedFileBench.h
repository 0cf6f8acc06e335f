// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// The time from a changed status file to the worker's report, all files of many printers rewritten within a second.
void BenchChangedFile(const BenchOptions& options, Figures& figures);
