// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

// The texts that users see: the first index is the enumeration value, the second the language.
// They are part of the product, oddities included, and are not to be normalised. Called
// from any thread.

enum enLanguage
{
    enLanguageEnglish = 0,
    enLanguageChinese = 1,
    enLanguageCount = 2
};

extern const QString c_strStatusLanguageText[enStatusCount][enLanguageCount];
extern const QString c_strErrorDescText[enErrorCount][enLanguageCount];

/// Text of an enPrinterStatus value in an enLanguage; empty for a number outside the table.
QString GetStatusText(int iStatus, int iLanguage);

/// Text of an enErrorStatus value in an enLanguage; empty for a number outside the table.
QString GetErrorText(int iError, int iLanguage);
