// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportWriter.h"

#include "ReplyLabels.h"
#include "UtilStatusIdParser.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

/// Control characters and those that turn the direction of the text.
bool IsObeyed(QChar character)
{
    return character.category() == QChar::Other_Control || character.category() == QChar::Other_Format;
}

} // namespace

ReportWriter& ReportWriter::Add(const char* pEnglish, const char* pChinese)
{
    return Add(ByLanguage(m_enLang, pEnglish, pChinese));
}

ReportWriter& ReportWriter::AddNumber(unsigned long dwValue)
{
    std::array<char, 20> digits{}; // of 64 bits
    const auto result = std::to_chars(digits.begin(), digits.end(), dwValue);
    return Add({digits.data(), static_cast<std::size_t>(result.ptr - digits.begin())});
}

ReportWriter& ReportWriter::AddRaw(unsigned long dwValue, int iBytes)
{
    std::array<char, 2 + 2 * sizeof(dwValue)> text = {'0', 'x'};
    const auto iLength = 2 + 2 * static_cast<std::size_t>(iBytes);
    for (std::size_t i = iLength - 1; i >= 2; --i) {
        text.at(i) = "0123456789ABCDEF"[dwValue & 0xFU];
        dwValue >>= 4U;
    }
    return Add({text.data(), iLength});
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

ReportWriter& ReportWriter::AddPrintable(const QString& strText)
{
    AddEscaped(strText, '\0');
    return *this;
}

ReportWriter& ReportWriter::AddQuoted(const QString& strText)
{
    m_text += '"';
    AddEscaped(strText, '"');
    m_text += '"';
    return *this;
}

void ReportWriter::AddMeaning(const QString& strMeaning)
{
    if (!strMeaning.isEmpty()) {
        m_text += ' ';
        AddPrintable(strMeaning);
    }
}

/// cQuote gets a backslash too.
void ReportWriter::AddEscaped(const QString& strText, char cQuote)
{
    const auto isPlain = [cQuote](QChar c) {
        return c.unicode() >= 0x20 && c.unicode() < 0x7F && c != QLatin1Char('\\') && c != QLatin1Char(cQuote);
    };
    for (const auto* pNext = strText.begin(); pNext != strText.end();) {
        if (const auto* pEnd = std::find_if_not(pNext, strText.end(), isPlain); pEnd != pNext) {
            AddAscii(pNext, pEnd);
            pNext = pEnd;
        } else if (IsObeyed(*pNext)) {
            const ushort wCode = pNext->unicode();
            m_text += QString::asprintf(wCode <= 0xFF ? "\\x%02X" : "\\u%04X", wCode).toStdString();
            ++pNext;
        } else if (pNext->unicode() < 0x80) {
            m_text += '\\';
            m_text += pNext->toLatin1();
            ++pNext;
        } else { // together, as a character may have two halves
            pEnd = std::find_if(pNext, strText.end(), [](QChar c) { return c.unicode() < 0x80 || IsObeyed(c); });
            m_text += QString(pNext, static_cast<int>(pEnd - pNext)).toStdString();
            pNext = pEnd;
        }
    }
}

void ReportWriter::AddAscii(const QChar* pNext, const QChar* pEnd)
{
    const std::size_t iSize = m_text.size();
    m_text.resize(iSize + static_cast<std::size_t>(pEnd - pNext));
    std::transform(pNext, pEnd, &m_text[iSize], [](QChar c) { return c.toLatin1(); });
}
