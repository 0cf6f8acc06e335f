// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"

#include "UtilPrinterList.h"

#include <QThread>

#include <algorithm>
#include <utility>

namespace {

// Longer than a writer stands still between emptying the file and filling it, on a machine that is busy.
constexpr unsigned long c_dwSettledMSec = 50;

bool IsSamePrinter(const stPrinterInfo& left, const stPrinterManager& right)
{
    return left.strPrinterName == right.printerInfo.strPrinterName && left.strPort == right.printerInfo.strPort;
}

} // namespace

TrdDeviceManage::TrdDeviceManage(QObject* parent)
    : UtilThreadBase(parent)
#ifdef VORA_HAS_TEXT_CODEC
    , m_pCodec(QTextCodec::codecForName("utf-8"))
#endif
{
}

void TrdDeviceManage::Init(QList<stPrinterManager>* pListPrinterManager)
{
    const std::lock_guard lock(g_mutexPrinterList);
    m_pListPrinterManager = pListPrinterManager;
}

QList<stPrinterInfo> TrdDeviceManage::GetPrinterInfo(bool)
{
    return ReadPrinterList().value_or(QList<stPrinterInfo>());
}

QList<stPrinterManager> TrdDeviceManage::GetInitPrinterList(QList<stPrinterInfo> listPrinterInfo)
{
    stPrinterState printerState;
    InitStPrinterState(printerState);
    QList<stPrinterManager> listPrinterManager;
    for (const stPrinterInfo& printerInfo : std::as_const(listPrinterInfo)) {
        listPrinterManager.append({printerInfo, printerState});
    }
    return listPrinterManager;
}

void TrdDeviceManage::InitStPrinterInfo(stPrinterInfo& printerInfo)
{
    printerInfo = stPrinterInfo();
    printerInfo.enType = u"-1"_s;
}

void TrdDeviceManage::InitStPrinterState(stPrinterState& printerState)
{
    printerState = stPrinterState();
}

void TrdDeviceManage::SlotTaskStart()
{
    if (m_bTaskRunning) {
        return;
    }
    m_bTaskRunning = true;
    do {
        ReadChangedList();
        UpdateSharedList(m_listPrinterInfo);
    } while (!WaitForSleep(3000));
}

void TrdDeviceManage::SlotThreadQuit()
{
    m_bThreadQuit = true;
}

/// A file that cannot be read just now, or changes while it is read or soon after, leaves the printers as they were
/// until the next pass.
void TrdDeviceManage::ReadChangedList()
{
    const FileStamp stamp = StampOfFile(PrinterListPath());
    if (stamp == m_listStamp) {
        return;
    }
    m_listStamp.reset();
    const std::optional<QList<stPrinterInfo>> listPrinterInfo = ReadPrinterList();
    QThread::msleep(c_dwSettledMSec);
    if (listPrinterInfo && StampOfFile(PrinterListPath()) == stamp) {
        m_listPrinterInfo = *listPrinterInfo;
        m_listStamp = stamp;
    }
}

void TrdDeviceManage::UpdateSharedList(const QList<stPrinterInfo>& listPrinterInfo)
{
    const std::lock_guard lock(g_mutexPrinterList);
    // The name and the port alone tell printers apart: a new model or URI is no reason to reset every state.
    if (m_pListPrinterManager == nullptr ||
        std::equal(listPrinterInfo.begin(), listPrinterInfo.end(), m_pListPrinterManager->cbegin(),
                   m_pListPrinterManager->cend(), IsSamePrinter)) {
        return;
    }
    *m_pListPrinterManager = GetInitPrinterList(listPrinterInfo);
    emit SgnUpdatePrinterList();
}

#include "moc_TrdDeviceManage.cpp"
