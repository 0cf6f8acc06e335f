// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

// Texts that come from outside, as they are printed.

/// The text with control and format characters, which a terminal would obey, and backslashes written as escapes:
/// "\x1B", "\u202E", "\U000E0001", "\\".
QString Printable(const QString& strText);

/// The same in quotes; quotes within get a backslash too.
QString Quoted(const QString& strText);

/// A JSON document, UTF-8, with control and format characters in its texts written as escapes of JSON: "\u202e". A
/// reader of the document finds the same texts.
QByteArray PrintableJson(const QByteArray& json);
