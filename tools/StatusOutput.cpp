// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusOutput.h"

#include <cstdio>

namespace {

bool Write(std::FILE* pFile, const QByteArray& text)
{
    const auto iSize = static_cast<std::size_t>(text.size());
    return std::fwrite(text.constData(), 1, iSize, pFile) == iSize && std::fflush(pFile) == 0;
}

} // namespace

bool WriteOutput(const QByteArray& text)
{
    return Write(stdout, text);
}

void WriteMessages(const QByteArray& lines)
{
    Write(stderr, lines);
}

QByteArray MessageLine(const QByteArray& text)
{
    return "vora-status: " + text + '\n';
}
