// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UdpResponder.h"

#include <array>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

UdpResponder::UdpResponder(const QList<QByteArray>& listReply)
    : m_listReply(listReply), m_iSocket(::socket(AF_INET, SOCK_DGRAM, 0))
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(9300);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::bind(m_iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        qFatal("port 9300 is taken");
    }
    m_thread = std::thread(&UdpResponder::Answer, this);
}

UdpResponder::~UdpResponder()
{
    Requests();
    ::close(m_iSocket);
}

QList<QByteArray> UdpResponder::Requests()
{
    if (m_thread.joinable()) {
        // Behind whatever has been sent so far: a last datagram wakes the thread and is no request.
        sockaddr_in address{};
        socklen_t iLength = sizeof(address);
        ::getsockname(m_iSocket, reinterpret_cast<sockaddr*>(&address), &iLength);
        ::sendto(m_iSocket, "end", 3, 0, reinterpret_cast<const sockaddr*>(&address), iLength);
        m_thread.join();
    }
    return m_listRequest;
}

void UdpResponder::Answer()
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
            const QByteArray reply = m_listReply.takeFirst();
            ::sendto(m_iSocket, reply.constData(), static_cast<std::size_t>(reply.size()), 0,
                     reinterpret_cast<const sockaddr*>(&sender), iLength);
        }
    }
}
