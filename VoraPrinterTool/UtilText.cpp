// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilText.h"

bool IsObeyedByTerminals(uint dwCode)
{
    switch (QChar::category(dwCode)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return true;
    default: return false;
    }
}

QString EscapeOf(uint dwCode)
{
    return QString::asprintf(dwCode <= 0xFF ? "\\x%02X" : dwCode <= 0xFFFF ? "\\u%04X" : "\\U%08X", dwCode);
}

QString EscapeControls(const QString& strText)
{
    QString strEscaped;
    ForEachCharacter(strText, [&strEscaped](uint dwCode, const QChar* pHalves, int iHalves) {
        if (IsObeyedByTerminals(dwCode)) {
            strEscaped += EscapeOf(dwCode);
        } else {
            strEscaped.append(pHalves, iHalves);
        }
    });
    return strEscaped;
}
