// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>

#include <functional>

/// Answers the status query over UDP as a network printer does.
class StatusResponder : public QObject
{
    Q_OBJECT

public:
    static constexpr quint16 c_wPort = 9300;

    /// reply gives what the printer answers now; nothing is sent when it is empty.
    explicit StatusResponder(std::function<QByteArray()> reply, QObject* parent = nullptr);

    /// Returns false, with an error text, when the address cannot be had.
    bool Listen(const QHostAddress& address);
    QString ErrorString() const { return m_socket.errorString(); }

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
