// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportText.h"

#include "ReplyEntries.h"
#include "StatusReport.h"

#include <algorithm>

namespace {

QByteArray ModelText(const QString& strModel)
{
    const auto* pFound = std::find_if(std::begin(c_stModelInfoList), std::end(c_stModelInfoList),
                                      [&strModel](const stModelInfo& row) { return row.strModel == strModel; });
    const bool bKnown = pFound != std::end(c_stModelInfoList);
    return bKnown ? strModel.toUtf8() + " (" + pFound->strDisplayName.toUtf8() + ')' : Printable(strModel);
}

QByteArray ConnectionText(const stPrinterInfo& printerInfo, enLanguage enLang)
{
    if (printerInfo.iConnectType == c_iConnectUsb) {
        return "1 USB";
    }
    return QByteArray::number(printerInfo.iConnectType) + ByLanguage(enLang, " network (", " 网络(") +
           Printable(printerInfo.strPort) + ')';
}

/// The text of one report, put together in one buffer: support looks at thousands of files at times.
class ReportLines
{
public:
    explicit ReportLines(enLanguage enLang) : m_enLang(enLang) { m_text.reserve(4096); }

    void Add(const QByteArray& text) { m_text.append(text); }

    void AddPrinter(const stPrinterInfo& printerInfo)
    {
        AddLine(ByLanguage(m_enLang, "status file", "状态文件"), Printable(StatusFilePath(printerInfo.strPrinterName)));
        AddLine(ByLanguage(m_enLang, "model", "型号"), ModelText(printerInfo.enType));
        AddLine(ByLanguage(m_enLang, "connection", "连接方式"), ConnectionText(printerInfo, m_enLang));
        AddLine("URI", Printable(printerInfo.strURI));
    }

    void AddEntry(const stReplyEntry& entry)
    {
        if (entry.enKind != enEntryCodes) {
            AddEntryLine(entry, EntryValue(entry));
            return;
        }
        for (const unsigned long dwCode : entry.listCode) {
            AddEntryLine(entry, CodeText(dwCode, m_enLang));
        }
        if (entry.listCode.empty()) {
            AddEntryLine(entry, ByLanguage(m_enLang, "none", "无"));
        }
    }

    const QByteArray& Text() const { return m_text; }

private:
    void AddLine(const char* pName, const QByteArray& value)
    {
        m_text.append("  ").append(pName);
        AddValue(value);
    }

    void AddEntryLine(const stReplyEntry& entry, const QByteArray& value)
    {
        m_text.append("  ").append(entry.pLabel->Name(m_enLang));
        if (entry.bSupplies) {
            m_text.append(" (").append(RawText(entry.dwKey, 2)).append(')');
        }
        AddValue(value);
    }

    void AddValue(const QByteArray& value)
    {
        m_text.append(ByLanguage(m_enLang, ": ", "：")).append(value).append('\n');
    }

    QByteArray EntryValue(const stReplyEntry& entry) const
    {
        const char* pAbsent = entry.bPresent ? "" : ByLanguage(m_enLang, " (not in the reply)", "（应答中没有）");
        switch (entry.enKind) {
        case enEntryRaw: return RawText(entry.dwValue, entry.iBytes);
        case enEntryState: return StateText(entry.dwValue, m_enLang);
        case enEntryText: return Quoted(entry.strText) + pAbsent;
        default: return QByteArray::number(static_cast<qulonglong>(entry.dwValue)) + pAbsent;
        }
    }

    enLanguage m_enLang;
    QByteArray m_text;
};

} // namespace

QByteArray ReportText(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsDecoded() && !report.m_printerInfo) {
        return QByteArray();
    }
    ReportLines lines(enLang);
    lines.Add(ReportHeading(report, enLang));
    if (report.m_printerInfo) {
        lines.AddPrinter(*report.m_printerInfo);
    }
    if (report.IsDecoded()) {
        for (const stReplyEntry& entry : ReplyEntries(report)) {
            lines.AddEntry(entry);
        }
    }
    return lines.Text();
}

QByteArray ReportHeading(const StatusReport& report, enLanguage enLang)
{
    QByteArray heading = Printable(report.m_strName);
    if (report.IsReached()) {
        heading += ByLanguage(enLang, ": ", "：") + QByteArray::number(report.m_reply.size()) +
                   ByLanguage(enLang, " bytes", "字节");
    }
    return heading + '\n';
}
