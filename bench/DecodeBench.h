// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// Decoding a rich reply and converting it into a record, against building that record from ready values.
void BenchDecode(const BenchOptions& options, Figures& figures);
