// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusRendering.h"

#include "ReplyLabels.h"
#include "ReportHex.h"
#include "ReportJson.h"
#include "ReportText.h"
#include "StatusFile.h"
#include "StatusReport.h"
#include "StatusSource.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace {

constexpr int c_iJsonFormat = 1; // counts up when a key goes or changes its meaning

QByteArray JsonDocument(const QJsonArray& listReport, bool bOneLine)
{
    const QJsonDocument document(
        QJsonObject{{QStringLiteral("format"), c_iJsonFormat}, {QStringLiteral("reports"), listReport}});
    return bOneLine ? document.toJson(QJsonDocument::Compact) + '\n' : document.toJson();
}

QString Message(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsDecoded()) {
        return QString::fromUtf8(ByLanguage(enLang, ": ", "：")) + report.FailureText(enLang);
    }
    if (report.m_iFileSize > StatusFile::c_iMaxLength) {
        return QString::fromUtf8(
                   ByLanguage(enLang, ": has %1 bytes, only the first %2 are read", "：有%1字节，只读取前%2字节"))
            .arg(report.m_iFileSize)
            .arg(StatusFile::c_iMaxLength);
    }
    return QString();
}

} // namespace

StatusRendering::StatusRendering(const StatusOptions& options, StatusSource& source) : m_enLang(options.m_enLang)
{
    QJsonArray listJson;
    bool bAny = false;
    source.Collect([&](const StatusReport& report) {
        bAny = true;
        m_enExitStatus = std::max(m_enExitStatus, report.ExitStatus());
        if (options.m_enFormat == enFormatJson) {
            listJson.append(ReportJson(report));
        } else {
            AddText(report, options.m_enFormat);
        }
        const QString strMessage = Message(report, m_enLang);
        if (!strMessage.isEmpty()) {
            AddMessage(Printable(report.m_strName) + strMessage.toUtf8());
        }
    });
    if (options.m_enFormat == enFormatJson) {
        // While there is more to come, a document is one line: its reader sees where it ends.
        m_output = JsonDocument(listJson, options.m_bWatch);
    }
    if (!bAny) {
        AddMessage((c_strCfgPath + c_strPrinterListName).toUtf8() +
                   ByLanguage(m_enLang, " lists no printers", "没有列出打印机"));
    }
}

bool StatusRendering::Print(const QByteArray& prefix)
{
    const bool bWritten = WriteOutput(prefix + m_output);
    if (!bWritten) {
        m_enExitStatus = enExitFailure;
        AddMessage(ByLanguage(m_enLang, "the output cannot be written", "无法写出结果"));
    }
    WriteMessages(m_messages);
    return bWritten;
}

void StatusRendering::AddText(const StatusReport& report, enOutputFormat enFormat)
{
    const QByteArray text = enFormat == enFormatHex ? ReportHex(report, m_enLang) : ReportText(report, m_enLang);
    if (!m_output.isEmpty() && !text.isEmpty()) {
        m_output += '\n';
    }
    m_output += text;
}

void StatusRendering::AddMessage(const QByteArray& text)
{
    m_messages += MessageLine(text);
}
