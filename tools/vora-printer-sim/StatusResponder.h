// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>

#include <functional>

/// Answers the status query over UDP as a network printer does, and nothing else that comes. Lives in the thread that
/// made it and needs its event loop. An answer that cannot be sent is lost.
class StatusResponder : public QObject
{
    Q_OBJECT

public:
    /// reply is called at each datagram and gives what the printer answers now; nothing is sent when it is empty.
    explicit StatusResponder(std::function<QByteArray()> reply);

    /// Takes c_wPort of the address for itself. Throws ToolError with enExitUnavailable when it cannot be had.
    void Listen(const QHostAddress& address);

    /// From now on every four queries are answered not at all, too short, too late and well.
    void SetMisbehave() { m_bMisbehave = true; }

private:
    void Answer();
    void AnswerBadly(const QByteArray& reply, const QHostAddress& address, quint16 wPort);

    std::function<QByteArray()> m_reply;
    QUdpSocket m_socket;
    bool m_bMisbehave = false;
    int m_iQueries = 0;
};
