// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportText.h"

#include "ReplyEntries.h"
#include "StatusReport.h"

#include <algorithm>

namespace {

constexpr int c_iConnectUsb = 1;

QString ByLanguage(enLanguage enLang, const char* pEnglish, const char* pChinese)
{
    return QString::fromUtf8(enLang == enLanguageEnglish ? pEnglish : pChinese);
}

QString Line(enLanguage enLang, const QString& strName, const QString& strValue)
{
    return QStringLiteral("  ") + strName + ByLanguage(enLang, ": ", "：") + strValue + QLatin1Char('\n');
}

QString ModelText(const QString& strModel)
{
    const auto* pFound = std::find_if(std::begin(c_stModelInfoList), std::end(c_stModelInfoList),
                                      [&strModel](const stModelInfo& row) { return row.strModel == strModel; });
    const bool bKnown = pFound != std::end(c_stModelInfoList);
    return bKnown ? strModel + QStringLiteral(" (%1)").arg(pFound->strDisplayName) : Printable(strModel);
}

QString ConnectionText(const stPrinterInfo& printerInfo, enLanguage enLang)
{
    if (printerInfo.iConnectType == c_iConnectUsb) {
        return QStringLiteral("1 USB");
    }
    return QString::number(printerInfo.iConnectType) + ByLanguage(enLang, " network (", " 网络(") +
           Printable(printerInfo.strPort) + QLatin1Char(')');
}

QString PrinterText(const stPrinterInfo& printerInfo, enLanguage enLang)
{
    return Line(enLang, ByLanguage(enLang, "status file", "状态文件"),
                Printable(StatusReport::StatusPath(printerInfo))) +
           Line(enLang, ByLanguage(enLang, "model", "型号"), ModelText(printerInfo.enType)) +
           Line(enLang, ByLanguage(enLang, "connection", "连接方式"), ConnectionText(printerInfo, enLang)) +
           Line(enLang, QStringLiteral("URI"), Printable(printerInfo.strURI));
}

QString EntryName(const stReplyEntry& entry, enLanguage enLang)
{
    const QString strName = entry.pLabel->Name(enLang);
    return entry.bSupplies ? strName + QStringLiteral(" (%1)").arg(RawText(entry.dwKey, 2)) : strName;
}

QString EntryValue(const stReplyEntry& entry, enLanguage enLang)
{
    const QString strAbsent = entry.bPresent ? QString() : ByLanguage(enLang, " (not in the reply)", "（应答中没有）");
    switch (entry.enKind) {
    case enEntryRaw: return RawText(entry.dwValue, entry.iBytes);
    case enEntryState: return StateText(entry.dwValue, enLang);
    case enEntryText: return Quoted(entry.strText) + strAbsent;
    default: return QString::number(entry.dwValue) + strAbsent;
    }
}

QString EntryLines(const stReplyEntry& entry, enLanguage enLang)
{
    const QString strName = EntryName(entry, enLang);
    if (entry.enKind != enEntryCodes) {
        return Line(enLang, strName, EntryValue(entry, enLang));
    }
    if (entry.listCode.empty()) {
        return Line(enLang, strName, ByLanguage(enLang, "none", "无"));
    }
    QString strLines;
    for (const unsigned long dwCode : entry.listCode) {
        strLines += Line(enLang, strName, CodeText(dwCode, enLang));
    }
    return strLines;
}

} // namespace

QString ReportText(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsDecoded() && !report.m_printerInfo) {
        return QString();
    }
    QString strText = ReportHeading(report, enLang);
    if (report.m_printerInfo) {
        strText += PrinterText(*report.m_printerInfo, enLang);
    }
    if (report.IsDecoded()) {
        for (const stReplyEntry& entry : ReplyEntries(report)) {
            strText += EntryLines(entry, enLang);
        }
    }
    return strText;
}

QString ReportHeading(const StatusReport& report, enLanguage enLang)
{
    QString strHeading = Printable(report.m_strName);
    if (report.IsReached()) {
        strHeading += ByLanguage(enLang, ": %1 bytes", "：%1字节").arg(report.m_reply.size());
    }
    return strHeading + QLatin1Char('\n');
}
