// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ToolOutput.h"

#include "EndSignals.h"
#include "Printable.h"
#include "QtCompat.h"
#include "ToolError.h"

#include <QCoreApplication>

#include <algorithm>
#include <cerrno>

#include <limits.h>
#include <unistd.h>

namespace {

int WriteAll(int iFd, const QByteArray& bytes, const EndSignals* pEndSignals)
{
    for (int iDone = 0; iDone < bytes.size();) {
        if (pEndSignals != nullptr && !pEndSignals->WaitUntilWritable(iFd)) {
            return EINTR;
        }
        // Of more than PIPE_BUF bytes a pipe may take some and block with the rest.
        const int iLeft = static_cast<int>(bytes.size()) - iDone;
        const int iNow = pEndSignals != nullptr ? std::min(iLeft, PIPE_BUF) : iLeft;
        const ssize_t iWritten = ::write(iFd, bytes.constData() + iDone, static_cast<std::size_t>(iNow));
        if (iWritten < 0 && errno != EINTR) {
            return errno;
        }
        iDone += static_cast<int>(std::max<ssize_t>(iWritten, 0));
    }
    return 0;
}

} // namespace

int WriteOutput(const QByteArray& bytes, const EndSignals* pEndSignals)
{
    return WriteAll(STDOUT_FILENO, bytes, pEndSignals);
}

void WriteMessage(const QString& strText, const EndSignals* pEndSignals)
{
    const QString strLine = QCoreApplication::applicationName() + u": "_s + Printable(strText);
    WriteAll(STDERR_FILENO, strLine.toUtf8() + '\n', pEndSignals);
}

void WriteError(const ToolError& error)
{
    WriteMessage(error.Message());
    if (!error.Hint().isEmpty()) {
        WriteAll(STDERR_FILENO, error.Hint().toUtf8() + '\n', nullptr);
    }
}
