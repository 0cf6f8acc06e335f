// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

#include <sys/stat.h>
#include <unistd.h>

/// Puts something into a file's place: for no target a FIFO, for "." a folder, for "=" and a path another name of that
/// file, else a link to the target.
inline bool Plant(const QString& strPath, const QString& strTarget)
{
    QFile::remove(strPath);
    const QByteArray path = QFile::encodeName(strPath);
    if (strTarget.isEmpty() || strTarget == QLatin1String(".")) {
        return (strTarget.isEmpty() ? ::mkfifo(path.constData(), 0666) : ::mkdir(path.constData(), 0777)) == 0;
    }
    return strTarget.startsWith(QLatin1Char('='))
               ? ::link(QFile::encodeName(strTarget.mid(1)).constData(), path.constData()) == 0
               : QFile::link(strTarget, strPath);
}
