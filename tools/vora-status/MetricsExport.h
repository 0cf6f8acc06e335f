// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class StatusOptions;
class StatusSource;

/// Writes the metrics of all printers to standard output or replaces the file that the options name, whole or not at
/// all. Errors of printers are no failure. Throws ToolError with enExitFailure when they cannot be written.
void ExportMetrics(const StatusOptions& options, StatusSource& source);
