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
    return {{u"code"_s, Number(dwRawCode)},
            {u"value"_s, iValue},
            {u"english"_s, pText(iValue, enLanguageEnglish)},
            {u"chinese"_s, pText(iValue, enLanguageChinese)}};
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
    return QJsonObject{{u"reason"_s, report.FailureKey()},
                       {u"english"_s, report.FailureText(enLanguageEnglish)},
                       {u"chinese"_s, report.FailureText(enLanguageChinese)}};
}

QJsonValue Printer(const StatusReport& report)
{
    if (!report.m_printerInfo) {
        return QJsonValue();
    }
    const stPrinterInfo& printerInfo = *report.m_printerInfo;
    return QJsonObject{{u"file"_s, StatusFilePath(printerInfo.strPrinterName)},
                       {u"model"_s, printerInfo.enType},
                       {u"connect-type"_s, printerInfo.iConnectType},
                       {u"port"_s, printerInfo.strPort},
                       {u"uri"_s, printerInfo.strURI}};
}

} // namespace

QJsonObject ReportJson(const StatusReport& report)
{
    return {{u"source"_s, QString::fromLatin1(report.m_pSource)},
            {u"name"_s, report.m_strName},
            {u"printer"_s, Printer(report)},
            {u"length"_s, report.IsReached() ? QJsonValue(report.m_reply.size()) : QJsonValue()},
            {u"failure"_s, Failure(report)},
            {u"reply"_s, Reply(report)}};
}
