// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// The text with each character that a terminal would obey written as an escape: control characters as "\x0A", those
/// that turn the text's direction or end a line as "\u202E", beyond four digits as "\U000E0001". Called from any
/// thread.
QString EscapeControls(const QString& strText);
