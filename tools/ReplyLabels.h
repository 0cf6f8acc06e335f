// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ReplyLayout.h"
#include "UtilLanguageCtrl.h"

#include <QByteArray>
#include <QString>

#include <array>

// What the pieces of a reply are called; all texts for people as UTF-8. The keys are those that scenarios use.

struct stReplyLabel
{
    const char* pKey; ///< in JSON; null for what only the byte listing shows
    std::array<const char*, enLanguageCount> pName;

    QString Key() const { return QString::fromLatin1(pKey); }
    const char* Name(enLanguage enLang) const { return pName[enLang]; }
};

/// One of two texts, UTF-8.
inline const char* ByLanguage(enLanguage enLang, const char* pEnglish, const char* pChinese)
{
    return enLang == enLanguageEnglish ? pEnglish : pChinese;
}

const stReplyLabel& FieldLabel(enReplyField enField);

/// What a supplies record of the key holds; null for a key that the program skips.
const stReplyLabel* SuppliesLabel(unsigned long dwKey);

/// "0x6100": a raw number of iBytes bytes.
QByteArray RawText(unsigned long dwValue, int iBytes);

/// "0x10 Printing": a raw state and what it means.
QByteArray StateText(unsigned long dwRawCode, enLanguage enLang);

/// "0x6100 No Paper At The Input Tray": a raw error or warning and what it means. A code without a Chinese text has the
/// English one in brackets, one without any stands alone.
QByteArray CodeText(unsigned long dwRawCode, enLanguage enLang);

/// A foreign text with what a terminal would obey, and backslashes, written as escapes.
QByteArray Printable(const QString& strText);

/// The same in quotes.
QByteArray Quoted(const QString& strText);
