// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <string_view>

/// Goes through the entries of a text in Qt's INI format, which is UTF-8, in the order of the text. Unlike QSettings it
/// holds no entry and makes nothing but text of a value: whatever the text is, it takes no more time and memory than
/// its length accounts for. Used by one thread at a time; the text outlives it.
class UtilIniReader
{
public:
    explicit UtilIniReader(std::string_view text);

    /// Goes on to the next entry; false behind the last one.
    bool Next();

    // Of the present entry. The group has its name alone; entries before the first group have none.
    const QString& Group() const { return m_strGroup; }
    const QString& Key() const { return m_strKey; }
    std::string_view RawValue() const { return m_value; }

    /// What a raw value means as one text. An unquoted comma is part of it, blanks behind the comma are not. "@@" at
    /// the beginning is "@"; of what QSettings writes with a type, texts are understood, and all else is taken as it
    /// stands.
    static QString Text(std::string_view rawValue);

private:
    std::string_view NextLine(std::size_t& iEquals);

    std::string_view m_rest;
    QString m_strGroup;
    QString m_strKey;
    std::string_view m_value;
};
