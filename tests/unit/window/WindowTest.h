// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TestFiles.h"
#include "TrdDeviceManage.h"
#include "voraprintertoolwidget.h"

#include <QGuiApplication>
#include <QMetaMethod>
#include <QPointer>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QThread>

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

inline QList<stPrinterManager> MakePrinters(int iCount)
{
    QList<stPrinterManager> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append(MakePrinter(u"Printer%1"_s.arg(i)));
    }
    return listPrinter;
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

/// The class's own signals and slots, which are all public.
inline QStringList MethodsOf(const QMetaObject& meta)
{
    QStringList listMethod;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        const char* pKind = method.methodType() == QMetaMethod::Signal ? "signal" : "slot";
        listMethod.append(QString::asprintf("%s %s", method.access() == QMetaMethod::Public ? pKind : "",
                                            method.methodSignature().constData()));
    }
    return listMethod;
}

/// A window of ours as it is made: named, hidden, without a maximise button, in the middle of all screens and of a size
/// that nobody changes.
inline void CheckFixedWindow(QWidget& window, const char* pName, const QString& strTitle, QSize size)
{
    QCOMPARE(window.objectName(), QLatin1String(pName));
    QCOMPARE(window.windowTitle(), strTitle);
    QVERIFY(window.isWindow());
    QVERIFY(window.isHidden());
    QCOMPARE(window.windowModality(), Qt::NonModal);
    QCOMPARE(window.windowFlags(), QWidget().windowFlags() & ~Qt::WindowMaximizeButtonHint);
    QCOMPARE(window.minimumSize(), size);
    QCOMPARE(window.maximumSize(), size);
    window.resize(2 * size);
    QCOMPARE(window.size(), size);
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    QCOMPARE(window.pos(), QPoint((desktop.width() - size.width()) / 2, (desktop.height() - size.height()) / 2));
}

/// Whether a window refuses to be closed but hides; an accepted close event would destroy it.
inline bool IsHiddenByClosing(QWidget& window)
{
    window.setAttribute(Qt::WA_DeleteOnClose);
    const QPointer<QWidget> pAlive(&window);
    const bool bClosed = window.close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return !bClosed && !pAlive.isNull() && window.isHidden();
}

/// A worker whose loop was started, and whom the window's SgnThreadQuit reaches when it has no loop. The loop's own
/// flag is read when the loop is over: the worker is told to quit, and what waits in its queue behind the start gets
/// its turn.
inline void CheckStart(UtilThreadBase& worker, VoraPrinterToolWidget& window)
{
    static std::atomic<bool> s_bOver;
    s_bOver = false;
    worker.m_bThreadQuit = true;
    QMetaObject::invokeMethod(
        &worker, [] { s_bOver = true; }, Qt::QueuedConnection);
    QTRY_VERIFY(s_bOver);
    QVERIFY(worker.m_bTaskRunning);
    worker.m_bThreadQuit = false;
    emit window.SgnThreadQuit();
    QTRY_VERIFY(worker.m_bThreadQuit);
}

/// Base of the tests of the main window.
class WindowTest : public QObject
{
protected:
    /// A window without driver package, and without the list worker, which would replace a list that a test puts in.
    void MakeWindow()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        m_pWindow->m_pTrdDeviceManage->SlotThreadQuit();
        m_pWindow->m_pManageThread->quit();
        m_pWindow->m_pManageThread->wait();
    }

    QTableWidget* Table() const { return m_pWindow->findChild<QTableWidget*>(u"tableDeviceManage"_s); }
    QString Cell(int iRow, int iColumn) const { return Table()->item(iRow, iColumn)->text(); }

    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};
