// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilText.h"

namespace {

bool IsObeyed(uint dwCode)
{
    switch (QChar::category(dwCode)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return true;
    default: return false;
    }
}

} // namespace

QString EscapeControls(const QString& strText)
{
    QString strEscaped;
    for (auto it = strText.begin(); it != strText.end(); ++it) {
        const auto next = it + 1;
        const bool bPair = it->isHighSurrogate() && next != strText.end() && next->isLowSurrogate();
        const uint dwCode = bPair ? QChar::surrogateToUcs4(*it, *next) : it->unicode();
        if (IsObeyed(dwCode)) {
            strEscaped += QString::asprintf(dwCode <= 0xFF ? "\\x%02X" : bPair ? "\\U%08X" : "\\u%04X", dwCode);
        } else {
            strEscaped.append(&*it, bPair ? 2 : 1);
        }
        it += bPair ? 1 : 0;
    }
    return strEscaped;
}
