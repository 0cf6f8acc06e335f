// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusRendering.h"

#include "Printable.h"
#include "ReplyLabels.h"
#include "ReportHex.h"
#include "ReportJson.h"
#include "ReportOverview.h"
#include "ReportText.h"
#include "StatusReport.h"
#include "StatusSource.h"
#include "TerminalText.h"
#include "ToolOutput.h"
#include "UtilStatusFile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <cerrno>

namespace {

constexpr int c_iJsonFormat = 1; // counts up when a key goes or changes its meaning

QByteArray JsonDocument(const QJsonArray& listReport, bool bOneLine)
{
    const QJsonDocument document(QJsonObject{{u"format"_s, c_iJsonFormat}, {u"reports"_s, listReport}});
    return PrintableJson(bOneLine ? document.toJson(QJsonDocument::Compact) + '\n' : document.toJson());
}

/// What standard error tells about the report; empty when that is nothing.
QString Message(const StatusReport& report, enLanguage enLang)
{
    if (!report.IsDecoded()) {
        return report.m_strName + QString::fromUtf8(ByLanguage(enLang, ": ", "：")) + report.FailureText(enLang);
    }
    if (report.m_iFileSize > c_iMaxStatusLength) {
        const QString strText = QString::fromUtf8(
            ByLanguage(enLang, ": has %1 bytes, only the first %2 are read", "：有%1字节，只读取前%2字节"));
        return report.m_strName + strText.arg(report.m_iFileSize).arg(c_iMaxStatusLength);
    }
    return QString();
}

/// What the exit status says about one report alone.
enExitStatus ExitStatusOf(const StatusReport& report)
{
    if (!report.IsDecoded()) {
        return enExitFailure;
    }
    return report.m_state.listErrorStatus.isEmpty() ? enExitGood : enExitPrinterErrors;
}

} // namespace

stStatusRendering RenderStatus(const StatusOptions& options, StatusSource& source)
{
    stStatusRendering rendering;
    ReportOverview overview(options.m_enLang, IsColorWanted());
    QJsonArray listJson;
    bool bAny = false;
    source.Collect([&](const StatusReport& report) {
        bAny = true;
        rendering.enStatus = std::max(rendering.enStatus, ExitStatusOf(report));
        const QString strMessage = Message(report, options.m_enLang);
        if (!strMessage.isEmpty()) {
            rendering.listMessage.append(strMessage);
        }
        if (options.m_enFormat == enFormatJson) {
            listJson.append(ReportJson(report));
            return;
        }
        if (options.m_enFormat == enFormatOverview) {
            overview.Add(report);
            return;
        }
        const QString strText = options.m_enFormat == enFormatHex ? ReportHex(report, options.m_enLang)
                                                                  : ReportText(report, options.m_enLang);
        if (!strText.isEmpty()) {
            rendering.output += (rendering.output.isEmpty() ? "" : "\n") + strText.toUtf8();
        }
    });
    if (options.m_enFormat == enFormatJson) {
        // While there is more to come, a document is one line: its reader sees where it ends.
        rendering.output = JsonDocument(listJson, options.m_bWatch);
    } else if (options.m_enFormat == enFormatOverview) {
        rendering.output = overview.Text().toUtf8();
    }
    if (!bAny) {
        rendering.listMessage.append(
            c_strCfgPath + c_strPrinterListName +
            QString::fromUtf8(ByLanguage(options.m_enLang, " lists no printers", "没有列出打印机")));
    }
    return rendering;
}

void PrintStatus(const stStatusRendering& rendering, enLanguage enLang, const EndSignals* pEndSignals)
{
    const int iError = WriteOutput(rendering.output, pEndSignals);
    for (const QString& strMessage : rendering.listMessage) {
        WriteMessage(strMessage, pEndSignals);
    }
    if (iError != 0 && iError != EINTR) {
        throw ToolError(enExitFailure,
                        QString::fromUtf8(ByLanguage(enLang, "the output cannot be written", "无法写出结果")));
    }
}
