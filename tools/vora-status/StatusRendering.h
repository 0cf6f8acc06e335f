// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusOptions.h"
#include "StatusOutput.h"

#include <string>

class StatusReport;
class StatusSource;

/// Everything that one look at the replies gives: what goes to standard output, what to standard error and the exit
/// status. Used by one thread at a time.
class StatusRendering
{
public:
    /// Takes the look: reads files, or waits for a printer on the network, one second at most. A failure becomes a
    /// message and an exit status. What is looked at once is written as it comes, so that thousands of replies need no
    /// more memory than some; with --watch nothing is written before Print.
    StatusRendering(const StatusOptions& options, StatusSource& source);

    /// With --watch: whether both print the same; the exit status is not compared.
    bool LooksLike(const StatusRendering& other) const
    {
        return m_output == other.m_output && m_messages == other.m_messages;
    }

    /// Writes the prefix and the output, then the messages. Output that cannot be written counts as a failure, and the
    /// result is false; messages that cannot be written are lost.
    bool Print(const std::string& prefix = std::string());

    /// The gravest of all reports and of Print.
    enExitStatus ExitStatus() const { return m_enExitStatus; }

private:
    void AddText(const StatusReport& report, enOutputFormat enFormat);
    void WriteBlock();
    void AddMessage(const StatusReport& report);

    enLanguage m_enLang;
    std::string m_output; ///< UTF-8; what is not written yet
    std::string m_messages;
    bool m_bAnyText = false;
    bool m_bWritten = true;
    enExitStatus m_enExitStatus = enExitGood;
};
