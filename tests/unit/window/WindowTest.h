// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TrdDeviceManage.h"
#include "voraprintertoolwidget.h"

#include <QTableWidget>
#include <QTest>
#include <QThread>
#include <QTranslator>

#include <atomic>
#include <memory>

// What the tests of the main window have in common.

/// A printer as the list file names it, with a state that nobody has filled.
inline stPrinterManager MakePrinter(const QString& strName, int iConnectType = 1, const QString& strPort = QString())
{
    stPrinterManager printer;
    printer.printerInfo = {strName, u"RA7QX"_s, iConnectType, strPort, u"usb://"_s + strName};
    return printer;
}

inline QList<stPrinterManager> Repeat(const stPrinterManager& printer, int iCount)
{
    QList<stPrinterManager> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append(printer);
    }
    return listPrinter;
}

/// Ends the list worker, which would replace a list that a test puts in by hand.
inline void StopListWorker(VoraPrinterToolWidget& window)
{
    window.m_pTrdDeviceManage->SlotThreadQuit();
    window.m_pManageThread->quit();
    window.m_pManageThread->wait();
}

/// Whether a worker's loop was started. The worker's own flag is read when the loop is over: the worker is told to
/// quit, and what waits in its queue behind the start gets its turn.
inline bool WasTaskStarted(UtilThreadBase& worker)
{
    static std::atomic<bool> s_bOver;
    s_bOver = false;
    worker.m_bThreadQuit = true;
    QMetaObject::invokeMethod(
        &worker, [] { s_bOver = true; }, Qt::QueuedConnection);
    return QTest::qWaitFor([] { return s_bOver.load(); }) && worker.m_bTaskRunning;
}

inline void SetPrinterList(VoraPrinterToolWidget& window, const QList<stPrinterManager>& listPrinter)
{
    const std::lock_guard lock(g_mutexPrinterList);
    window.m_listPrinterManager = listPrinter;
}

/// Puts rows into the table without workers, which would write into the list.
inline void ShowPrinters(VoraPrinterToolWidget& window, const QList<stPrinterManager>& listPrinter)
{
    SetPrinterList(window, listPrinter);
    window.m_iStatusThreadCount = static_cast<int>(listPrinter.size());
    window.SlotUpdatePrinterList();
}

/// One printer, "Office", reports the state.
inline void ReportState(VoraPrinterToolWidget& window, const stPrinterState& state)
{
    stPrinterManager printer = MakePrinter(u"Office"_s);
    printer.printerState = state;
    ShowPrinters(window, {printer});
    window.SlotUpdatePrinterStatus(0);
}

inline const QString c_strNoInk = u"青色：无   红色：无   黄色：无   黑色：无"_s;

/// Base of the tests that look into the main window's table.
class WindowTest : public QObject
{
protected:
    QTableWidget* Table() const { return m_pWindow->findChild<QTableWidget*>(u"tableDeviceManage"_s); }
    QString Cell(int iRow, int iColumn) const { return Table()->item(iRow, iColumn)->text(); }

    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

/// Keeps what it was asked to translate, as "context: text".
class RecordingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }

    QString translate(const char* pContext, const char* pText, const char*, int) const override
    {
        m_listAsked.append(QLatin1String(pContext) + u": "_s + QLatin1String(pText));
        return QString();
    }

    mutable QStringList m_listAsked;
};
