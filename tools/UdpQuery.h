// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// One status query over the network, made with the program's own transport. The transport hands its reply to the
/// decoder at once, which ends the process on a reply with too much supplies data: so a child process makes the query.
class UdpQuery
{
public:
    static constexpr int c_iNoProcess = -6;

    /// The transport's result; 0 also for the reply on which the program ends, c_iNoProcess when the child process
    /// could not do its work. Waits as long as the transport does. Called from a process without other threads.
    int Ask(const QString& strAddress);

    /// The reply of the last query; empty when none came. The transport does not tell its length: zero bytes at its end
    /// are there only as far as the decoder read them, after a rejection not at all.
    QByteArray m_reply;
};
