// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// The text as one literal word of a shell command, in the local 8-bit encoding, whatever it holds but a zero, which
/// ends a command.
QByteArray QuoteForShell(const QString& strText);

/// Runs a command with the system shell and waits for its end; its result is of no interest.
void RunShellCommand(const QByteArray& command);
