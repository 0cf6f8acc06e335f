// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportText.h"

#include "Printable.h"
#include "ReplyEntries.h"
#include "ReportWriter.h"
#include "StatusReport.h"

#include <algorithm>

namespace {

void AddValueMark(ReportWriter& writer)
{
    writer.Add(": ", "：");
}

void AddName(ReportWriter& writer, const char* pEnglish, const char* pChinese)
{
    writer.Add("  ").Add(pEnglish, pChinese);
    AddValueMark(writer);
}

void AddModel(ReportWriter& writer, const QString& strModel)
{
    writer.Add(Printable(strModel));
    const auto* pFound = std::find_if(std::begin(c_stModelInfoList), std::end(c_stModelInfoList),
                                      [&strModel](const stModelInfo& row) { return row.strModel == strModel; });
    if (pFound != std::end(c_stModelInfoList)) {
        writer.Add(" (").Add(pFound->strDisplayName).Add(")");
    }
}

void AddPrinter(ReportWriter& writer, const stPrinterInfo& printerInfo)
{
    AddName(writer, "status file", "状态文件");
    writer.Add(Printable(StatusFilePath(printerInfo.strPrinterName))).Add("\n");
    AddName(writer, "model", "型号");
    AddModel(writer, printerInfo.enType);
    writer.Add("\n");
    AddName(writer, "connection", "连接方式");
    if (printerInfo.iConnectType == c_iConnectUsb) {
        writer.Add("1 USB\n");
    } else {
        writer.Add(QString::number(printerInfo.iConnectType)).Add(" network (", " 网络(");
        writer.Add(Printable(printerInfo.strPort)).Add(")\n");
    }
    AddName(writer, "URI", "URI");
    writer.Add(Printable(printerInfo.strURI)).Add("\n");
}

void AddEntryName(ReportWriter& writer, const stReplyEntry& entry)
{
    writer.Add("  ").Add(entry.pLabel->Name(writer.Language()));
    if (entry.bSupplies) {
        writer.Add(" (").AddRaw(entry.dwKey, 2).Add(")");
    }
    AddValueMark(writer);
}

/// A line for each code, or one that says that there is none.
void AddCodes(ReportWriter& writer, const stReplyEntry& entry)
{
    for (const unsigned long dwCode : *entry.pListCode) {
        AddEntryName(writer, entry);
        writer.AddCode(dwCode).Add("\n");
    }
    if (entry.pListCode->empty()) {
        AddEntryName(writer, entry);
        writer.Add("none", "无").Add("\n");
    }
}

void AddEntry(ReportWriter& writer, const stReplyEntry& entry)
{
    if (entry.enKind == enEntryCodes) {
        AddCodes(writer, entry);
        return;
    }
    AddEntryName(writer, entry);
    switch (entry.enKind) {
    case enEntryRaw: writer.AddRaw(entry.dwValue, entry.iBytes); break;
    case enEntryState: writer.AddState(entry.dwValue); break;
    case enEntryText: writer.Add(Quoted(entry.strText)); break;
    default: writer.AddNumber(entry.dwValue); break;
    }
    if (!entry.bPresent) {
        writer.Add(" (not in the reply)", "（应答中没有）");
    }
    writer.Add("\n");
}

} // namespace

QString ReportText(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsDecoded() && !report.m_printerInfo) {
        return QString();
    }
    ReportWriter writer(enLang);
    AddReportHeading(report, writer);
    if (report.m_printerInfo) {
        AddPrinter(writer, *report.m_printerInfo);
    }
    if (report.IsDecoded()) {
        for (const stReplyEntry& entry : ReplyEntries(report)) {
            AddEntry(writer, entry);
        }
    }
    return writer.Text();
}

void AddReportHeading(const StatusReport& report, ReportWriter& writer)
{
    writer.Add(Printable(report.m_strName));
    if (report.IsReached()) {
        AddValueMark(writer);
        writer.AddNumber(static_cast<unsigned long>(report.m_reply.size())).Add(" bytes", "字节");
    }
    writer.Add("\n");
}
