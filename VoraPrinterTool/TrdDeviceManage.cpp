// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"

#include "UtilFile.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

namespace {

// More printers than any list that the driver package writes. A Count beyond it is a damaged file, and a record and a
// thread for each number up to it would exhaust the machine.
constexpr int c_iMaxPlausibleCount = 1000;

/// An unquoted comma makes a list of what is meant as one text.
QString ReadString(const QSettings& settings, const QString& strKey)
{
    const QVariant value = settings.value(strKey);
    return value.userType() == QMetaType::QStringList ? value.toStringList().join(QLatin1Char(',')) : value.toString();
}

/// A number; 0 for what is none or none of an int.
int ReadInt(const QSettings& settings, const QString& strKey)
{
    return ReadString(settings, strKey).toInt();
}

/// The numbers of the printer groups to read.
std::vector<int> PrinterIndexes(const QSettings& settings, int iCount)
{
    std::vector<int> listIndex;
    if (iCount <= c_iMaxPlausibleCount) {
        listIndex.resize(static_cast<std::size_t>(std::max(iCount, 0)));
        std::iota(listIndex.begin(), listIndex.end(), 0);
        return listIndex;
    }
    const QString strPrefix = QStringLiteral("printer_");
    for (const QString& strGroup : settings.childGroups()) {
        bool bNumber = false;
        const int iIndex = strGroup.mid(strPrefix.size()).toInt(&bNumber);
        if (bNumber && iIndex >= 0 && iIndex < iCount && strGroup == strPrefix + QString::number(iIndex)) {
            listIndex.push_back(iIndex);
        }
    }
    std::sort(listIndex.begin(), listIndex.end());
    return listIndex;
}

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
    QList<stPrinterInfo> listPrinterInfo;
    const QString strPath = c_strCfgPath + c_strPrinterListName;
    if (!QFileInfo(strPath).isFile()) { // anything else, such as a FIFO, would block the reader
        return listPrinterInfo;
    }
    QSettings settings(strPath, QSettings::IniFormat);
    SetIniUtf8(settings);
    const int iCount = ReadInt(settings, QStringLiteral("Main/Count"));
    for (const int iIndex : PrinterIndexes(settings, iCount)) {
        stPrinterInfo printerInfo;
        InitStPrinterInfo(printerInfo);
        settings.beginGroup(QString::asprintf("printer_%d", iIndex));
        printerInfo.strPrinterName = ReadString(settings, QStringLiteral("Name"));
        printerInfo.enType = ReadString(settings, QStringLiteral("Model"));
        printerInfo.iConnectType = ReadInt(settings, QStringLiteral("ConnectType"));
        printerInfo.strPort = ReadString(settings, QStringLiteral("Port"));
        printerInfo.strURI = ReadString(settings, QStringLiteral("URI"));
        settings.endGroup();
        listPrinterInfo.append(printerInfo);
    }
    return listPrinterInfo;
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
    printerInfo.enType = QStringLiteral("-1");
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

/// Looking up thousands of unchanged values every three seconds would be most of an idle program's work.
void TrdDeviceManage::ReadChangedList()
{
    // Before the file is read: what is written meanwhile is read by the next pass.
    const FileStamp stamp = StampOfFile(c_strCfgPath + c_strPrinterListName);
    if (stamp == m_listStamp) {
        return;
    }
    m_listPrinterInfo = GetPrinterInfo(true);
    m_listStamp = {}; // a list without printers may be a file that could not be opened just now
    if (!m_listPrinterInfo.isEmpty()) {
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
