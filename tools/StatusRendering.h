// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusOptions.h"
#include "StatusOutput.h"

#include <QByteArray>

class StatusReport;
class StatusSource;

/// Everything that one look at the replies gives: what goes to standard output, what to standard error and the exit
/// status.
class StatusRendering
{
public:
    /// Takes the look.
    StatusRendering(const StatusOptions& options, StatusSource& source);

    bool LooksLike(const StatusRendering& other) const
    {
        return m_output == other.m_output && m_messages == other.m_messages;
    }

    /// Writes the prefix and the output, then the messages. Output that cannot be written counts as a failure, and the
    /// result is false.
    bool Print(const QByteArray& prefix = QByteArray());

    enExitStatus ExitStatus() const { return m_enExitStatus; }

private:
    void AddText(const StatusReport& report, enOutputFormat enFormat);
    void AddMessage(const QByteArray& text);

    enLanguage m_enLang;
    QByteArray m_output;
    QByteArray m_messages;
    enExitStatus m_enExitStatus = enExitGood;
};
