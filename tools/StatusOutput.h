// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

/// Exit statuses; of those up to enExitFailure the highest of all printers counts.
enum enExitStatus
{
    enExitGood = 0,
    enExitErrors = 1,  ///< a printer has errors
    enExitFailure = 2, ///< a reply was rejected, a printer not reached or the output not written
    enExitUsage = 64
};

/// Writes to standard output; false when that cannot be done.
bool WriteOutput(const QByteArray& text);

/// Writes to standard error.
void WriteMessages(const QByteArray& lines);

/// One message, UTF-8, as it stands on standard error.
QByteArray MessageLine(const QByteArray& text);
