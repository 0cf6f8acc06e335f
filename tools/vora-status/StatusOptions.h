// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QStringList>

enum enOutputFormat
{
    enFormatText,
    enFormatHex,
    enFormatJson
};

/// What the command line asks for. Used by one thread at a time.
class StatusOptions
{
public:
    /// Reads the arguments, the program's name first. False when they are wrong; m_strError then says why, in
    /// m_enLang, which is known in any case.
    bool Parse(const QStringList& listArgument);

    /// What --help prints, UTF-8, in m_enLang.
    const char* HelpText() const;

    enLanguage m_enLang = enLanguageEnglish; ///< the locale's unless the command line names another
    enOutputFormat m_enFormat = enFormatText;
    bool m_bWatch = false;
    bool m_bHelp = false;
    bool m_bUdp = false;
    QString m_strAddress;   ///< with m_bUdp
    QStringList m_listPath; ///< none: the driver folder's printers
    QString m_strError;

private:
    bool Fail(const char* pEnglish, const char* pChinese, const QString& strDetail = QString());
};
