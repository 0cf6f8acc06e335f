// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QFile>

/// Opens strPath without ever waiting for a FIFO's other end. iFlags are those of open(2) that mode does not imply,
/// such as O_NOFOLLOW. Returns false, with file closed, when it cannot be opened. Called from any thread.
bool OpenWithoutBlocking(QFile& file, const QString& strPath, QIODevice::OpenMode mode, int iFlags = 0);

/// Replaces whatever stands at strPath by an empty file of our own, never following a link that somebody else left
/// there. Returns false when that cannot be done. Called from any thread.
bool CreateAnew(const QString& strPath);
