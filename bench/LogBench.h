// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// One log line against opening, writing and closing alone, and whether lines of 50 threads are lost.
void BenchLog(const BenchOptions& options, Figures& figures);
