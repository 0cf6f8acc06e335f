// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"
#include "QtCompat.h"
#include "UtilFile.h"
#include "UtilThreadBase.h"

#include <optional>

/// Keeps the shared printer list current: looks every three seconds whether the driver package's printer list file has
/// changed, reads it then and, when the printers differ, replaces the shared list. Lives in a thread of its own; called
/// from any thread but for the loop.
class TrdDeviceManage : public UtilThreadBase
{
    Q_OBJECT

public:
    explicit TrdDeviceManage(QObject* parent = nullptr);

    /// The shared list, owned by the caller; called before the loop starts. A null pointer takes the list away from the
    /// worker again: when the call returns, the worker no longer touches it.
    void Init(QList<stPrinterManager>* pListPrinterManager);

    /// The printers of the list file, as ReadPrinterList gives them; none when they are not known just now. The
    /// argument has no effect. Called from any thread.
    QList<stPrinterInfo> GetPrinterInfo(bool bUnused);

    /// Entries for the shared list, each with a reset state.
    QList<stPrinterManager> GetInitPrinterList(QList<stPrinterInfo> listPrinterInfo);

    // Reset a record.
    void InitStPrinterInfo(stPrinterInfo& printerInfo);    ///< all empty, the model "-1"
    void InitStPrinterState(stPrinterState& printerState); ///< off-line, all else empty or 0

signals:
    /// The shared list was replaced. Emitted under g_mutexPrinterList, so that it stands in the window's queue before
    /// any status report of the new list.
    void SgnUpdatePrinterList();

public slots:
    /// The worker's loop; returns after a quit request. A second start is ignored. Called from the worker's thread.
    void SlotTaskStart();
    void SlotThreadQuit(); ///< ends the loop within 500 ms

public:
    QList<stPrinterManager>* m_pListPrinterManager = nullptr;
#ifdef VORA_HAS_TEXT_CODEC
    QTextCodec* m_pCodec; ///< UTF-8; kept, not used by the reading
#endif

private:
    void ReadChangedList();
    void UpdateSharedList(const QList<stPrinterInfo>& listPrinterInfo);

    std::optional<FileStamp> m_listStamp;   // of the list file that m_listPrinterInfo comes from; none: read it again
    QList<stPrinterInfo> m_listPrinterInfo; // the printers of the last pass
};
