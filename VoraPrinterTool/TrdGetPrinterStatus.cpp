// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdGetPrinterStatus.h"

#include "UtilCommandOutput.h"
#include "UtilLog.h"
#include "UtilPrinterStatus.h"
#include "UtilShell.h"
#include "UtilStatusFile.h"
#include "UtilText.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include <sys/stat.h>

namespace {

constexpr int c_iMaxReadFailCount = 10;
constexpr int c_iMaxCommandLength = 255;
constexpr int c_iMaxPrinterLine = 4096; // bytes of what lpstat says

/// Whether `cancel` would take the name for a queue: one that begins with "-" is an option to it, "-a" for the jobs of
/// every queue.
bool IsQueueName(const QString& strName)
{
    return !strName.isEmpty() && !strName.startsWith(QLatin1Char('-'));
}

/// The shell command that cancels a queue's current job. A name too long for the command's bound loses whole characters
/// at its end, so that the quotes stay closed.
QByteArray CancelCommand(QString strName)
{
    QByteArray command = "cancel " + QuoteForShell(strName);
    while (command.size() > c_iMaxCommandLength) {
        strName.chop(std::as_const(strName).back().isLowSurrogate() ? 2 : 1);
        command = "cancel " + QuoteForShell(strName);
    }
    return command;
}

bool IsVisiblyChanged(const stPrinterState& current, const stPrinterState& published)
{
    return current.enCurrentStatus != published.enCurrentStatus ||
           current.dwRemainingToner != published.dwRemainingToner ||
           current.dwBlackInkRemainer != published.dwBlackInkRemainer ||
           current.dwBlueInkRemainer != published.dwBlueInkRemainer ||
           current.dwRedInkRemainer != published.dwRedInkRemainer ||
           current.dwYellowInkRemainer != published.dwYellowInkRemainer ||
           current.listErrorStatus != published.listErrorStatus ||
           current.listWarningStatus != published.listWarningStatus;
}

/// The line numbers by which a log names the two failures are fixed. What is thrown here, such as for want of memory,
/// must not end the worker.
void LogThrownError(int iLine, const char* pFunction) noexcept
{
    try {
        WriteStringLog(__FILE__, iLine, pFunction, u"throw error"_s);
    } catch (...) { // the line is lost
    }
}

/// The end by design, see UtilPrinterStatus: nothing that such a reply says can be trusted. Tells on standard error
/// whose reply it was.
[[noreturn]] void EndByFatalReply(const QString& strPrinterName, const QString& strOrigin)
{
    const QString strLine = u"VoraPrinterTool: ended by the status reply of printer \""_s +
                            EscapeControls(strPrinterName) + u"\" ("_s + EscapeControls(strOrigin) +
                            u"): a supplies record of more than 65 bytes\n"_s;
    std::fputs(strLine.toLocal8Bit().constData(), stderr);
    std::abort();
}

} // namespace

TrdGetPrinterStatus::TrdGetPrinterStatus(QObject* parent) : UtilThreadBase(parent) {}

void TrdGetPrinterStatus::Init(int iIndex, QList<stPrinterManager>* pListPrinterManager)
{
    const std::lock_guard lock(g_mutexPrinterList);
    m_iIndex = iIndex;
    m_pListPrinterManager = pListPrinterManager;
}

void TrdGetPrinterStatus::SlotTaskStart()
{
    if (m_bTaskRunning) {
        return;
    }
    m_bTaskRunning = true;
    do {
        PollOnce();
    } while (!WaitForSleep(1000));
}

void TrdGetPrinterStatus::SlotThreadQuit()
{
    m_bThreadQuit = true;
}

void TrdGetPrinterStatus::PollOnce()
{
    if (!TakeSharedElement()) {
        return;
    }
    const bool bForce = m_printerManager.printerState.enCurrentStatus == enStatusOffline;
    const int iResult = GetPrinterStatusFile(m_printerManager.printerInfo.strPrinterName, bForce);
    if (iResult < 0) {
        CountFailedRead();
    }

    bool bChanged = false;
    bool bCancel = false;
    int iIndex = -1;
    {
        const std::lock_guard lock(g_mutexPrinterList);
        stPrinterManager* pElement = SharedElement();
        if (pElement == nullptr ||
            pElement->printerInfo.strPrinterName != m_printerManager.printerInfo.strPrinterName ||
            pElement->printerInfo.strURI != m_printerManager.printerInfo.strURI) {
            return; // the list was rebuilt meanwhile
        }
        const stPrinterState& current = m_printerManager.printerState;
        bChanged = IsVisiblyChanged(current, pElement->printerState);
        // Decided and written in one step: of two workers that follow the same printer only one sees the change.
        bCancel = bChanged && pElement->printerState.enCurrentStatus != enStatusCanceling &&
                  current.enCurrentStatus == enStatusCanceling;
        pElement->printerState = current;
        iIndex = m_iIndex;
    }
    if (bCancel) {
        CancelJobs();
    }
    if (bChanged) {
        emit SgnUpdatePrinterStatus(iIndex);
    }
}

/// The worker's element of the shared list, or none when the list has no such index. Called with the list locked.
stPrinterManager* TrdGetPrinterStatus::SharedElement() const
{
    const bool bInList = m_pListPrinterManager != nullptr && m_iIndex >= 0 && m_iIndex < m_pListPrinterManager->size();
    return bInList ? &(*m_pListPrinterManager)[m_iIndex] : nullptr;
}

bool TrdGetPrinterStatus::TakeSharedElement()
{
    const std::lock_guard lock(g_mutexPrinterList);
    const stPrinterManager* pElement = SharedElement();
    if (pElement != nullptr) {
        m_printerManager = *pElement;
    }
    return pElement != nullptr;
}

void TrdGetPrinterStatus::CountFailedRead()
{
    stPrinterState& state = m_printerManager.printerState;
    if (++state.iReadFailCount > c_iMaxReadFailCount) {
        state.enCurrentStatus = enStatusOffline;
        state.listErrorStatus.clear();
        state.listWarningStatus.clear();
        state.iReadFailCount = 0;
    }
}

void TrdGetPrinterStatus::CancelJobs() const
{
    const QString& strName = m_printerManager.printerInfo.strPrinterName;
    WriteStringLog(__FILE__, __LINE__, __func__, u"cancel by printer %s"_s, qPrintable(EscapeControls(strName)));
    if (!IsQueueName(strName)) {
        WriteStringLog(__FILE__, __LINE__, __func__, u"not cancelled, no queue name: %s"_s,
                       qPrintable(EscapeControls(strName)));
        return;
    }
    RunShellCommand(CancelCommand(strName));
}

bool TrdGetPrinterStatus::CheckStatusChange(stPrinterState current, stPrinterState published)
{
    return IsVisiblyChanged(current, published);
}

bool TrdGetPrinterStatus::CheckNeedStatus(int& iInterval)
{
    iInterval = 100;
    if (m_printerManager.printerInfo.iConnectType == c_iConnectUsb) {
        return true;
    }
    const int iStatus = m_printerManager.printerState.enCurrentStatus;
    if (iStatus != enStatusReady) {
        iInterval = iStatus == enStatusOffline ? 10000 : 1000;
        return true;
    }

    const UtilCommandOutput output(c_strToolPath + QString::asprintf("printer_%d.tmp", m_iIndex));
    if (!output.IsOpen()) {
        return false;
    }
    RunShellCommand("lpstat -p " + QuoteForShell(m_printerManager.printerInfo.strPrinterName) + "> " +
                    output.ShellPath());
    const QString strLine = QString::fromLocal8Bit(output.Read(c_iMaxPrinterLine).split('\n').constFirst());
    const bool bPrinting = strLine.contains(QLatin1String("printing"), Qt::CaseInsensitive) ||
                           strLine.contains(u"正在打印"_s, Qt::CaseInsensitive);
    if (bPrinting) {
        iInterval = 1000;
    }
    return bPrinting;
}

int TrdGetPrinterStatus::GetPrinterStatusFile(QString strName, bool bForce)
{
    try {
        return ReadStatusFile(strName, bForce);
    } catch (...) {
        LogThrownError(247, __func__);
        return 0;
    }
}

int TrdGetPrinterStatus::GetPrinterStatusUSB(QString)
{
    try {
        return ReadStatusFile(m_printerManager.printerInfo.strPrinterName, false);
    } catch (...) {
        LogThrownError(203, __func__);
        return 0;
    }
}

int TrdGetPrinterStatus::ReadStatusFile(const QString& strName, bool bForce)
{
    const QString strPath = StatusFilePath(strName);
    // One system call a second; QFileInfo and local time take three.
    struct stat fileStat = {};
    if (::stat(SystemPath(strPath).constData(), &fileStat) != 0) {
        m_dtLastModified = QDateTime();
        return -1;
    }
    const QDateTime dtModified = QDateTime::fromMSecsSinceEpoch(
        qint64(fileStat.st_mtim.tv_sec) * 1000 + fileStat.st_mtim.tv_nsec / 1000000, Qt::UTC);
    if (!bForce && dtModified == m_dtLastModified) {
        return 1;
    }
    m_dtLastModified = dtModified;

    const stFileContent file = ::ReadStatusFile(strPath);
    if (file.enResult != enFileRead) {
        return -1;
    }
    m_buffer.fill(0);
    std::copy(file.content.begin(), file.content.end(), m_buffer.begin());
    return TakeReply(m_buffer.data(), static_cast<unsigned long>(file.content.size()), strName, strPath);
}

int TrdGetPrinterStatus::GetPrinterStatusUDP(QString strAddress)
{
    const int iLength = QueryStatus(strAddress, m_buffer);
    return iLength < 0 ? iLength
                       : TakeReply(m_buffer.data(), static_cast<unsigned long>(iLength),
                                   m_printerManager.printerInfo.strPrinterName, strAddress);
}

bool TrdGetPrinterStatus::GetPrinterVidPid(QString strModel, int& iVid, int& iPid)
{
    struct stUsbId
    {
        QLatin1String strModelPart; // the "?" is meant literally
        int iPid;
    };
    static const std::array<stUsbId, 5> c_usbIdList = {{
        {QLatin1String("PF41S?"), 0x5361},
        {QLatin1String("PF41SQ?"), 0x5362},
        {QLatin1String("PG41S?"), 0x5363},
        {QLatin1String("PG41ES?"), 0x5364},
        {QLatin1String("PG41ESQ?"), 0x5365},
    }};
    iVid = 0x4A7C;
    for (const stUsbId& usbId : c_usbIdList) {
        if (strModel.contains(usbId.strModelPart)) {
            iPid = usbId.iPid;
            return true;
        }
    }
    return false;
}

int TrdGetPrinterStatus::CheckPrinterStatus(unsigned char* pBuffer, unsigned long dwLength)
{
    return TakeReply(pBuffer, dwLength, m_printerManager.printerInfo.strPrinterName, u"from memory"_s);
}

int TrdGetPrinterStatus::TakeReply(const unsigned char* pBuffer, unsigned long dwLength, const QString& strPrinterName,
                                   const QString& strOrigin)
{
    UtilPrinterStatus reply;
    switch (reply.parseReply(pBuffer, dwLength)) {
    case enParseRejected: return -1;
    case enParseFatal: EndByFatalReply(strPrinterName, strOrigin);
    case enParseAccepted: break;
    }
    m_printerManager.printerState = DecodedState(reply);
    return 0;
}
