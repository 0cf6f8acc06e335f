// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFile>

#include <array>
#include <optional>

/// What tells two versions of a file apart.
using FileStamp = std::array<qint64, 6>;

/// The path as the system takes it; empty for one with a zero, which would end it and name another file.
QByteArray SystemPath(const QString& strPath);

/// Differs whenever the file at strPath may have changed; all zero while there is none.
FileStamp StampOfFile(const QString& strPath);

/// Opens strPath without ever waiting for a FIFO's other end. iFlags are those of open(2) that mode does not imply,
/// such as O_NOFOLLOW. A mode that writes creates a missing file. Returns false, with file closed, when it cannot be
/// opened.
bool OpenWithoutBlocking(QFile& file, const QString& strPath, QIODevice::OpenMode mode, int iFlags = 0);

/// The first iMaxLength bytes of an open regular file, wherever its position is; none, with errno set, when they cannot
/// be read.
std::optional<QByteArray> ReadBytes(int iFd, int iMaxLength);

enum enFileResult
{
    enFileRead,
    enFileMissing,
    enFileNotRegular,
    enFileUnreadable
};

struct stFileContent
{
    enFileResult enResult = enFileMissing;
    QByteArray content;   ///< empty unless the file was read
    qint64 iSize = 0;     ///< of a regular file, which may hold more than content
    qint64 iModified = 0; ///< of a regular file, milliseconds since 1970
    int iError = 0;       ///< errno's value for an unreadable file
};

/// Reads the first iMaxLength bytes of a regular file, never waiting for anything else in its place.
stFileContent ReadRegularFile(const QString& strPath, int iMaxLength);
