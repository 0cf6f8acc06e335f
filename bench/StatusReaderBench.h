// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// vora-status on many files, against a program that only reads them.
void BenchStatusReader(const BenchOptions& options, Figures& figures);
