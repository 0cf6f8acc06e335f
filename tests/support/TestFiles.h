// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

// Files that the tests put into their private folders.

/// Writes a file, its folder too when that is missing.
inline bool WriteFile(const QString& strPath, const QByteArray& content)
{
    QDir().mkpath(QFileInfo(strPath).path());
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

/// Null when the file cannot be read.
inline QByteArray ReadFile(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A shell script that can be started.
inline bool WriteScript(const QString& strPath, const QByteArray& commands)
{
    return WriteFile(strPath, "#!/bin/sh\n" + commands) &&
           QFile::setPermissions(strPath, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

inline bool SetModificationTime(const QString& strPath, const QDateTime& dtModified)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadWrite) && file.setFileTime(dtModified, QFileDevice::FileModificationTime);
}
