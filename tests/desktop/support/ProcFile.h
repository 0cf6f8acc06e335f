// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TestFiles.h"

/// A file below /proc; empty when its process or thread has ended.
inline QByteArray ReadProcFile(const QString& strPath)
{
    return ReadFile(strPath);
}

/// The number in the line that begins with the key, in any line but the first, such as "Threads:\t3"; -1 when there is
/// no such line.
inline qint64 ProcNumber(const QByteArray& text, const QByteArray& key)
{
    const auto iKey = text.indexOf('\n' + key + ':');
    const QByteArray value = text.mid(iKey + key.size() + 2).split('\n').constFirst().trimmed();
    return iKey < 0 ? -1 : value.split(' ').constFirst().toLongLong();
}
