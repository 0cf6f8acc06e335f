// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusResponder.h"

#include "QtCompat.h"
#include "ToolError.h"

#include <QNetworkDatagram>
#include <QTimer>

namespace {
constexpr quint16 c_wPort = 9300;
constexpr int c_iShortReply = 7;  // one byte less than a client takes for a reply
constexpr int c_iLateMSec = 1500; // a client waits one second
const QByteArray c_query = QByteArray::fromHex("a5000c50e074080300000000000000");
} // namespace

StatusResponder::StatusResponder(std::function<QByteArray()> reply) : m_reply(std::move(reply))
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &StatusResponder::Answer);
}

void StatusResponder::Listen(const QHostAddress& address)
{
    if (!m_socket.bind(address, c_wPort, QAbstractSocket::DontShareAddress)) {
        throw ToolError(enExitUnavailable, u"--udp: cannot listen on %1 port %2: %3"_s.arg(address.toString())
                                               .arg(c_wPort)
                                               .arg(m_socket.errorString()));
    }
}

void StatusResponder::Answer()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram query = m_socket.receiveDatagram();
        const QByteArray reply = m_reply();
        if (query.data() != c_query || reply.isEmpty()) {
            continue;
        }
        const QHostAddress address = query.senderAddress();
        const auto wPort = static_cast<quint16>(query.senderPort());
        if (m_bMisbehave) {
            AnswerBadly(reply, address, wPort);
        } else {
            m_socket.writeDatagram(reply, address, wPort);
        }
    }
}

void StatusResponder::AnswerBadly(const QByteArray& reply, const QHostAddress& address, quint16 wPort)
{
    switch (m_iQueries++ % 4) {
    case 0: break;
    case 1: m_socket.writeDatagram(reply.left(c_iShortReply), address, wPort); break;
    case 2:
        QTimer::singleShot(c_iLateMSec, this,
                           [this, reply, address, wPort] { m_socket.writeDatagram(reply, address, wPort); });
        break;
    default: m_socket.writeDatagram(reply, address, wPort); break;
    }
}

#include "moc_StatusResponder.cpp"
