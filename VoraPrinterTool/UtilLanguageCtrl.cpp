// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLanguageCtrl.h"

#define VORA_TEXTS(pEnglish, pChinese) {QStringLiteral(pEnglish), QStringLiteral(pChinese)},

const QString c_strStatusLanguageText[][enLanguageCount] = {
#define VORA_STATE(enStatus, wRawCode, pName, pEnglish, pChinese) VORA_TEXTS(pEnglish, pChinese)
#define VORA_UNSENT_STATE(enStatus, pName, pEnglish, pChinese) VORA_TEXTS(pEnglish, pChinese)
#include "StatusCodes.def"
};

const QString c_strErrorDescText[][enLanguageCount] = {
#define VORA_ERROR(enError, wRawCode, pName, pEnglish, pChinese) VORA_TEXTS(pEnglish, pChinese)
#define VORA_UNSENT_ERROR(enError, pName, pEnglish, pChinese) VORA_TEXTS(pEnglish, pChinese)
#include "StatusCodes.def"
};

namespace {

template <int iRows>
QString TextAt(const QString (&table)[iRows][enLanguageCount], int iRow, int iLanguage)
{
    const bool bInTable = iRow >= 0 && iRow < iRows && iLanguage >= 0 && iLanguage < enLanguageCount;
    return bInTable ? table[iRow][iLanguage] : QString();
}

} // namespace

QString GetStatusText(int iStatus, int iLanguage)
{
    return TextAt(c_strStatusLanguageText, iStatus, iLanguage);
}

QString GetErrorText(int iError, int iLanguage)
{
    return TextAt(c_strErrorDescText, iError, iLanguage);
}
