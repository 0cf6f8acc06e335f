// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportHex.h"

#include "ReplyLabels.h"
#include "ReportText.h"
#include "StatusReport.h"

namespace {

constexpr int c_iBytesPerLine = 8;

QByteArray LatinText(const QByteArray& bytes)
{
    return Quoted(QString::fromLatin1(bytes));
}

QByteArray NumberText(unsigned long dwValue)
{
    return QByteArray::number(static_cast<qulonglong>(dwValue));
}

/// "error 2", "supplies data 1 (black ink left, per cent)": counted from 1, as people do.
QByteArray FieldName(const stReplyField& field, enLanguage enLang)
{
    const char* pName = FieldLabel(field.enField).Name(enLang);
    switch (field.enField) {
    case enFieldError:
    case enFieldWarning:
    case enFieldSuppliesKey:
    case enFieldSuppliesLength:
    case enFieldSuppliesData: return pName + (' ' + QByteArray::number(field.iIndex + 1));
    default: return pName;
    }
}

QByteArray SuppliesValue(const stReplyField& field, const QByteArray& bytes, enLanguage enLang)
{
    const stReplyLabel* pLabel = SuppliesLabel(field.dwKey);
    if (field.enField == enFieldSuppliesKey) {
        const char* pUnknown = ByLanguage(enLang, "unknown, skipped", "未知，跳过");
        return RawText(field.dwKey, 2) + ' ' + (pLabel != nullptr ? pLabel->Name(enLang) : pUnknown);
    }
    if (pLabel == nullptr) {
        return QByteArray();
    }
    return field.dwKey == 0x0000 ? LatinText(bytes) : NumberText(field.dwValue);
}

QByteArray FieldValue(const stReplyField& field, const QByteArray& bytes, enLanguage enLang)
{
    switch (field.enField) {
    case enFieldUnexamined:
    case enFieldIgnored: return QByteArray();
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
    default: return NumberText(field.dwValue);
    }
}

/// Eight bytes a line, the words beside the first.
QByteArray Lines(int iOffset, const QByteArray& bytes, const QByteArray& words)
{
    QByteArray lines;
    int iDone = 0;
    do {
        QByteArray line = QByteArray::number(iOffset + iDone).rightJustified(6) + "  " +
                          bytes.mid(iDone, c_iBytesPerLine).toHex(' ').toUpper();
        if (iDone == 0) {
            line = line.leftJustified(8 + 3 * c_iBytesPerLine + 1) + words;
        }
        lines += line + '\n';
        iDone += c_iBytesPerLine;
    } while (iDone < bytes.size());
    return lines;
}

} // namespace

QByteArray ReportHex(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsReached()) {
        return QByteArray();
    }
    QByteArray text = ReportHeading(report, enLang);
    const char* pColon = ByLanguage(enLang, ": ", "：");
    for (const stReplyField& field : report.m_layout.Fields()) {
        const QByteArray bytes = report.m_reply.mid(field.iOffset, field.iLength);
        const QByteArray value = FieldValue(field, bytes, enLang);
        QByteArray words = FieldName(field, enLang);
        if (!value.isEmpty()) {
            words += pColon + value;
        }
        text += Lines(field.iOffset, bytes, words);
    }
    if (report.m_layout.Fault() == enReplyTruncated) {
        const stReplyField& broken = report.m_layout.BrokenField();
        text += Lines(broken.iOffset, report.m_reply.mid(broken.iOffset), FieldName(broken, enLang));
    }
    return report.IsRejected() ? text + report.FailureText(enLang).toUtf8() + '\n' : text;
}
