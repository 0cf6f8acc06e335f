// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"
#include "UtilStatusQuery.h"
#include "UtilThreadBase.h"

#include <QDateTime>

/// Keeps one printer's state current: polls its status file every second, publishes the state into the shared list and
/// reports what users can see. Lives in a thread of its own; called from there where nothing else is said.
class TrdGetPrinterStatus : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdGetPrinterStatus(QObject* parent = nullptr);

    /// The printer's index in the shared list, which the caller owns; called before the loop starts. An index of -1
    /// takes the list away from the worker again: when the call returns, the worker no longer touches it. Called from
    /// any thread.
    void Init(int iIndex, QList<stPrinterManager>* pListPrinterManager);

    /// True when the state, the toner, an ink level or the codes differ: what users see. Called from any thread.
    bool CheckStatusChange(stPrinterState current, stPrinterState published);

    /// Whether the printer needs polling now, and in which interval (milliseconds); asks the print system about a ready
    /// network printer. Kept, not used by the polling, which comes every second.
    bool CheckNeedStatus(int& iInterval);

    // Transports. They decode into m_printerManager.printerState and return 0 for
    // a new reply, a negative number for a failure, in which case the state stays. An exception while a file is read is
    // logged and gives 0 too; the state stays.

    /// The status file of a queue; 1 when its modification time is the last one's and bForce is not set.
    /// -1: missing, unreadable (anything but a regular file too) or rejected. Reads at most 2048 bytes.
    int GetPrinterStatusFile(QString strName, bool bForce);

    /// As above for the worker's own printer, never forced; the argument has no effect. Kept, not used by
    /// the polling.
    int GetPrinterStatusUSB(QString strName);

    /// Asks the printer at a dotted IPv4 address and waits at most one second. -1: no such address or reply rejected,
    /// -2: no socket, -3: not sent, -4: no time-out, -5: no reply of 8 bytes or more. Kept, not used by the polling.
    int GetPrinterStatusUDP(QString strAddress);

    /// USB identifiers by model text; false when the model is none of the known: iVid is set, iPid stays. Kept, not
    /// used by the polling. Called from any thread.
    bool GetPrinterVidPid(QString strModel, int& iVid, int& iPid);

    /// Decodes a reply into m_printerManager.printerState and returns 0; -1, with the state untouched, when it is
    /// rejected. A fatal reply (enParseFatal) ends the process, with a line on standard error that names the printer.
    int CheckPrinterStatus(unsigned char* pBuffer, unsigned long dwLength);

signals:
    void SgnUpdatePrinterStatus(int iIndex); ///< what users see of this element has changed in the shared list

public slots:
    /// The worker's loop; returns after a quit request. A second start is ignored.
    void SlotTaskStart();
    void SlotThreadQuit(); ///< ends the loop within 500 ms. Called from any thread.

public:
    int m_iIndex = -1;
    QList<stPrinterManager>* m_pListPrinterManager = nullptr;
    stPrinterManager m_printerManager; ///< working copy of the printer's element of the shared list
    StatusBuffer m_buffer{};
    QDateTime m_dtLastModified; ///< of the status file; null while there is none

private:
    stPrinterManager* SharedElement() const;
    bool TakeSharedElement();
    void CountFailedRead();
    void PollOnce();
    int ReadStatusFile(const QString& strName, bool bForce);
    int TakeReply(const unsigned char* pBuffer, unsigned long dwLength, const QString& strPrinterName,
                  const QString& strOrigin);
    void CancelJobs() const;
};
