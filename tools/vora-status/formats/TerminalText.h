// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

/// Columns that a terminal needs for the text: two for an ideograph, none for a combining mark.
int TerminalWidth(const QString& strText);

/// True when standard output is a terminal and NO_COLOR is not set or empty.
bool IsColorWanted();
