// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "voraprintertoolwidget.h"

#include "AppSetting.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"
#include "UtilDiagnosticDump.h"
#include "UtilLanguageCtrl.h"
#include "UtilLog.h"
#include "UtilShell.h"
#include "UtilWindow.h"
#include "ui_voraprintertoolwidget.h"

#include <QAccessible>
#include <QAction>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFontMetrics>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMenu>
#include <QProcess>
#include <QScreen>
#include <QTextDocument> // Qt::mightBeRichText
#include <QThread>
#include <QTimer>
#include <QToolTip>

#include <iterator>

namespace {

constexpr int c_iBalloonMSec = 3000;
constexpr int c_iBalloonMargins = 100; // pixels beside the title: the mark, the button and the frame
constexpr int c_iThreadWaitMSec = 1000;
constexpr int c_iThreadRetryMSec = 3000; // as often as the printer list is looked at

bool s_bWorkerLeftBehind = false;

/// Qt itself tells a screen reader nothing when a cell's text changes.
void AnnounceCell(QTableWidget& table, int iRow, int iColumn)
{
    if (!QAccessible::isActive()) {
        return;
    }
    QAccessibleInterface* pTable = QAccessible::queryAccessibleInterface(&table);
    QAccessibleInterface* pCell = pTable->tableInterface()->cellAt(iRow, iColumn);
    if (pCell != nullptr) {
        QAccessibleEvent event(pCell, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

/// Gives a cell that exists another text.
void SetCellText(QTableWidget& table, int iRow, int iColumn, const QString& strText)
{
    QTableWidgetItem& item = *table.item(iRow, iColumn);
    if (item.text() == strText) {
        return;
    }
    item.setData(Qt::DisplayRole, strText);
    // A text may be wider than its column, and a printer's name may look like a tag, which a tool tip would obey.
    item.setToolTip(Qt::mightBeRichText(strText) ? u"<span>%1</span>"_s.arg(strText.toHtmlEscaped()) : strText);
    AnnounceCell(table, iRow, iColumn);
}

/// A thread of that name, not started yet, in which the worker lives from now on.
QThread* MakeThread(UtilThreadBase* pWorker, const QString& strName)
{
    auto* pThread = new QThread;
    pThread->setObjectName(strName);
    pWorker->moveToThread(pThread);
    return pThread;
}

/// A notification's title. Qt's own balloon does not wrap it and stands on either side of the icon, so that half of the
/// screen is there for it.
QString BalloonTitle(const QString& strPrinterName)
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    if (pScreen == nullptr) { // there may be none for a moment
        return strPrinterName;
    }
    QFont font = QToolTip::font();
    font.setBold(true);
    return QFontMetrics(font).elidedText(strPrinterName, Qt::ElideMiddle,
                                         pScreen->availableSize().width() / 2 - c_iBalloonMargins);
}

QString ConnectionText(const stPrinterInfo& info)
{
    return info.iConnectType == c_iConnectUsb ? u"USB"_s : u"网络("_s + info.strPort + QLatin1Char(')');
}

/// Waits for a thread that was told to quit, as its worker was, and frees both; false, with both left alone, when it
/// has not ended by the deadline.
bool EndWorker(QThread* pThread, UtilThreadBase* pWorker, const QDeadlineTimer& deadline)
{
    const bool bEnded = pThread->wait(deadline);
    if (bEnded) {
        delete pThread;
        delete pWorker;
    }
    return bEnded;
}

} // namespace

struct VoraPrinterToolWidget::stColumn
{
    const char* pHeader; ///< UTF-8
    int iWidth;          ///< pixels
    bool bFollowsState;  ///< written anew with each status report
    QString (*pText)(VoraPrinterToolWidget& window, const stPrinterManager& printer);
};

// The printer table from left to right.
constexpr VoraPrinterToolWidget::stColumn VoraPrinterToolWidget::c_columnList[] = {
    {"打印机名称", 120, false, [](auto&, const auto& printer) { return printer.printerInfo.strPrinterName; }},
    {"连接方式", 150, false, [](auto&, const auto& printer) { return ConnectionText(printer.printerInfo); }},
    {"剩余墨水量", 345, true, [](auto& window, const auto& printer) { return window.InkText(printer.printerState); }},
    {"状态", 185, true, [](auto& window, const auto& printer) { return window.StateText(printer.printerState); }},
};

VoraPrinterToolWidget::VoraPrinterToolWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::VoraPrinterToolWidget>())
{
    ui->setupUi(this);
    SetUpFixedWindow(*this, c_strProgramTitle);
    m_pAppSetting = new AppSetting;
    InitLog();
    InitLanguage();
    InitDeviceTable();
    InitTrayIcon();
    InitThread();
}

VoraPrinterToolWidget::~VoraPrinterToolWidget()
{
    // All first, then one deadline for all: the time to exit does not grow with the number of printers.
    m_pTrdDeviceManage->SlotThreadQuit();
    m_pManageThread->quit();
    for (int i = 0; i < m_listTrdGetPrinterStatus.size(); ++i) {
        m_listTrdGetPrinterStatus[i]->SlotThreadQuit();
        m_listStatusThread[i]->quit();
    }
    const QDeadlineTimer deadline(c_iThreadWaitMSec);

    // A worker that does not end in time waits for a shell command. Deleting it under its running loop would crash, so
    // it is abandoned, without the list that ends with the window.
    bool bAllEnded = true;
    if (!EndWorker(m_pManageThread, m_pTrdDeviceManage, deadline)) {
        m_pTrdDeviceManage->Init(nullptr);
        bAllEnded = false;
    }
    for (int i = 0; i < m_listTrdGetPrinterStatus.size(); ++i) {
        if (!EndWorker(m_listStatusThread[i], m_listTrdGetPrinterStatus[i], deadline)) {
            m_listTrdGetPrinterStatus[i]->Init(-1, nullptr);
            bAllEnded = false;
        }
    }
    s_bWorkerLeftBehind = !bAllEnded;
    delete m_pAppSetting;
}

bool VoraPrinterToolWidget::IsWorkerLeftBehind()
{
    return s_bWorkerLeftBehind;
}

void VoraPrinterToolWidget::InitLog()
{
#ifdef VORA_DIAGNOSTIC_LOG
    SetLogEnable(true);
#else
    SetLogEnable(false);
#endif
}

void VoraPrinterToolWidget::InitLanguage()
{
    m_iLanguage = enLanguageChinese;
}

void VoraPrinterToolWidget::InitDeviceTable()
{
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitDeviceTable start"_s);
    QTableWidget* pTable = ui->tableDeviceManage;
    pTable->setColumnCount(static_cast<int>(std::size(c_columnList)));
    pTable->horizontalHeader()->setStretchLastSection(true);
    pTable->horizontalHeader()->setSectionsClickable(false);
    pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    pTable->setWordWrap(false); // a long name is cut at the column's end and not before its first blank
    QStringList listHeader;
    for (const stColumn& column : c_columnList) {
        listHeader.append(QString::fromUtf8(column.pHeader));
        pTable->horizontalHeader()->resizeSection(static_cast<int>(listHeader.size()) - 1, column.iWidth);
    }
    pTable->setHorizontalHeaderLabels(listHeader);
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitDeviceTable end"_s);
}

void VoraPrinterToolWidget::InitTrayIcon()
{
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitTrayIcon start"_s);
    m_pTrayIcon = new QSystemTrayIcon(windowIcon(), this);
    m_pTrayIcon->setToolTip(c_strProgramTitle);
    connect(m_pTrayIcon, &QSystemTrayIcon::activated, this, &VoraPrinterToolWidget::SlotActivatedTrayIcon);

    m_pActionShow = AddTrayAction(u"显示主界面"_s, &VoraPrinterToolWidget::SlotTrayActionShow);
    m_pActionUpdateFW = AddTrayAction(u"打印机更新助手"_s, &VoraPrinterToolWidget::SlotTrayActionUpdateFW);
    m_pActionSetting = AddTrayAction(u"设置"_s, &VoraPrinterToolWidget::SlotTrayActionSetting);
    m_pActionExit = AddTrayAction(u"退出"_s, &VoraPrinterToolWidget::SlotTrayActionExit);

    m_pTrayMenu = new QMenu(this);
    m_pTrayMenu->addActions({m_pActionShow, m_pActionUpdateFW, m_pActionSetting, m_pActionExit});
    m_pTrayIcon->setContextMenu(m_pTrayMenu);
    m_pTrayIcon->setVisible(true);
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitTrayIcon end"_s);
}

QAction* VoraPrinterToolWidget::AddTrayAction(const QString& strText, void (VoraPrinterToolWidget::*slot)())
{
    auto* pAction = new QAction(strText, this);
    connect(pAction, &QAction::triggered, this, slot);
    return pAction;
}

void VoraPrinterToolWidget::InitThread()
{
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitThread start"_s);
    m_pTrdDeviceManage = new TrdDeviceManage;
    m_pManageThread = MakeThread(m_pTrdDeviceManage, u"vora-devices"_s);
    StartThread(m_pManageThread);
    m_pTrdDeviceManage->Init(&m_listPrinterManager);
    connect(this, &VoraPrinterToolWidget::SgnManageThreadStart, m_pTrdDeviceManage, &TrdDeviceManage::SlotTaskStart);
    connect(this, &VoraPrinterToolWidget::SgnThreadQuit, m_pTrdDeviceManage, &TrdDeviceManage::SlotThreadQuit);
    connect(m_pTrdDeviceManage, &TrdDeviceManage::SgnUpdatePrinterList, this,
            &VoraPrinterToolWidget::SlotUpdatePrinterList);
    emit SgnManageThreadStart();
    WriteStringLog(__FILE__, __LINE__, __func__, u"InitThread end"_s);
}

void VoraPrinterToolWidget::StartThread(QThread* pThread)
{
    pThread->start();
    if (pThread->isRunning()) {
        return;
    }
    WriteStringLog(__FILE__, __LINE__, __func__, u"no thread for %s, tried again later"_s,
                   qPrintable(pThread->objectName()));
    if (m_listWaitingThread.isEmpty()) {
        QTimer::singleShot(c_iThreadRetryMSec, this, &VoraPrinterToolWidget::StartWaitingThreads);
    }
    m_listWaitingThread.append(pThread);
}

void VoraPrinterToolWidget::StartWaitingThreads()
{
    while (!m_listWaitingThread.isEmpty()) {
        m_listWaitingThread.first()->start();
        if (!m_listWaitingThread.first()->isRunning()) { // nor would the others get one now
            QTimer::singleShot(c_iThreadRetryMSec, this, &VoraPrinterToolWidget::StartWaitingThreads);
            return;
        }
        m_listWaitingThread.removeFirst();
    }
}

void VoraPrinterToolWidget::AddStatusWorker(int iIndex)
{
    auto* pWorker = new TrdGetPrinterStatus;
    QThread* pThread = MakeThread(pWorker, u"vora-status-"_s + QString::number(iIndex));
    StartThread(pThread);
    pWorker->Init(iIndex, &m_listPrinterManager);
    connect(this, &VoraPrinterToolWidget::SgnStatusThreadStart, pWorker, &TrdGetPrinterStatus::SlotTaskStart);
    connect(this, &VoraPrinterToolWidget::SgnThreadQuit, pWorker, &TrdGetPrinterStatus::SlotThreadQuit);
    connect(pWorker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this,
            &VoraPrinterToolWidget::SlotUpdatePrinterStatus);
    emit SgnStatusThreadStart();
    // A running worker never takes the start signals of those after it from its queue: with 1000 printers half a
    // million would wait there until exit.
    disconnect(this, &VoraPrinterToolWidget::SgnStatusThreadStart, pWorker, &TrdGetPrinterStatus::SlotTaskStart);
    m_listTrdGetPrinterStatus.append(pWorker);
    m_listStatusThread.append(pThread);
}

void VoraPrinterToolWidget::SlotActivatedTrayIcon(QSystemTrayIcon::ActivationReason reason)
{
    if (reason == QSystemTrayIcon::Trigger) {
        SlotTrayActionShow();
    }
}

void VoraPrinterToolWidget::SlotTrayActionShow()
{
    if (!isActiveWindow()) {
        setWindowFlags(Qt::Window); // brings back the maximise button, which the fixed size makes ineffective
        BringToScreen(*this);
        showNormal();
    }
}

void VoraPrinterToolWidget::SlotTrayActionUpdateFW()
{
    QProcess::startDetached(c_strBinPath + u"voraK507FW"_s, QStringList());
}

void VoraPrinterToolWidget::SlotTrayActionSetting()
{
    BringToScreen(*m_pAppSetting);
    m_pAppSetting->setVisible(true);
}

void VoraPrinterToolWidget::SlotTrayActionExit()
{
    // All hidden before quit(): Qt 6 closes visible windows first, and one that ignores that keeps the program alive.
    m_pAppSetting->close();
    setVisible(false);
    m_pTrayIcon->setVisible(false);
    emit SgnThreadQuit(); // reaches no running worker: the destructor tells those
    QCoreApplication::quit();
}

void VoraPrinterToolWidget::closeEvent(QCloseEvent* event)
{
    setVisible(false);
    event->ignore();
}

// Kept empty: what changes in fonts, style or language leaves the fixed window as it is.
void VoraPrinterToolWidget::changeEvent(QEvent*) {}

QList<stPrinterManager> VoraPrinterToolWidget::PrinterList() const
{
    // Element by element: a copy that shares its storage would be read while a worker writes its element there.
    const std::lock_guard lock(g_mutexPrinterList);
    return {m_listPrinterManager.cbegin(), m_listPrinterManager.cend()};
}

std::optional<stPrinterManager> VoraPrinterToolWidget::PrinterAt(int iIndex) const
{
    const std::lock_guard lock(g_mutexPrinterList);
    if (iIndex < 0 || iIndex >= m_listPrinterManager.size()) {
        return std::nullopt;
    }
    return m_listPrinterManager.at(iIndex);
}

void VoraPrinterToolWidget::SlotUpdatePrinterList()
{
    const QList<stPrinterManager> listPrinter = PrinterList();
    const int iCount = static_cast<int>(listPrinter.size());
    QTableWidget* pTable = ui->tableDeviceManage;
    pTable->clearContents();
    pTable->setRowCount(iCount);
    for (int i = 0; i < iCount; ++i) {
        const stPrinterManager unreached{listPrinter.at(i).printerInfo, stPrinterState()};
        int iColumn = 0;
        for (const stColumn& column : c_columnList) {
            pTable->setItem(i, iColumn, new QTableWidgetItem);
            SetCellText(*pTable, i, iColumn++, column.pText(*this, unreached));
        }
    }

    // Workers are never stopped before exit: after the list has shrunk and grown again, an index can have two.
    for (int i = m_iStatusThreadCount; i < iCount; ++i) {
        AddStatusWorker(i);
    }
    m_iStatusThreadCount = iCount;
    DebugOutputPrinterInfo();
}

void VoraPrinterToolWidget::SlotUpdatePrinterStatus(int iIndex)
{
    const std::optional<stPrinterManager> printer = PrinterAt(iIndex);
    QTableWidget* pTable = ui->tableDeviceManage;
    if (!printer || iIndex >= pTable->rowCount()) {
        return;
    }
    int iColumn = 0;
    for (const stColumn& column : c_columnList) {
        if (column.bFollowsState) {
            SetCellText(*pTable, iIndex, iColumn, column.pText(*this, *printer));
        }
        ++iColumn;
    }
    ShowBalloon(*printer);
    DebugOutputPrinterStatus(iIndex);
}

QString VoraPrinterToolWidget::InkText(const stPrinterState& state)
{
    const auto word = [this](unsigned long dwLevel) { return GetRemainInkStr(static_cast<int>(dwLevel)); };
    return QString::asprintf("青色：%s   红色：%s   黄色：%s   黑色：%s", word(state.dwBlueInkRemainer),
                             word(state.dwRedInkRemainer), word(state.dwYellowInkRemainer),
                             word(state.dwBlackInkRemainer));
}

QString VoraPrinterToolWidget::StateText(const stPrinterState& state) const
{
    if (!state.listErrorStatus.isEmpty()) {
        return GetErrorText(state.listErrorStatus.first(), m_iLanguage);
    }
    const QString strState = GetStatusText(state.enCurrentStatus, m_iLanguage);
    if (state.listWarningStatus.isEmpty() || state.enCurrentStatus != enStatusPrinting) {
        return strState;
    }
    return strState + QLatin1Char('(') + GetErrorText(state.listWarningStatus.first(), m_iLanguage) + QLatin1Char(')');
}

/// The first error's or else the first warning's; none without either.
void VoraPrinterToolWidget::ShowBalloon(const stPrinterManager& printer)
{
    const bool bError = !printer.printerState.listErrorStatus.isEmpty();
    const QList<enErrorStatus>& listCode =
        bError ? printer.printerState.listErrorStatus : printer.printerState.listWarningStatus;
    if (!listCode.isEmpty()) {
        m_pTrayIcon->showMessage(BalloonTitle(printer.printerInfo.strPrinterName),
                                 GetErrorText(listCode.first(), m_iLanguage),
                                 bError ? QSystemTrayIcon::Critical : QSystemTrayIcon::Warning, c_iBalloonMSec);
    }
}

const char* VoraPrinterToolWidget::GetRemainInkStr(int iLevel)
{
    if (iLevel < 1 || iLevel > 100) {
        return "无";
    }
    if (iLevel >= 70) {
        return "高";
    }
    if (iLevel >= 40) {
        return "中";
    }
    return iLevel >= 16 ? "较低" : "低";
}

void VoraPrinterToolWidget::ChmodFile(QString strPath)
{
    RunShellCommand("chmod 777 " + QuoteForShell(strPath));
}

void VoraPrinterToolWidget::ChmodVendorPath(QString strPath)
{
    RunShellCommand("chmod 777 " + QuoteForShell(strPath) + '/');
    RunShellCommand("chmod 777 " + QuoteForShell(strPath) + "/*");
    const QDir dir(strPath);
    const QStringList listName = dir.entryList(QDir::Dirs | QDir::NoSymLinks | QDir::NoDotAndDotDot);
    for (const QString& strName : listName) {
        ChmodVendorPath(dir.absoluteFilePath(strName));
    }
}

void VoraPrinterToolWidget::DebugOutputPrinterInfo()
{
    const QStringList listLine = PrinterInfoLines(PrinterList());
    for (const QString& strLine : listLine) {
        WriteStringLog(__FILE__, __LINE__, __func__, u"%s"_s, qPrintable(strLine));
    }
}

void VoraPrinterToolWidget::DebugOutputPrinterStatus(int iIndex)
{
    const std::optional<stPrinterManager> printer = PrinterAt(iIndex);
    if (!printer) {
        return;
    }
    const QStringList listLine = PrinterStatusLines(iIndex, *printer);
    for (const QString& strLine : listLine) {
        WriteStringLog(__FILE__, __LINE__, __func__, u"%s"_s, qPrintable(strLine));
    }
}

#include "moc_voraprintertoolwidget.cpp"
