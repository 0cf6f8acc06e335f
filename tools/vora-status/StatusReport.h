// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"
#include "ReplyLayout.h"
#include "UtilLanguageCtrl.h"
#include "UtilPrinterStatus.h"

#include <optional>

/// Why there is no decoded reply.
enum enReportFailure
{
    enFailureNone,
    enFailureMissing,
    enFailureNotRegular,
    enFailureUnreadable,
    enFailureAddress,
    enFailureSocket,
    enFailureSend,
    enFailureTimeOut,
    enFailureSilent,
    enFailureTruncated,     ///< from here on a reply came and was rejected
    enFailureFatalSupplies, ///< the program ends on it
    enFailureCount
};

/// What is known about one status reply: where it came from, and what it says or why it says nothing. Made by one of
/// the first three functions; used by one thread at a time.
class StatusReport
{
public:
    // Reads at once; a failure is part of the report. OfAddress waits one second at most.
    static StatusReport OfFile(const QString& strPath);
    static StatusReport OfPrinter(const stPrinterInfo& printerInfo);
    static StatusReport OfAddress(const QString& strAddress);

    bool IsDecoded() const { return m_enFailure == enFailureNone; }
    bool IsReached() const { return IsDecoded() || IsRejected(); }
    bool IsRejected() const { return m_enFailure >= enFailureTruncated; }

    /// The reason of a failure in words; empty when there is none.
    QString FailureText(enLanguage enLang) const;
    /// One word that stays the same for programs; empty when there is no failure.
    QString FailureKey() const;

    QString m_strName;     ///< path, queue or address
    const char* m_pSource; ///< "file", "printer" or "udp"
    std::optional<stPrinterInfo> m_printerInfo;
    qint64 m_iFileSize = 0; ///< more than m_reply has when the file was not read whole
    QByteArray m_reply;
    std::optional<qint64> m_iReplyTime; ///< when it came, milliseconds since 1970
    ReplyLayout m_layout;

    // Of a decoded reply: the codes and bytes as they came, and what the program makes of them.
    UtilPrinterStatus m_decoder;
    stPrinterState m_state;

private:
    StatusReport(const QString& strName, const char* pSource) : m_strName(strName), m_pSource(pSource) {}
    void ReadFile(const QString& strPath);
    void Decode();

    enReportFailure m_enFailure = enFailureNone;
    QString m_strErrorMessage;
};
