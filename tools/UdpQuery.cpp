// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UdpQuery.h"

#include "ReplyLayout.h"
#include "TrdGetPrinterStatus.h"

#include <algorithm>
#include <csignal>

#include <arpa/inet.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using Buffer = decltype(TrdGetPrinterStatus::m_buffer);

constexpr int c_iMinReplyLength = 8; // the transport takes nothing shorter for a reply

struct stAnswer
{
    int iResult;
    Buffer buffer;
};

TrdGetPrinterStatus* s_pWorker = nullptr; // of the child process
int s_iAnswerFd = -1;

/// The last act of the child process; calls nothing that a signal handler must not.
[[noreturn]] void Answer(int iResult)
{
    const stAnswer answer = {iResult, s_pWorker->m_buffer};
    const bool bWritten = ::write(s_iAnswerFd, &answer, sizeof(answer)) == sizeof(answer);
    ::_exit(bWritten ? 0 : 1);
}

extern "C" void AnswerAbort(int)
{
    Answer(0); // the reply came; what is wrong with it is told by its layout
}

[[noreturn]] void AskInChild(const QString& strAddress, int iAnswerFd)
{
    TrdGetPrinterStatus worker;
    s_pWorker = &worker;
    s_iAnswerFd = iAnswerFd;
    std::signal(SIGABRT, AnswerAbort);
    Answer(worker.GetPrinterStatusUDP(strAddress));
}

/// False when there is no child process or it ended without an answer.
bool AskChild(const QString& strAddress, stAnswer& answer)
{
    int pipeFd[2] = {-1, -1};
    if (::pipe(pipeFd) != 0) {
        return false;
    }
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        AskInChild(strAddress, pipeFd[1]);
    }
    ::close(pipeFd[1]);
    // Shorter than PIPE_BUF, so it comes in one piece or not at all.
    const bool bAnswered = iChild > 0 && ::read(pipeFd[0], &answer, sizeof(answer)) == sizeof(answer);
    ::close(pipeFd[0]);
    if (iChild > 0) {
        ::waitpid(iChild, nullptr, 0);
    }
    return bAnswered;
}

int LengthWithoutZeros(const Buffer& buffer)
{
    const auto last = std::find_if(buffer.rbegin(), buffer.rend(), [](unsigned char byValue) { return byValue != 0; });
    return static_cast<int>(buffer.rend() - last);
}

/// As far as the decoder read a reply that it took or ended on.
int LengthRead(const QByteArray& padded)
{
    const ReplyLayout layout(padded);
    return layout.UsedLength() + (layout.IsAccepted() ? 0 : static_cast<int>(layout.BrokenField().dwValue));
}

bool IsAddress(const QString& strAddress)
{
    in_addr address{};
    return ::inet_pton(AF_INET, strAddress.toLatin1().constData(), &address) == 1;
}

} // namespace

int UdpQuery::Ask(const QString& strAddress)
{
    m_reply.clear();
    stAnswer answer{};
    if (!AskChild(strAddress, answer)) {
        return c_iNoProcess;
    }
    const bool bRejected = answer.iResult == -1 && IsAddress(strAddress);
    if (answer.iResult == 0 || bRejected) {
        const QByteArray padded(reinterpret_cast<const char*>(answer.buffer.data()),
                                static_cast<int>(answer.buffer.size()));
        const int iLength = bRejected ? c_iMinReplyLength : LengthRead(padded);
        m_reply = padded.left(std::max(iLength, LengthWithoutZeros(answer.buffer)));
    }
    return answer.iResult;
}
