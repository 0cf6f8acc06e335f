// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ProcFile.h"

#include "TestFiles.h"

QByteArray ReadProcFile(const QString& strPath)
{
    return ReadFile(strPath);
}

qint64 ProcNumber(const QByteArray& text, const QByteArray& key)
{
    const auto iKey = text.indexOf('\n' + key + ':');
    if (iKey < 0) {
        return -1;
    }
    const QByteArray line = text.mid(iKey + 1 + key.size() + 1).split('\n').constFirst();
    return line.trimmed().split(' ').constFirst().toLongLong();
}
