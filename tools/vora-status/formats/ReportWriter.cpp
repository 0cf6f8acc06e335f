// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportWriter.h"

#include "ReplyLabels.h"
#include "UtilStatusIdParser.h"

ReportWriter& ReportWriter::Add(const QString& strText)
{
    m_strText += strText;
    return *this;
}

ReportWriter& ReportWriter::Add(const char* pText)
{
    return Add(QString::fromUtf8(pText));
}

ReportWriter& ReportWriter::Add(const char* pEnglish, const char* pChinese)
{
    return Add(ByLanguage(m_enLang, pEnglish, pChinese));
}

ReportWriter& ReportWriter::AddNumber(unsigned long dwValue)
{
    return Add(QString::number(dwValue));
}

ReportWriter& ReportWriter::AddRaw(unsigned long dwValue, int iBytes)
{
    return Add(QString::asprintf("0x%0*lX", 2 * iBytes, dwValue));
}

ReportWriter& ReportWriter::AddState(unsigned long dwRawCode)
{
    AddRaw(dwRawCode, 1);
    AddMeaning(GetStatusText(GetPrinterStatusEnum(dwRawCode), m_enLang));
    return *this;
}

ReportWriter& ReportWriter::AddCode(unsigned long dwRawCode)
{
    AddRaw(dwRawCode, 2);
    const enErrorStatus enError = GetErrorStatusEnum(dwRawCode);
    const QString strEnglish = GetErrorText(enError, enLanguageEnglish);
    const QString strMeaning = GetErrorText(enError, m_enLang);
    AddMeaning(strMeaning.isEmpty() && !strEnglish.isEmpty() ? QLatin1Char('[') + strEnglish + QLatin1Char(']')
                                                             : strMeaning);
    return *this;
}

void ReportWriter::AddMeaning(const QString& strMeaning)
{
    if (!strMeaning.isEmpty()) {
        Add(" ").Add(strMeaning);
    }
}
