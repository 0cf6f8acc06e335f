// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

class EndSignals;
class ToolError;

// What the programs write. Called from the main thread.

/// Writes everything to standard output, at once; waits while nobody takes it, with pEndSignals until one has come.
/// Returns 0, EINTR when a signal came first, or another number of the system's.
int WriteOutput(const QByteArray& bytes, const EndSignals* pEndSignals = nullptr);

/// Writes "PROGRAM: TEXT" to standard error, with the text printable; what cannot be written is lost, as is what nobody
/// takes until one of pEndSignals has come.
void WriteMessage(const QString& strText, const EndSignals* pEndSignals = nullptr);

/// The same for an error's message, and its hint.
void WriteError(const ToolError& error);
