// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDir>
#include <QFile>

#include <sys/stat.h>

/// Puts something into a file's place: for no target a FIFO, for "." a folder, else a link to the target.
inline bool Plant(const QString& strPath, const QString& strTarget)
{
    QFile::remove(strPath);
    if (strTarget == QLatin1String(".")) {
        return QDir().mkdir(strPath);
    }
    return strTarget.isEmpty() ? ::mkfifo(QFile::encodeName(strPath).constData(), 0666) == 0
                               : QFile::link(strTarget, strPath);
}
