// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusRendering.h"

#include "ReplyLabels.h"
#include "ReportHex.h"
#include "ReportJson.h"
#include "ReportText.h"
#include "ReportWriter.h"
#include "StatusFile.h"
#include "StatusReport.h"
#include "StatusSource.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace {

constexpr int c_iJsonFormat = 1;            // counts up when a key goes or changes its meaning
constexpr std::size_t c_iBlock = 64 * 1024; // what is written at once

std::string JsonDocument(const QJsonArray& listReport, bool bOneLine)
{
    const QJsonDocument document(
        QJsonObject{{QStringLiteral("format"), c_iJsonFormat}, {QStringLiteral("reports"), listReport}});
    return bOneLine ? document.toJson(QJsonDocument::Compact).toStdString() + '\n' : document.toJson().toStdString();
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

/// What the exit status says about one report alone.
enExitStatus ExitStatusOf(const StatusReport& report)
{
    if (!report.IsDecoded()) {
        return enExitFailure;
    }
    return report.m_state.listErrorStatus.isEmpty() ? enExitGood : enExitErrors;
}

} // namespace

StatusRendering::StatusRendering(const StatusOptions& options, StatusSource& source) : m_enLang(options.m_enLang)
{
    QJsonArray listJson;
    bool bAny = false;
    source.Collect([&](const StatusReport& report) {
        bAny = true;
        m_enExitStatus = std::max(m_enExitStatus, ExitStatusOf(report));
        if (options.m_enFormat == enFormatJson) {
            listJson.append(ReportJson(report));
        } else {
            AddText(report, options.m_enFormat);
        }
        if (!options.m_bWatch && m_output.size() >= c_iBlock) {
            WriteBlock();
        }
        AddMessage(report);
    });
    if (options.m_enFormat == enFormatJson) {
        // While there is more to come, a document is one line: its reader sees where it ends.
        m_output = JsonDocument(listJson, options.m_bWatch);
    }
    if (!bAny) {
        m_messages += MessageLine((c_strCfgPath + c_strPrinterListName).toStdString() +
                                  ByLanguage(m_enLang, " lists no printers", "没有列出打印机"));
    }
}

bool StatusRendering::Print(const std::string& prefix)
{
    m_bWritten = m_bWritten && WriteOutput(prefix + m_output);
    if (!m_bWritten) {
        m_enExitStatus = enExitFailure;
        m_messages += MessageLine(ByLanguage(m_enLang, "the output cannot be written", "无法写出结果"));
    }
    WriteMessages(m_messages);
    return m_bWritten;
}

void StatusRendering::AddText(const StatusReport& report, enOutputFormat enFormat)
{
    const std::size_t iBefore = m_output.size();
    if (m_bAnyText) {
        m_output += '\n';
    }
    const std::size_t iStart = m_output.size();
    if (enFormat == enFormatHex) {
        AddReportHex(report, m_enLang, m_output);
    } else {
        AddReportText(report, m_enLang, m_output);
    }
    if (m_output.size() > iStart) {
        m_bAnyText = true;
    } else {
        m_output.resize(iBefore);
    }
}

void StatusRendering::WriteBlock()
{
    m_bWritten = m_bWritten && WriteOutput(m_output);
    m_output.clear();
}

void StatusRendering::AddMessage(const StatusReport& report)
{
    const QString strMessage = Message(report, m_enLang);
    if (!strMessage.isEmpty()) {
        std::string name;
        ReportWriter(name, m_enLang).AddPrintable(report.m_strName);
        m_messages += MessageLine(name + strMessage.toStdString());
    }
}
