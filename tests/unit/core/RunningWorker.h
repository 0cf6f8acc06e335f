// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TrdGetPrinterStatus.h"

#include <QThread>

#include <atomic>

/// A status worker that counts its signals.
class CountedWorker
{
public:
    CountedWorker(int iIndex, QList<stPrinterManager>* pList)
    {
        QObject::connect(
            &m_worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, &m_worker,
            [this](int iSignalIndex) {
                m_iLastIndex = iSignalIndex;
                ++m_iSignals;
            },
            Qt::DirectConnection);
        m_worker.Init(iIndex, pList);
    }

    /// One pass of the loop in the caller's thread, without its sleep: the quit flag is seen at the pass's end.
    void RunOneCycle()
    {
        m_worker.m_bTaskRunning = false;
        m_worker.SlotThreadQuit();
        m_worker.SlotTaskStart();
    }

    TrdGetPrinterStatus m_worker;
    std::atomic<int> m_iSignals{0};
    std::atomic<int> m_iLastIndex{-7};
};

/// A status worker whose loop runs in a thread of its own for as long as the object lives.
class RunningWorker : public CountedWorker
{
public:
    RunningWorker(int iIndex, QList<stPrinterManager>* pList) : CountedWorker(iIndex, pList)
    {
        m_worker.moveToThread(&m_thread);
        m_thread.start();
        QMetaObject::invokeMethod(&m_worker, &TrdGetPrinterStatus::SlotTaskStart, Qt::QueuedConnection);
    }
    ~RunningWorker() { EndWithin(10000); }
    RunningWorker(const RunningWorker&) = delete;
    RunningWorker& operator=(const RunningWorker&) = delete;

    bool EndWithin(unsigned long dwMSec)
    {
        m_worker.SlotThreadQuit();
        m_thread.quit();
        return m_thread.wait(dwMSec);
    }

private:
    QThread m_thread;
};

/// The shared list's element, as any other thread may read it.
inline stPrinterManager SharedAt(const QList<stPrinterManager>& listPrinter, int iIndex)
{
    const std::lock_guard lock(g_mutexPrinterList);
    return listPrinter.at(iIndex);
}

inline stPrinterManager NamedPrinter(const QString& strName, int iStatus)
{
    stPrinterManager printer;
    printer.printerInfo = {strName, u"RA7QX"_s, 2, u"192.0.2.7"_s, u"ipp://a"_s};
    printer.printerState.enCurrentStatus = iStatus;
    return printer;
}
