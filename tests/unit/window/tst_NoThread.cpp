// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "UtilLog.h"
#include "WindowTest.h"

#include <QtTest>

#include <atomic>
#include <cerrno>

#include <dlfcn.h>
#include <pthread.h>

namespace {

std::atomic<int> s_iThreadsLeft{1000};
QtMessageHandler s_oldHandler = nullptr;

/// Qt itself says when it is refused a thread.
void DropThreadWarning(QtMsgType enType, const QMessageLogContext& context, const QString& strText)
{
    if (!strText.startsWith(QLatin1String("QThread::start: Thread creation error"))) {
        s_oldHandler(enType, context, strText);
    }
}

} // namespace

/// In place of the system's, which refuses a thread to a user with too many.
extern "C" int pthread_create(pthread_t* pThread, const pthread_attr_t* pAttributes, void* (*pRun)(void*),
                              void* pArgument) noexcept
{
    static const auto s_real = reinterpret_cast<decltype(&pthread_create)>(::dlsym(RTLD_NEXT, "pthread_create"));
    return s_iThreadsLeft.fetch_sub(1) > 0 ? s_real(pThread, pAttributes, pRun, pArgument) : EAGAIN;
}

/// A worker that the system refuses a thread gets one later.
class tst_NoThread : public WindowTest
{
    Q_OBJECT

private slots:
    void refusedThreadsAreTriedAgain()
    {
        const DriverFolder folder = StatusFolder();
        QList<stPrinterInfo> listInfo = {MakePrinter(u"Office"_s).printerInfo, MakePrinter(u"Lab"_s).printerInfo};
        for (const stPrinterInfo& info : std::as_const(listInfo)) {
            folder.WriteStatus(info.strPrinterName, EncodeStatusReply({}));
        }
        folder.WritePrinterList(listInfo);
        m_pWindow = std::make_unique<VoraPrinterToolWidget>(); // Qt's own threads have started with it
        m_pWindow.reset();
        s_oldHandler = qInstallMessageHandler(DropThreadWarning);
        s_iThreadsLeft = 0;
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        QVERIFY(!m_pWindow->m_pManageThread->isRunning());
        QCOMPARE(Table()->rowCount(), 0);

        SetLogEnable(true);
        s_iThreadsLeft = 1; // for the list worker
        QTRY_COMPARE_WITH_TIMEOUT(Table()->rowCount(), 2, 10000);
        for (int iRow = 0; iRow < 2; ++iRow) {
            QVERIFY(!m_pWindow->m_listStatusThread.at(iRow)->isRunning());
            QCOMPARE(Cell(iRow, 3), u"脱机"_s);
            QCOMPARE(LogText().count(QByteArray("no thread for vora-status-") + QByteArray::number(iRow) + ','), 1);
        }

        s_iThreadsLeft = 1000;
        QTRY_COMPARE_WITH_TIMEOUT(Cell(0, 3), u"就绪"_s, 10000);
        QTRY_COMPARE(Cell(1, 3), u"就绪"_s);
        SetLogEnable(false);

        s_iThreadsLeft = 0; // one that never ran does not hinder the end
        listInfo.append(MakePrinter(u"Third"_s).printerInfo);
        folder.WritePrinterList(listInfo);
        QTRY_COMPARE(Table()->rowCount(), 3);
        m_pWindow.reset();
        QVERIFY(!VoraPrinterToolWidget::IsWorkerLeftBehind());
        qInstallMessageHandler(s_oldHandler);
    }
};

QTEST_MAIN(tst_NoThread)

#include "tst_NoThread.moc"
