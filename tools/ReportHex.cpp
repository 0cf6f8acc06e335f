// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportHex.h"

#include "ReplyLabels.h"
#include "ReportText.h"
#include "StatusReport.h"

namespace {

constexpr int c_iBytesPerLine = 8;

QString LatinText(const QByteArray& bytes)
{
    return Quoted(QString::fromLatin1(bytes));
}

/// "error 2", "supplies data 1 (black ink left, per cent)": counted from 1, as people do.
QString FieldName(const stReplyField& field, enLanguage enLang)
{
    QString strName = FieldLabel(field.enField).Name(enLang);
    switch (field.enField) {
    case enFieldError:
    case enFieldWarning:
    case enFieldSuppliesKey:
    case enFieldSuppliesLength:
    case enFieldSuppliesData: return strName + QStringLiteral(" %1").arg(field.iIndex + 1);
    default: return strName;
    }
}

QString SuppliesValue(const stReplyField& field, const QByteArray& bytes, enLanguage enLang)
{
    const stReplyLabel* pLabel = SuppliesLabel(field.dwKey);
    if (field.enField == enFieldSuppliesKey) {
        const QString strMeaning =
            pLabel != nullptr ? pLabel->Name(enLang)
                              : QString::fromUtf8(enLang == enLanguageEnglish ? "unknown, skipped" : "未知，跳过");
        return RawText(field.dwKey, 2) + QLatin1Char(' ') + strMeaning;
    }
    if (pLabel == nullptr) {
        return QString();
    }
    return field.dwKey == 0x0000 ? LatinText(bytes) : QString::number(field.dwValue);
}

QString FieldValue(const stReplyField& field, const QByteArray& bytes, enLanguage enLang)
{
    switch (field.enField) {
    case enFieldUnexamined:
    case enFieldIgnored: return QString();
    case enFieldVendor:
    case enFieldProduct:
    case enFieldSerial:
    case enFieldFirmware:
    case enFieldFifthString: return LatinText(bytes);
    case enFieldState: return StateText(field.dwValue, enLang);
    case enFieldError:
    case enFieldWarning: return CodeText(field.dwValue, enLang);
    case enFieldHeader:
    case enFieldHeaderField1:
    case enFieldHeaderField2:
    case enFieldAfterSerial:
    case enFieldBeforeSupplies:
    case enFieldBeforeSupplies1:
    case enFieldBeforeSupplies2: return RawText(field.dwValue, field.iLength);
    case enFieldSuppliesKey:
    case enFieldSuppliesData: return SuppliesValue(field, bytes, enLang);
    default: return QString::number(field.dwValue);
    }
}

/// Eight bytes a line, the words beside the first.
QString Lines(int iOffset, const QByteArray& bytes, const QString& strWords)
{
    QString strLines;
    int iDone = 0;
    do {
        const QString strBytes = QString::fromLatin1(bytes.mid(iDone, c_iBytesPerLine).toHex(' ').toUpper());
        QString strLine = QString::asprintf("%6d  ", iOffset + iDone) + strBytes;
        if (iDone == 0) {
            strLine = strLine.leftJustified(8 + 3 * c_iBytesPerLine + 1) + strWords;
        }
        strLines += strLine + QLatin1Char('\n');
        iDone += c_iBytesPerLine;
    } while (iDone < bytes.size());
    return strLines;
}

} // namespace

QString ReportHex(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsReached()) {
        return QString();
    }
    QString strText = ReportHeading(report, enLang);
    const QString strColon = QString::fromUtf8(enLang == enLanguageEnglish ? ": " : "：");
    for (const stReplyField& field : report.m_layout.Fields()) {
        const QByteArray bytes = report.m_reply.mid(field.iOffset, field.iLength);
        const QString strValue = FieldValue(field, bytes, enLang);
        QString strWords = FieldName(field, enLang);
        if (!strValue.isEmpty()) {
            strWords += strColon + strValue;
        }
        strText += Lines(field.iOffset, bytes, strWords);
    }
    if (report.m_layout.Fault() == enReplyTruncated) {
        const stReplyField& broken = report.m_layout.BrokenField();
        strText += Lines(broken.iOffset, report.m_reply.mid(broken.iOffset), FieldName(broken, enLang));
    }
    return report.IsRejected() ? strText + report.FailureText(enLang) + QLatin1Char('\n') : strText;
}
