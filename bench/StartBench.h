// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// CPU and wall time from the start until there is nothing more to do, against an empty program.
void BenchStart(const BenchOptions& options, Figures& figures);
