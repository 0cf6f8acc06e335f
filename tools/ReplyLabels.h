// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ReplyLayout.h"
#include "UtilLanguageCtrl.h"

#include <QString>

#include <array>

// What the pieces of a reply are called. The keys are those that scenarios use.

struct stReplyLabel
{
    const char* pKey; ///< in JSON; null for what only the byte listing shows
    std::array<const char*, enLanguageCount> pName;

    QString Key() const { return QString::fromLatin1(pKey); }
    QString Name(enLanguage enLang) const { return QString::fromUtf8(pName[enLang]); }
};

const stReplyLabel& FieldLabel(enReplyField enField);

/// What a supplies record of the key holds; null for a key that the program skips.
const stReplyLabel* SuppliesLabel(unsigned long dwKey);

/// "0x6100": a raw number of iBytes bytes.
QString RawText(unsigned long dwValue, int iBytes);

/// "0x10 Printing": a raw state and what it means.
QString StateText(unsigned long dwRawCode, enLanguage enLang);

/// "0x6100 No Paper At The Input Tray": a raw error or warning and what it means. A code without a Chinese text has the
/// English one in brackets, one without any stands alone.
QString CodeText(unsigned long dwRawCode, enLanguage enLang);

/// A foreign text with what a terminal would obey, and backslashes, written as escapes.
QString Printable(const QString& strText);

/// The same in quotes.
QString Quoted(const QString& strText);
