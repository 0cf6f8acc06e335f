// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ReplyLayout.h"
#include "UtilLanguageCtrl.h"

#include <QString>

#include <array>

// What the pieces of a reply are called; all texts for people as UTF-8. The keys are those that scenarios use.
// Functions are called from any thread.

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

const stReplyLabel& PartLabel(enReplyPart enField);

/// What a supplies record of the key holds; null for a key that the program skips.
const stReplyLabel* SuppliesLabel(unsigned long dwKey);
