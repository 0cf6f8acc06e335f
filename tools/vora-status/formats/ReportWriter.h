// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QString>

/// Puts a report together from its pieces. Used by one thread at a time.
class ReportWriter
{
public:
    explicit ReportWriter(enLanguage enLang) : m_enLang(enLang) {}

    enLanguage Language() const { return m_enLang; }
    QString Text() const { return m_strText; }

    // A text of this program, as it stands; UTF-8.
    ReportWriter& Add(const QString& strText);
    ReportWriter& Add(const char* pText);
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

private:
    void AddMeaning(const QString& strMeaning);

    const enLanguage m_enLang;
    QString m_strText;
};
