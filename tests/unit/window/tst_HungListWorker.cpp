// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "OpenHook.h"
#include "OrderOfEnds.h"
#include "StatusFolder.h"
#include "WindowTest.h"

#include <QPointer>
#include <QtTest>

#include <future>

/// The list's worker alone hangs in its file when the window ends.
class tst_HungListWorker : public QObject
{
    Q_OBJECT

private slots:
    void isLeftBehindWithoutTheList()
    {
        StatusFolder().WritePrinterList({MakePrinter(u"Office"_s).printerInfo});
        std::promise<void> go;
        std::atomic<bool> bHangs{false};
        const std::shared_future<void> goes = go.get_future().share();
        const OpenHook hang(StatusFolder().ListPath(), [&] {
            bHangs = true;
            goes.wait();
            return true;
        });
        auto pWindow = std::make_unique<VoraPrinterToolWidget>();
        const std::unique_ptr<TrdDeviceManage> pWorker(pWindow->m_pTrdDeviceManage);
        const std::unique_ptr<QThread> pThread(pWindow->m_pManageThread);
        QTRY_VERIFY(bHangs);
        ShowOrderOfEnds(*pWindow);
        pWindow.reset();
        QVERIFY(VoraPrinterToolWidget::IsWorkerLeftBehind());
        QVERIFY(pThread->isRunning());
        QVERIFY(pWorker->m_bThreadQuit);
        QVERIFY(pWorker->m_pListPrinterManager == nullptr); // the list has gone with the window
        go.set_value();
        QVERIFY(pThread->wait(5000));
    }
};

QTEST_MAIN(tst_HungListWorker)

#include "tst_HungListWorker.moc"
