// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>

/// What a status reply is read into; no reply is longer.
using StatusBuffer = std::array<unsigned char, 2048>;

/// Why no reply came.
enum enQueryFailure
{
    enQueryBadAddress = -1,
    enQueryNoSocket = -2,
    enQueryNotSent = -3,
    enQueryNoTimeOut = -4, ///< the wait could not be bounded
    enQueryNoReply = -5    ///< of 8 bytes or more within a second
};

/// Asks the printer at a dotted IPv4 address for its status: one request, one reply, at most one second of waiting.
/// Returns the reply's length (8 or more), or an enQueryFailure. The rest of the buffer is zero; it is as it was when
/// no reply was waited for.
int QueryStatus(const QString& strAddress, StatusBuffer& buffer);
