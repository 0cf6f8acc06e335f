// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilShell.h"

#include <cstdlib>

QByteArray QuoteForShell(const QString& strText)
{
    return '\'' + strText.toLocal8Bit().replace('\'', "'\\''") + '\'';
}

void RunShellCommand(const QByteArray& command)
{
    [[maybe_unused]] const int iStatus = std::system(command.constData());
}
