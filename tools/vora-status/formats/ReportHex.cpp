// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportHex.h"

#include "Printable.h"
#include "ReplyLabels.h"
#include "ReportText.h"
#include "ReportWriter.h"
#include "StatusReport.h"

namespace {

constexpr int c_iBytesPerLine = 8;

/// "error 2", "supplies data 1 (black ink left, per cent)": counted from 1, as people do.
void AddFieldName(ReportWriter& writer, const stFieldPlace& field)
{
    writer.Add(PartLabel(field.enField).Name(writer.Language()));
    switch (field.enField) {
    case enFieldError:
    case enFieldWarning:
    case enFieldSuppliesKey:
    case enFieldSuppliesLength:
    case enFieldSuppliesData: writer.Add(" ").AddNumber(static_cast<unsigned long>(field.iIndex) + 1); break;
    default: break;
    }
}

void AddSuppliesValue(ReportWriter& writer, const stFieldPlace& field, const QByteArray& bytes)
{
    const stReplyLabel* pLabel = SuppliesLabel(field.dwKey);
    if (field.enField == enFieldSuppliesKey) {
        writer.AddRaw(field.dwKey, 2).Add(" ");
        if (pLabel != nullptr) {
            writer.Add(pLabel->Name(writer.Language()));
        } else {
            writer.Add("unknown, skipped", "未知，跳过");
        }
    } else if (pLabel != nullptr && field.dwKey == enSuppliesSerialNumber) {
        writer.Add(Quoted(QString::fromLatin1(bytes)));
    } else if (pLabel != nullptr) {
        writer.AddNumber(field.dwValue);
    }
}

void AddFieldValue(ReportWriter& writer, const stFieldPlace& field, const QByteArray& bytes)
{
    switch (field.enField) {
    case enFieldUnexamined:
    case enFieldIgnored: break;
    case enFieldVendor:
    case enFieldProduct:
    case enFieldSerial:
    case enFieldFirmware:
    case enFieldFifthString: writer.Add(Quoted(QString::fromLatin1(bytes))); break;
    case enFieldState: writer.AddState(field.dwValue); break;
    case enFieldError:
    case enFieldWarning: writer.AddCode(field.dwValue); break;
    case enFieldHeader:
    case enFieldHeaderField1:
    case enFieldHeaderField2:
    case enFieldAfterSerial:
    case enFieldBeforeSupplies:
    case enFieldBeforeSupplies1:
    case enFieldBeforeSupplies2: writer.AddRaw(field.dwValue, field.iLength); break;
    case enFieldSuppliesKey:
    case enFieldSuppliesData: AddSuppliesValue(writer, field, bytes); break;
    default: writer.AddNumber(field.dwValue); break;
    }
}

/// The name and, where there is one, the value.
QString Words(const stFieldPlace& field, const QByteArray& bytes, enLanguage enLang)
{
    ReportWriter value(enLang);
    AddFieldValue(value, field, bytes);
    ReportWriter words(enLang);
    AddFieldName(words, field);
    if (!value.Text().isEmpty()) {
        words.Add(": ", "：").Add(value.Text());
    }
    return words.Text();
}

/// Eight bytes a line, the words beside the first.
void AddLines(ReportWriter& writer, int iOffset, const QByteArray& bytes, const QString& strWords)
{
    int iDone = 0;
    do {
        QByteArray line = QByteArray::number(iOffset + iDone).rightJustified(6) + "  " +
                          bytes.mid(iDone, c_iBytesPerLine).toHex(' ').toUpper();
        if (iDone == 0) {
            line = line.leftJustified(8 + 3 * c_iBytesPerLine + 1);
        }
        writer.Add(QString::fromLatin1(line)).Add(iDone == 0 ? strWords : QString()).Add("\n");
        iDone += c_iBytesPerLine;
    } while (iDone < bytes.size());
}

} // namespace

QString ReportHex(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsReached()) {
        return QString();
    }
    ReportWriter writer(enLang);
    AddReportHeading(report, writer);
    for (const stFieldPlace& field : report.m_layout.Fields()) {
        const QByteArray bytes = report.m_reply.mid(field.iOffset, field.iLength);
        AddLines(writer, field.iOffset, bytes, Words(field, bytes, enLang));
    }
    if (report.m_layout.Fault() == enReplyTruncated) {
        const stFieldPlace& broken = report.m_layout.BrokenField();
        ReportWriter name(enLang);
        AddFieldName(name, broken);
        AddLines(writer, broken.iOffset, report.m_reply.mid(broken.iOffset), name.Text());
    }
    if (report.IsRejected()) {
        writer.Add(report.FailureText(enLang)).Add("\n");
    }
    return writer.Text();
}
