// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportOverview.h"

#include "Printable.h"
#include "ReplyEntries.h"
#include "ReportWriter.h"
#include "StatusReport.h"
#include "TerminalText.h"
#include "UtilStatusIdParser.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <string_view>

namespace {

constexpr unsigned long c_dwLowInk = 15; // per cent; packaging/prometheus/vora.rules.yml warns at the same

struct stColumn
{
    const char* pEnglish;
    const char* pChinese;
    bool bRight;
};

constexpr std::array<stColumn, 9> c_columnList = {{
    {"QUEUE", "队列", false},
    {"CONNECTION", "连接方式", false},
    {"STATE", "状态", false},
    {"CYAN", "青", true},
    {"MAGENTA", "品红", true},
    {"YELLOW", "黄", true},
    {"BLACK", "黑", true},
    {"AGE", "时间", true},
    {"MORE", "其他", true},
}};

const QString c_strNone = u"-"_s;

/// The error's text, or the code and what else there is.
QString ErrorCell(unsigned long dwRawCode, enLanguage enLang)
{
    const enErrorStatus enError = GetErrorStatusEnum(dwRawCode);
    const QString strText = GetErrorText(enError, enLang);
    if (enError != enErrorUnknown && !strText.isEmpty()) {
        return strText;
    }
    return ReportWriter(enLang).AddCode(dwRawCode).Text();
}

} // namespace

ReportOverview::ReportOverview(enLanguage enLang, bool bColored)
    : m_enLang(enLang), m_bColored(bColored), m_iNow(QDateTime::currentMSecsSinceEpoch())
{
}

void ReportOverview::Add(const StatusReport& report)
{
    Row row{{Printable(report.m_strName)}, {ConnectionText(report)}, StateCell(report)};
    AddInk(report, row);
    row.push_back({AgeText(report)});
    const std::size_t iCodes = report.m_decoder.m_listErrorCode.size() + report.m_decoder.m_listWarningCode.size();
    const std::size_t iShown = report.m_decoder.m_listErrorCode.empty() ? 0 : 1;
    row.push_back({report.IsDecoded() ? QString::number(iCodes - iShown) : c_strNone});
    m_listRow.push_back(row);
}

QString ReportOverview::Text() const
{
    if (m_listRow.empty()) {
        return {};
    }
    Row header;
    for (const stColumn& column : c_columnList) {
        header.push_back({QString::fromUtf8(ByLanguage(m_enLang, column.pEnglish, column.pChinese)), enColorHeader});
    }
    std::vector<Row> listRow{header};
    listRow.insert(listRow.end(), m_listRow.begin(), m_listRow.end());

    std::array<int, c_columnList.size()> widthList{};
    std::vector<std::array<int, c_columnList.size()>> listWidth(listRow.size());
    for (std::size_t i = 0; i < listRow.size(); ++i) {
        for (std::size_t j = 0; j < widthList.size(); ++j) {
            listWidth[i][j] = TerminalWidth(listRow[i][j].strText);
            widthList[j] = std::max(widthList[j], listWidth[i][j]);
        }
    }
    QString strText;
    for (std::size_t i = 0; i < listRow.size(); ++i) {
        for (std::size_t j = 0; j < widthList.size(); ++j) {
            strText += QLatin1String(j == 0 ? "" : "  ");
            AddCell(listRow[i][j], widthList[j] - listWidth[i][j], c_columnList[j].bRight, strText);
        }
        strText += QLatin1Char('\n');
    }
    return strText;
}

ReportOverview::stCell ReportOverview::StateCell(const StatusReport& report) const
{
    if (!report.IsDecoded()) {
        // A message tells the rest.
        const QString strDetail = QString::fromUtf8(ByLanguage(m_enLang, ":", "："));
        return {report.FailureText(m_enLang).section(strDetail, 0, 0), enColorTrouble};
    }
    const UtilPrinterStatus& decoder = report.m_decoder;
    if (!decoder.m_listErrorCode.empty()) {
        return {ErrorCell(decoder.m_listErrorCode.front(), m_enLang), enColorTrouble};
    }
    return {GetStatusText(GetPrinterStatusEnum(decoder.m_dwStatus), m_enLang),
            decoder.m_listWarningCode.empty() ? enColorNone : enColorConcern};
}

QString ReportOverview::ConnectionText(const StatusReport& report) const
{
    const QString strNetwork = QString::fromUtf8(ByLanguage(m_enLang, "network", "网络"));
    if (!report.m_printerInfo) {
        return std::string_view(report.m_pSource) == "udp" ? strNetwork : c_strNone;
    }
    if (report.m_printerInfo->iConnectType == c_iConnectUsb) {
        return u"USB"_s;
    }
    return report.m_printerInfo->strPort.isEmpty() ? strNetwork : Printable(report.m_printerInfo->strPort);
}

QString ReportOverview::AgeText(const StatusReport& report) const
{
    if (!report.m_iReplyTime) {
        return c_strNone;
    }
    const qint64 iSeconds = std::max<qint64>(0, m_iNow - *report.m_iReplyTime) / 1000;
    const auto age = [this](qint64 iCount, const char* pEnglish, const char* pChinese) {
        return QString::number(iCount) + QString::fromUtf8(ByLanguage(m_enLang, pEnglish, pChinese));
    };
    if (iSeconds < 60) {
        return age(iSeconds, " s", "秒");
    }
    if (iSeconds < 60 * 60) {
        return age(iSeconds / 60, " min", "分钟");
    }
    if (iSeconds < 24 * 60 * 60) {
        return age(iSeconds / (60 * 60), " h", "小时");
    }
    return age(iSeconds / (24 * 60 * 60), " d", "天");
}

void ReportOverview::AddInk(const StatusReport& report, Row& row)
{
    const std::vector<stReplyEntry> listEntry = report.IsDecoded() ? ReplyEntries(report) : std::vector<stReplyEntry>();
    for (const unsigned long dwKey : {enSuppliesBlueInk, enSuppliesRedInk, enSuppliesYellowInk, enSuppliesBlackInk}) {
        const auto entry = std::find_if(listEntry.begin(), listEntry.end(), [dwKey](const stReplyEntry& each) {
            return each.bSupplies && each.dwKey == dwKey && each.bPresent;
        });
        if (entry == listEntry.end()) {
            row.push_back({c_strNone});
        } else {
            row.push_back({QString::number(entry->dwValue) + QLatin1Char('%'),
                           entry->dwValue <= c_dwLowInk ? enColorConcern : enColorNone});
        }
    }
}

void ReportOverview::AddCell(const stCell& cell, int iPadding, bool bRight, QString& strText) const
{
    static constexpr std::array<const char*, 4> s_colorList = {"", "\033[1m", "\033[31m", "\033[33m"};
    const QString strPadding(iPadding, QLatin1Char(' '));
    const bool bColored = m_bColored && cell.color != enColorNone;
    strText += bRight ? strPadding : QString();
    strText += QLatin1String(bColored ? s_colorList.at(cell.color) : "");
    strText += cell.strText;
    strText += QLatin1String(bColored ? "\033[0m" : "");
    strText += bRight ? QString() : strPadding;
}
