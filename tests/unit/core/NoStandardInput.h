// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <unistd.h>

/// While it lives, this process has no standard input, as one may be started: the next descriptor is 0.
class NoStandardInput
{
public:
    NoStandardInput() : m_iInput(::dup(STDIN_FILENO)) { ::close(STDIN_FILENO); }
    ~NoStandardInput()
    {
        ::dup2(m_iInput, STDIN_FILENO);
        ::close(m_iInput);
    }
    NoStandardInput(const NoStandardInput&) = delete;
    NoStandardInput& operator=(const NoStandardInput&) = delete;

private:
    const int m_iInput;
};
