// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QFile>

#include <array>

/// What tells two versions of a file apart.
using FileStamp = std::array<qint64, 6>;

/// The path as the system takes it; empty for one with a zero, which would end it and name another file. Called from
/// any thread.
QByteArray SystemPath(const QString& strPath);

/// Differs whenever the file at strPath may have changed; all zero while there is none. Called from any thread.
FileStamp StampOfFile(const QString& strPath);

/// Opens strPath without ever waiting for a FIFO's other end. iFlags are those of open(2) that mode does not imply,
/// such as O_NOFOLLOW. A mode that writes creates a missing file. Returns false, with file closed, when it cannot be
/// opened. Called from any thread.
bool OpenWithoutBlocking(QFile& file, const QString& strPath, QIODevice::OpenMode mode, int iFlags = 0);

/// Replaces whatever stands at strPath by an empty file of our own, never following a link that somebody else left
/// there. Returns false when that cannot be done. Called from any thread.
bool CreateAnew(const QString& strPath);
