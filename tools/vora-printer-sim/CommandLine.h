// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCommandLineParser>
#include <QString>

class EndSignals;

// All of these are called from the main thread and throw ToolError.

/// Writes one line to standard output, printable, at once; not, when one of pEndSignals comes while nobody takes it.
/// Fails with enExitIo when it cannot be written.
void PrintLine(const QString& strText, const EndSignals* pEndSignals = nullptr);

/// Parses the arguments, first of them what the command is called in its help text. Returns false when it has answered
/// --help or --version and nothing is left to do. Fails with enExitUsage for wrong options or more than iMaxPositional
/// arguments.
bool ParseArguments(QCommandLineParser& parser, const QStringList& listArgument, int iMaxPositional);

/// The bytes of an input file, 16 MiB at most. Fails with enExitNoInput when it cannot be read, with enExitData when it
/// is larger.
QByteArray ReadInput(const QString& strPath);

/// Writes bytes to standard output. Fails with enExitIo.
void Print(const QByteArray& bytes, const EndSignals* pEndSignals = nullptr);
