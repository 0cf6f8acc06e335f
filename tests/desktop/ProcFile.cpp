// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ProcFile.h"

#include <QFile>

QByteArray ReadProcFile(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
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
