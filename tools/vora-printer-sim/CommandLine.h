// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCommandLineParser>
#include <QString>

#include <cstdio>

/// Exit status of the simulator, as in sysexits.h.
enum enSimExitStatus
{
    enSimExitOk = 0,
    enSimExitUsage = 64,       ///< wrong options
    enSimExitData = 65,        ///< a wrong input file
    enSimExitNoInput = 66,     ///< no such input file
    enSimExitUnavailable = 69, ///< the network address cannot be had
    enSimExitCannotCreate = 73,
    enSimExitIo = 74
};

/// Thrown to end a command: the message, unless it is empty, goes to standard error.
struct stEnd
{
    int iStatus;
    QString strMessage;
};

// All of these are called from the main thread.

/// Writes one line as UTF-8, at once. Throws stEnd with enSimExitIo when standard output cannot take it; what standard
/// error cannot take is lost.
void Print(FILE* pFile, const QString& strText);

/// Parses the arguments, first of them what the command is called in its help text, and answers --help and --version.
/// Throws stEnd: with enSimExitOk after an answer, with enSimExitUsage for wrong options or more than iMaxPositional
/// arguments.
void ParseArguments(QCommandLineParser& parser, const QStringList& listArgument, int iMaxPositional);

/// The bytes of an input file, 16 MiB at most. Throws stEnd: with enSimExitNoInput when it cannot be read, with
/// enSimExitData when it is larger.
QByteArray ReadInput(const QString& strPath);
