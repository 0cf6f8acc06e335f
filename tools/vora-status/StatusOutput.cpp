// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusOutput.h"

#include <cstdio>

namespace {

bool Write(std::FILE* pFile, std::string_view text)
{
    return std::fwrite(text.data(), 1, text.size(), pFile) == text.size() && std::fflush(pFile) == 0;
}

} // namespace

bool WriteOutput(std::string_view text)
{
    return Write(stdout, text);
}

void WriteMessages(std::string_view lines)
{
    Write(stderr, lines);
}

std::string MessageLine(const std::string& text)
{
    return "vora-status: " + text + '\n';
}
