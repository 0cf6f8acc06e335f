// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

#include <thread>

/// A printer at 127.0.0.1, port 9300: answers one request after the other with the given replies and then keeps silent.
class UdpResponder
{
public:
    explicit UdpResponder(const QList<QByteArray>& listReply);
    ~UdpResponder();
    UdpResponder(const UdpResponder&) = delete;
    UdpResponder& operator=(const UdpResponder&) = delete;

    /// Every request received. Ends the printer.
    QList<QByteArray> Requests();

private:
    void Answer();

    QList<QByteArray> m_listReply;
    QList<QByteArray> m_listRequest;
    int m_iSocket;
    std::thread m_thread;
};
