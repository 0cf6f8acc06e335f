// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QStringList>

#include <optional>

enum enOutputFormat
{
    enFormatText,
    enFormatHex,
    enFormatJson,
    enFormatOverview,
    enFormatPrometheus
};

/// What the command line asks for. Used by one thread at a time.
class StatusOptions
{
public:
    /// Reads the arguments, the program's name first. Throws ToolError when they are wrong, in the language that they
    /// ask for.
    void Parse(const QStringList& listArgument);

    /// What --help prints, UTF-8, in m_enLang.
    const char* HelpText() const;

    enLanguage m_enLang = enLanguageEnglish; ///< the locale's unless the command line names another
    enOutputFormat m_enFormat = enFormatOverview;
    bool m_bWatch = false;
    bool m_bHelp = false;
    bool m_bVersion = false;
    bool m_bUdp = false;
    QString m_strAddress;               ///< with m_bUdp
    QStringList m_listPath;             ///< none: the driver folder's printers
    std::optional<QString> m_strOutput; ///< with enFormatPrometheus; none: standard output

private:
    [[noreturn]] void Fail(const char* pEnglish, const char* pChinese, const QString& strDetail = QString()) const;
};
