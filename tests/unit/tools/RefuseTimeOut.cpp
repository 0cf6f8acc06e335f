// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Loaded before the C library: a system on which no socket takes a time-out.

#include <cerrno>

#include <sys/socket.h>

int setsockopt(int, int, int, const void*, socklen_t) noexcept
{
    errno = ENOPROTOOPT;
    return -1;
}
