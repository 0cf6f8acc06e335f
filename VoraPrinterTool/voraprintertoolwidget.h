// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QList>
#include <QSystemTrayIcon>
#include <QWidget>

#include <memory>
#include <optional>

class AppSetting;
class QAction;
class QMenu;
class QThread;
class TrdDeviceManage;
class TrdGetPrinterStatus;

namespace Ui {
class VoraPrinterToolWidget;
}

/// The main window and the owner of everything else: the printer table, the tray icon with its menu, the settings
/// window, the shared printer list and the workers with their threads. Closing it only hides it. Everything here
/// belongs to the GUI thread; the shared list alone is also used by the workers, under g_mutexPrinterList.
class VoraPrinterToolWidget : public QWidget
{
    Q_OBJECT

public:
    explicit VoraPrinterToolWidget(QWidget* parent = nullptr);

    /// Tells all workers to stop and waits for them, 1000 ms at most for all together. One that has not ended by then
    /// is left behind without the list, see IsWorkerLeftBehind.
    ~VoraPrinterToolWidget() override;

    /// Whether the window destroyed last left a worker behind. Its command may end at any moment, so that the process
    /// has to end without destroying what the worker uses then, Qt's global objects too.
    static bool IsWorkerLeftBehind();

    // Start-up steps, each called once, by the constructor.
    void InitDeviceTable(); ///< columns, headers and widths of the empty table
    void InitTrayIcon();    ///< makes and shows the icon with its menu
    void InitThread();      ///< makes the list worker and starts it
    void InitLog();         ///< on in a support build (VORA_DIAGNOSTIC_LOG), off in any other
    void InitLanguage();    ///< Chinese, always

    // Reserved start-up steps, kept empty and not called.
    void InitConfig() {}
    void CleanTempFile() {}

    /// An ink level of 0 to 100 per cent in words, UTF-8; "无" (none) for any other number.
    const char* GetRemainInkStr(int iLevel);

    // Permission repair, kept and not wired to anything.

    /// chmod 777 on one file; a failure is not reported.
    void ChmodFile(QString strPath);

    /// The same for a folder with all but hidden entries at every depth. What a link leads to is changed, but no linked
    /// folder is entered.
    void ChmodVendorPath(QString strPath);

    void DebugOutputPrinterInfo();             ///< every printer's identity to the log
    void DebugOutputPrinterStatus(int iIndex); ///< one printer's state to the log; nothing for an index beyond the list

signals:
    void SgnManageThreadStart(); ///< the list worker is to begin its loop
    void SgnStatusThreadStart(); ///< the same for the status worker made last
    void SgnThreadQuit();        ///< kept; no worker takes it from its queue while its loop runs

public slots:
    void SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason reason); ///< a click is SlotTrayActionShow
    void SlotTrayActionShow();     ///< shows or raises the window unless it is the active one
    void SlotTrayActionUpdateFW(); ///< starts the driver package's update tool; nothing when that fails
    void SlotTrayActionSetting();  ///< shows the settings window
    void SlotTrayActionExit();     ///< hides everything and ends the event loop

    /// Shows the row's state and, when there is an error or else a warning, a balloon. A row beyond the table or the
    /// list is ignored: a worker of a printer that is gone may still report.
    void SlotUpdatePrinterStatus(int iIndex);

    /// Builds the table anew and makes a status worker for each new row.
    void SlotUpdatePrinterList();

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    struct stColumn;
    static const stColumn c_columnList[];

    QAction* AddTrayAction(const QString& strText, void (VoraPrinterToolWidget::*slot)());
    /// Starts a worker's thread. One that the system refuses is tried again every 3 s; the worker's start waits in its
    /// queue meanwhile.
    void StartThread(QThread* pThread);
    void StartWaitingThreads();
    void AddStatusWorker(int iIndex);
    QList<stPrinterManager> PrinterList() const;
    std::optional<stPrinterManager> PrinterAt(int iIndex) const;
    QString InkText(const stPrinterState& state);
    QString StateText(const stPrinterState& state) const;
    void ShowBalloon(const stPrinterManager& printer);

    QList<QThread*> m_listWaitingThread; // refused by the system until now

public:
    std::unique_ptr<Ui::VoraPrinterToolWidget> ui;
    QSystemTrayIcon* m_pTrayIcon = nullptr;
    QMenu* m_pTrayMenu = nullptr;
    QAction* m_pActionShow = nullptr;
    QAction* m_pActionUpdateFW = nullptr;
    QAction* m_pActionSetting = nullptr;
    QAction* m_pActionExit = nullptr;
    QList<TrdGetPrinterStatus*> m_listTrdGetPrinterStatus; ///< every worker ever made, also of rows that are gone
    QList<QThread*> m_listStatusThread;                    ///< their threads, index for index
    TrdDeviceManage* m_pTrdDeviceManage = nullptr;
    QThread* m_pManageThread = nullptr;
    AppSetting* m_pAppSetting = nullptr;
    QList<stPrinterManager> m_listPrinterManager; ///< the shared list, under g_mutexPrinterList
    int m_iStatusThreadCount = 0;                 ///< the printer count for which workers were last made
    int m_iLanguage = 0;                          ///< enLanguage
};
