// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QCommandLineParser>
#include <QString>

/// Exit status of the simulator, as in sysexits.h.
enum enSimExitStatus
{
    enExitOk = 0,
    enExitUsage = 64,       ///< wrong options
    enExitData = 65,        ///< a wrong input file
    enExitNoInput = 66,     ///< no such input file
    enExitUnavailable = 69, ///< the network address cannot be had
    enExitCannotCreate = 73,
    enExitIo = 74
};

/// Thrown to end a command: the message goes to standard error, when there is one.
struct stEnd
{
    int iStatus;
    QString strMessage;
};

/// One line as UTF-8. Throws stEnd when standard output cannot take it.
void Print(FILE* pFile, const QString& strText);

/// Parses the arguments, first of them what the command is called in its help text, and answers --help and --version.
/// Throws stEnd.
void ParseArguments(QCommandLineParser& parser, const QStringList& listArgument, int iMaxPositional);

/// The bytes of an input file. Throws stEnd.
QByteArray ReadInput(const QString& strPath);
