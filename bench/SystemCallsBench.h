// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// The system calls of a poll and of a list pass that find nothing new, as strace counts them.
void BenchSystemCalls(const BenchOptions& options, Figures& figures);
