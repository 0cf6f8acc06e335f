// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QList>

#include <array>
#include <thread>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

/// A printer at 127.0.0.1, port 9300: answers one request after the other with the given replies and then keeps silent.
class UdpResponder
{
public:
    explicit UdpResponder(const QList<QByteArray>& listReply) : m_listReply(listReply)
    {
        m_address.sin_family = AF_INET;
        m_address.sin_port = htons(9300);
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        if (::bind(m_iSocket, reinterpret_cast<const sockaddr*>(&m_address), sizeof(m_address)) != 0) {
            qFatal("port 9300 is taken");
        }
        m_thread = std::thread(&UdpResponder::Answer, this);
    }

    ~UdpResponder()
    {
        Requests();
        ::close(m_iSocket);
    }
    UdpResponder(const UdpResponder&) = delete;
    UdpResponder& operator=(const UdpResponder&) = delete;

    /// Every request received. Ends the printer.
    QList<QByteArray> Requests()
    {
        if (m_thread.joinable()) {
            Send("end", m_address); // behind whatever has been sent so far; wakes the thread and is no request
            m_thread.join();
        }
        return m_listRequest;
    }

private:
    void Answer()
    {
        while (true) {
            std::array<char, 4096> buffer{};
            sockaddr_in sender{};
            socklen_t iLength = sizeof(sender);
            const ssize_t iReceived =
                ::recvfrom(m_iSocket, buffer.data(), buffer.size(), 0, reinterpret_cast<sockaddr*>(&sender), &iLength);
            const QByteArray request(buffer.data(), static_cast<int>(iReceived));
            if (request == "end") {
                return;
            }
            m_listRequest.append(request);
            if (!m_listReply.isEmpty()) {
                Send(m_listReply.takeFirst(), sender);
            }
        }
    }

    void Send(const QByteArray& bytes, const sockaddr_in& address) const
    {
        ::sendto(m_iSocket, bytes.constData(), static_cast<std::size_t>(bytes.size()), 0,
                 reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    }

    QList<QByteArray> m_listReply;
    QList<QByteArray> m_listRequest;
    sockaddr_in m_address{};
    const int m_iSocket = ::socket(AF_INET, SOCK_DGRAM, 0);
    std::thread m_thread;
};
