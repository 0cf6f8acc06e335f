// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportJson.h"

#include "ReplyEntries.h"
#include "StatusReport.h"
#include "UtilStatusIdParser.h"

#include <QJsonArray>

namespace {

QJsonValue Number(unsigned long dwValue)
{
    return QJsonValue(static_cast<qint64>(dwValue));
}

QJsonObject CodeObject(unsigned long dwRawCode, int iValue, QString (*pText)(int, int))
{
    return {{QStringLiteral("code"), Number(dwRawCode)},
            {QStringLiteral("value"), iValue},
            {QStringLiteral("english"), pText(iValue, enLanguageEnglish)},
            {QStringLiteral("chinese"), pText(iValue, enLanguageChinese)}};
}

QJsonValue EntryValue(const stReplyEntry& entry)
{
    if (!entry.bPresent) {
        return QJsonValue();
    }
    switch (entry.enKind) {
    case enEntryText: return entry.strText;
    case enEntryState: return CodeObject(entry.dwValue, GetPrinterStatusEnum(entry.dwValue), GetStatusText);
    case enEntryCodes: {
        QJsonArray listCode;
        for (const unsigned long dwCode : *entry.pListCode) {
            listCode.append(CodeObject(dwCode, GetErrorStatusEnum(dwCode), GetErrorText));
        }
        return listCode;
    }
    default: return Number(entry.dwValue);
    }
}

QJsonValue Reply(const StatusReport& report)
{
    if (!report.IsDecoded()) {
        return QJsonValue();
    }
    QJsonObject reply;
    for (const stReplyEntry& entry : ReplyEntries(report)) {
        reply.insert(entry.pLabel->Key(), EntryValue(entry));
    }
    return reply;
}

QJsonValue Failure(const StatusReport& report)
{
    if (report.IsDecoded()) {
        return QJsonValue();
    }
    return QJsonObject{{QStringLiteral("reason"), report.FailureKey()},
                       {QStringLiteral("english"), report.FailureText(enLanguageEnglish)},
                       {QStringLiteral("chinese"), report.FailureText(enLanguageChinese)}};
}

QJsonValue Printer(const StatusReport& report)
{
    if (!report.m_printerInfo) {
        return QJsonValue();
    }
    const stPrinterInfo& printerInfo = *report.m_printerInfo;
    return QJsonObject{{QStringLiteral("file"), StatusFilePath(printerInfo.strPrinterName)},
                       {QStringLiteral("model"), printerInfo.enType},
                       {QStringLiteral("connect-type"), printerInfo.iConnectType},
                       {QStringLiteral("port"), printerInfo.strPort},
                       {QStringLiteral("uri"), printerInfo.strURI}};
}

} // namespace

QJsonObject ReportJson(const StatusReport& report)
{
    return {{QStringLiteral("source"), QString::fromLatin1(report.m_pSource)},
            {QStringLiteral("name"), report.m_strName},
            {QStringLiteral("printer"), Printer(report)},
            {QStringLiteral("length"), report.IsReached() ? QJsonValue(report.m_reply.size()) : QJsonValue()},
            {QStringLiteral("failure"), Failure(report)},
            {QStringLiteral("reply"), Reply(report)}};
}
