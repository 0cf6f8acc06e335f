// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusReport.h"

#include "ReplyLabels.h"
#include "UtilStatusFile.h"

#include <QDateTime>

namespace {

const std::array<stReplyLabel, enFailureCount> c_failureLabelList = {{
    {"", {"", ""}},
    {"missing", {"there is no such file", "文件不存在"}},
    {"not-regular", {"not a regular file", "不是普通文件"}},
    {"unreadable", {"the file cannot be read: %1", "无法读取文件：%1"}},
    {"address", {"not an IPv4 address", "不是IPv4地址"}},
    {"socket", {"no network socket could be made", "无法创建网络套接字"}},
    {"send", {"the request could not be sent", "无法发送请求"}},
    {"time-out", {"the time-out for the reply could not be set", "无法设置应答的超时"}},
    {"silent", {"no reply of at least 8 bytes within one second", "一秒之内没有收到至少8字节的应答"}},
    {"truncated",
     {"reply rejected: it ends at byte %1, but the field at byte %2 (%3) has %4 bytes",
      "应答被拒绝：应答在第%1字节处结束，而第%2字节处的字段（%3）有%4字节"}},
    {"fatal-supplies",
     {"reply rejected: byte %2 (%3) announces %4 data bytes, more than the 65 on which the program does not end",
      "应答被拒绝：第%2字节（%3）声明有%4个数据字节，超过65个时程序会终止"}},
}};

enReportFailure FailureOfFile(enFileResult enResult)
{
    switch (enResult) {
    case enFileMissing: return enFailureMissing;
    case enFileNotRegular: return enFailureNotRegular;
    case enFileUnreadable: return enFailureUnreadable;
    default: return enFailureNone;
    }
}

enReportFailure FailureOfQuery(int iResult)
{
    switch (iResult) {
    case enQueryBadAddress: return enFailureAddress;
    case enQueryNoSocket: return enFailureSocket;
    case enQueryNotSent: return enFailureSend;
    case enQueryNoTimeOut: return enFailureTimeOut;
    default: return enFailureSilent;
    }
}

} // namespace

StatusReport StatusReport::OfFile(const QString& strPath)
{
    StatusReport report(strPath, "file");
    report.ReadFile(strPath);
    return report;
}

StatusReport StatusReport::OfPrinter(const stPrinterInfo& printerInfo)
{
    StatusReport report(printerInfo.strPrinterName, "printer");
    report.m_printerInfo = printerInfo;
    report.ReadFile(StatusFilePath(printerInfo.strPrinterName));
    return report;
}

StatusReport StatusReport::OfAddress(const QString& strAddress)
{
    StatusReport report(strAddress, "udp");
    StatusBuffer buffer;
    const int iLength = QueryStatus(strAddress, buffer);
    if (iLength < 0) {
        report.m_enFailure = FailureOfQuery(iLength);
    } else {
        report.m_reply = QByteArray(reinterpret_cast<const char*>(buffer.data()), iLength);
        report.m_iReplyTime = QDateTime::currentMSecsSinceEpoch();
        report.Decode();
    }
    return report;
}

QString StatusReport::FailureText(enLanguage enLang) const
{
    const QString strText = QString::fromUtf8(c_failureLabelList.at(m_enFailure).Name(enLang));
    if (m_enFailure == enFailureUnreadable) {
        return strText.arg(m_strErrorMessage);
    }
    if (!IsRejected()) {
        return strText;
    }
    const stFieldPlace& broken = m_layout.BrokenField();
    const QString strField = QString::fromUtf8(PartLabel(broken.enField).Name(enLang));
    if (m_enFailure == enFailureFatalSupplies) {
        return strText.arg(broken.iOffset).arg(strField).arg(broken.dwValue);
    }
    return strText.arg(m_reply.size()).arg(broken.iOffset).arg(strField).arg(broken.iLength);
}

QString StatusReport::FailureKey() const
{
    return c_failureLabelList.at(m_enFailure).Key();
}

void StatusReport::ReadFile(const QString& strPath)
{
    const stFileContent file = ReadStatusFile(strPath);
    m_enFailure = FailureOfFile(file.enResult);
    m_iFileSize = file.iSize;
    m_strErrorMessage = qt_error_string(file.iError);
    if (m_enFailure == enFailureNone) {
        m_reply = file.content;
        m_iReplyTime = file.iModified;
        Decode();
    }
}

void StatusReport::Decode()
{
    m_layout = ReplyLayout(m_reply);
    if (!m_layout.IsAccepted()) {
        m_enFailure = m_layout.Fault() == enReplyTruncated ? enFailureTruncated : enFailureFatalSupplies;
        return;
    }
    m_decoder.parseReply(reinterpret_cast<const unsigned char*>(m_reply.constData()),
                         static_cast<unsigned long>(m_reply.size()));
    m_state = DecodedState(m_decoder);
}
