// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Printable.h"

#include "QtCompat.h"
#include "UtilText.h"

namespace {

/// Halves without the other too, which no output in UTF-8 can hold.
bool IsEscaped(uint dwCode)
{
    return IsObeyedByTerminals(dwCode) || QChar::isSurrogate(dwCode);
}

/// The characters in strBackslashed get a backslash.
QString Escaped(const QString& strText, const QString& strBackslashed)
{
    QString strEscaped;
    ForEachCharacter(strText, [&](uint dwCode, const QChar* pHalves, int iHalves) {
        if (IsEscaped(dwCode)) {
            strEscaped += EscapeOf(dwCode);
        } else {
            strEscaped += QLatin1String(strBackslashed.contains(*pHalves) ? "\\" : "");
            strEscaped.append(pHalves, iHalves);
        }
    });
    return strEscaped;
}

} // namespace

QString Printable(const QString& strText)
{
    return Escaped(strText, u"\\"_s);
}

QString Quoted(const QString& strText)
{
    return QLatin1Char('"') + Escaped(strText, u"\\\""_s) + QLatin1Char('"');
}

QByteArray PrintableJson(const QByteArray& json)
{
    QString strEscaped;
    ForEachCharacter(QString::fromUtf8(json), [&strEscaped](uint dwCode, const QChar* pHalves, int iHalves) {
        if (dwCode == '\n' || !IsEscaped(dwCode)) { // the end of a line stands between texts only
            strEscaped.append(pHalves, iHalves);
            return;
        }
        for (int i = 0; i < iHalves; ++i) {
            strEscaped += QString::asprintf("\\u%04x", pHalves[i].unicode());
        }
    });
    return strEscaped.toUtf8();
}
