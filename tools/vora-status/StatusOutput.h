// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <string>
#include <string_view>

/// Exit statuses; of those up to enExitFailure the highest of all printers counts.
enum enExitStatus
{
    enExitGood = 0,
    enExitErrors = 1,  ///< a printer has errors
    enExitFailure = 2, ///< a reply was rejected, a printer not reached or the output not written
    enExitUsage = 64
};

/// Writes UTF-8 to standard output; false when that cannot be done. Called from any thread.
bool WriteOutput(std::string_view text);

/// Writes UTF-8 to standard error; what cannot be written is lost. Called from any thread.
void WriteMessages(std::string_view lines);

/// One message, UTF-8, as it stands on standard error. Called from any thread.
std::string MessageLine(const std::string& text);
