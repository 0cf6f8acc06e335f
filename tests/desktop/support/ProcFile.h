// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

/// A file below /proc; empty when its process or thread has ended.
QByteArray ReadProcFile(const QString& strPath);

/// The number in the line that begins with the key, in any line but the first, such as "Threads:\t3"; -1 when there is
/// no such line.
qint64 ProcNumber(const QByteArray& text, const QByteArray& key);
