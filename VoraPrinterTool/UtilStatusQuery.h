// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <array>

/// What a status reply is read into; no reply is longer.
using StatusBuffer = std::array<unsigned char, 2048>;

/// Asks the printer at a dotted IPv4 address for its status: one request, one reply, at most one second of waiting.
/// Returns the reply's length (8 or more), or -1: no such address, -2: no socket, -3: not sent, -4: no time-out, -5: no
/// reply of 8 bytes or more. The rest of the buffer is zero; with -1 to -4 the buffer is as it was. Called from any
/// thread.
int QueryStatus(const QString& strAddress, StatusBuffer& buffer);
