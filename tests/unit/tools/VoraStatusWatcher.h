// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "VoraStatusTest.h"

#include <csignal>

/// The program while it watches.
class Watcher
{
public:
    explicit Watcher(const QStringList& listArgument, const QString& strProgram = c_strProgram)
    {
        m_process.start(strProgram, listArgument);
        m_process.waitForStarted(c_iPatience);
    }
    ~Watcher()
    {
        m_process.kill();
        m_process.waitForFinished(c_iPatience);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    const QByteArray& Output()
    {
        m_output += m_process.readAllStandardOutput();
        return m_output;
    }

    const QByteArray& Messages()
    {
        m_messages += m_process.readAllStandardError();
        return m_messages;
    }

    qint64 Pid() const { return m_process.processId(); }

    /// The exit status after the signal; -1 when the program does not end, or not in order.
    int EndBy(int iSignal)
    {
        ::kill(static_cast<pid_t>(m_process.processId()), iSignal);
        const bool bEnded = m_process.waitForFinished(c_iPatience);
        return bEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

private:
    QProcess m_process;
    QByteArray m_output;
    QByteArray m_messages;
};
