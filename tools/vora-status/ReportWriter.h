// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <string>
#include <string_view>

/// Appends the pieces of a report, UTF-8, to a text that the caller owns: support looks at thousands of replies at
/// times, and so none of their lines is a string of its own. Used by one thread at a time.
class ReportWriter
{
public:
    ReportWriter(std::string& text, enLanguage enLang) : m_text(text), m_enLang(enLang) {}

    enLanguage Language() const { return m_enLang; }

    /// A text of this program, as it stands.
    ReportWriter& Add(std::string_view text)
    {
        m_text.append(text);
        return *this;
    }

    /// The one of two texts that the report's language asks for.
    ReportWriter& Add(const char* pEnglish, const char* pChinese);

    ReportWriter& AddNumber(unsigned long dwValue);

    /// "0x6100": a raw number of iBytes bytes.
    ReportWriter& AddRaw(unsigned long dwValue, int iBytes);

    /// "0x10 Printing": a raw state and what it means.
    ReportWriter& AddState(unsigned long dwRawCode);

    /// "0x6100 No Paper At The Input Tray": a raw error or warning and what it means. A code without a Chinese text has
    /// the English one in brackets, one without any stands alone.
    ReportWriter& AddCode(unsigned long dwRawCode);

    /// Any text, with what a terminal would obey, and backslashes, written as escapes.
    ReportWriter& AddPrintable(const QString& strText);

    /// The same in quotes.
    ReportWriter& AddQuoted(const QString& strText);

private:
    void AddEscaped(const QString& strText, char cQuote);
    void AddAscii(const QChar* pNext, const QChar* pEnd);
    void AddMeaning(const QString& strMeaning);

    std::string& m_text;
    const enLanguage m_enLang;
};
