// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusOptions.h"
#include "ToolError.h"

class EndSignals;
class StatusSource;

/// Everything that one look at the replies gives.
struct stStatusRendering
{
    QByteArray output;                  ///< UTF-8
    QStringList listMessage;            ///< for standard error
    enExitStatus enStatus = enExitGood; ///< the gravest of all reports

    /// Whether both print the same.
    bool LooksLike(const stStatusRendering& other) const
    {
        return output == other.output && listMessage == other.listMessage;
    }
};

/// Takes the look: reads files, or waits for a printer on the network, one second at most. A failure becomes a message
/// and an exit status.
stStatusRendering RenderStatus(const StatusOptions& options, StatusSource& source);

/// Writes the output, then the messages; what nobody takes until one of pEndSignals has come is left out. Throws
/// ToolError with enExitFailure when the output cannot be written; messages that cannot be written are lost. Called
/// from the main thread.
void PrintStatus(const stStatusRendering& rendering, enLanguage enLang, const EndSignals* pEndSignals = nullptr);
