// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilStatusQuery.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

constexpr unsigned short c_iStatusPort = 9300;
constexpr int c_iMinReplyLength = 8;
constexpr std::array<unsigned char, 15> c_statusRequest = {0xA5, 0x00, 0x0C, 0x50, 0xE0, 0x74, 0x08, 0x03};

/// A file descriptor that is closed in every path.
class Socket
{
public:
    Socket() : m_iFd(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {}
    ~Socket()
    {
        if (m_iFd >= 0) {
            ::close(m_iFd);
        }
    }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

    int Fd() const { return m_iFd; }

private:
    int m_iFd;
};

} // namespace

int QueryStatus(const QString& strAddress, StatusBuffer& buffer)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(c_iStatusPort);
    if (::inet_pton(AF_INET, strAddress.toLatin1().constData(), &address.sin_addr) != 1) {
        return enQueryBadAddress; // the empty address too
    }
    const Socket socket;
    if (socket.Fd() < 0) {
        return enQueryNoSocket;
    }
    const ssize_t iSent = ::sendto(socket.Fd(), c_statusRequest.data(), c_statusRequest.size(), 0,
                                   reinterpret_cast<const sockaddr*>(&address), sizeof(address));
    if (iSent != static_cast<ssize_t>(c_statusRequest.size())) {
        return enQueryNotSent;
    }
    const timeval timeOut{1, 0};
    if (::setsockopt(socket.Fd(), SOL_SOCKET, SO_RCVTIMEO, &timeOut, sizeof(timeOut)) != 0) {
        return enQueryNoTimeOut;
    }
    buffer.fill(0);
    const ssize_t iReceived = ::recvfrom(socket.Fd(), buffer.data(), buffer.size(), 0, nullptr, nullptr);
    if (iReceived < c_iMinReplyLength) {
        return enQueryNoReply;
    }
    return static_cast<int>(iReceived);
}
