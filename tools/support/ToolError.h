// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <stdexcept>

/// Exit statuses of vora-status and vora-printer-sim. From 64 on they are those of sysexits.h.
enum enExitStatus
{
    enExitGood = 0,
    enExitPrinterErrors = 1, ///< vora-status: a printer has errors
    enExitFailure = 2,       ///< vora-status: a reply was rejected, a printer not reached or the output not written
    enExitUsage = 64,        ///< wrong options
    enExitData = 65,         ///< a wrong input file
    enExitNoInput = 66,      ///< no such input file
    enExitUnavailable = 69,  ///< the network address cannot be had
    enExitCannotCreate = 73,
    enExitIo = 74
};

/// Thrown by a function that cannot do what it says; ends the program unless the caller can go on without.
class ToolError : public std::runtime_error
{
public:
    /// strMessage is for a person and says what was expected where. strHint, unless it is empty, is a line below it.
    ToolError(enExitStatus enStatus, const QString& strMessage, const QString& strHint = QString())
        : std::runtime_error(strMessage.toUtf8().constData()), m_enStatus(enStatus), m_strHint(strHint)
    {
    }

    enExitStatus ExitStatus() const { return m_enStatus; }
    QString Message() const { return QString::fromUtf8(what()); }
    QString Hint() const { return m_strHint; }

private:
    enExitStatus m_enStatus;
    QString m_strHint;
};
