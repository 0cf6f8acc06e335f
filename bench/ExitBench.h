// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// From the click on the tray menu's last entry to the end of the process.
void BenchExit(const BenchOptions& options, Figures& figures);
