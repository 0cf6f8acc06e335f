// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// Proportional set size against an empty program, and what a further printer adds.
void BenchMemory(const BenchOptions& options, Figures& figures);
