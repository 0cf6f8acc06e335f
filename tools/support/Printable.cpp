// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Printable.h"

namespace {

/// Calls handle for each character: with its code and its one or two halves.
template <typename Handle>
void ForEachCharacter(const QString& strText, const Handle& handle)
{
    for (int i = 0; i < strText.size(); ++i) {
        const QChar c = strText.at(i);
        if (c.isHighSurrogate() && i + 1 < strText.size() && strText.at(i + 1).isLowSurrogate()) {
            handle(QChar::surrogateToUcs4(c, strText.at(i + 1)), strText.mid(i, 2));
            ++i;
        } else {
            handle(c.unicode(), QString(c));
        }
    }
}

/// Control and format characters, such as those that turn the direction of the text, what ends a line or a paragraph,
/// and halves without the other.
bool IsObeyedByTerminals(uint dwCode)
{
    switch (QChar::category(dwCode)) {
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph: return true;
    default: return false;
    }
}

/// The characters in strBackslashed get a backslash.
QString Escaped(const QString& strText, const QString& strBackslashed)
{
    QString strEscaped;
    ForEachCharacter(strText, [&](uint dwCode, const QString& strCharacter) {
        if (IsObeyedByTerminals(dwCode)) {
            strEscaped += QString::asprintf(dwCode <= 0xFF     ? "\\x%02X"
                                            : dwCode <= 0xFFFF ? "\\u%04X"
                                                               : "\\U%08X",
                                            dwCode);
        } else {
            strEscaped += strBackslashed.contains(strCharacter) ? QLatin1Char('\\') + strCharacter : strCharacter;
        }
    });
    return strEscaped;
}

} // namespace

QString Printable(const QString& strText)
{
    return Escaped(strText, QStringLiteral("\\"));
}

QString Quoted(const QString& strText)
{
    return QLatin1Char('"') + Escaped(strText, QStringLiteral("\\\"")) + QLatin1Char('"');
}

QByteArray PrintableJson(const QByteArray& json)
{
    QString strEscaped;
    ForEachCharacter(QString::fromUtf8(json), [&strEscaped](uint dwCode, const QString& strCharacter) {
        if (dwCode == '\n' || !IsObeyedByTerminals(dwCode)) { // the end of a line stands between texts only
            strEscaped += strCharacter;
            return;
        }
        for (const QChar half : strCharacter) {
            strEscaped += QString::asprintf("\\u%04x", half.unicode());
        }
    });
    return strEscaped.toUtf8();
}
