// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

// Texts that come from outside, as a terminal may show them.

/// Calls handle for each character: with its code and its one or two halves. A half without the other is a character.
template <typename Handle>
void ForEachCharacter(const QString& strText, const Handle& handle)
{
    for (auto it = strText.begin(); it != strText.end(); ++it) {
        const auto next = it + 1;
        const bool bPair = it->isHighSurrogate() && next != strText.end() && next->isLowSurrogate();
        const uint dwCode = bPair ? QChar::surrogateToUcs4(*it, *next) : it->unicode();
        handle(dwCode, &*it, bPair ? 2 : 1);
        it += bPair ? 1 : 0;
    }
}

/// Control and format characters, such as those that turn the text's direction, and what ends a line or a paragraph.
bool IsObeyedByTerminals(uint dwCode);

/// A character as an escape: "\x0A", "\u202E", beyond four digits "\U000E0001".
QString EscapeOf(uint dwCode);

/// The text with each character that a terminal would obey written as an escape.
QString EscapeControls(const QString& strText);
