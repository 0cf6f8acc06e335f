// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class BenchOptions;
class Figures;

/// CPU per printer and second while nothing changes, against threads that only ask for the files' times.
void BenchIdle(const BenchOptions& options, Figures& figures);

/// How often the GUI thread wakes while nothing changes, the window shown and hidden.
void BenchWakeUps(const BenchOptions& options, Figures& figures);
