// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterText.h"
#include "TrdGetPrinterStatus.h"

#include <QThread>

#include <atomic>
#include <future>

/// A worker's loop in a thread of its own for as long as the object lives.
template <typename Worker>
class RunningWorker
{
public:
    explicit RunningWorker(Worker& worker) : m_worker(worker)
    {
        m_worker.moveToThread(&m_thread);
        m_thread.start();
        QMetaObject::invokeMethod(&m_worker, &Worker::SlotTaskStart, Qt::QueuedConnection);
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
    Worker& m_worker;
    QThread m_thread;
};

/// One pass of the loop in the caller's thread, without its sleep: the quit flag is seen at the pass's end.
template <typename Worker>
void RunOnePass(Worker& worker)
{
    worker.m_bTaskRunning = false;
    worker.SlotThreadQuit();
    worker.SlotTaskStart();
}

/// A status worker that counts its signals.
class CountedWorker : public TrdGetPrinterStatus
{
public:
    CountedWorker(int iIndex, QList<stPrinterManager>* pList)
    {
        const auto count = [this](int iSignalIndex) {
            m_iLastIndex = iSignalIndex;
            ++m_iSignals;
        };
        connect(this, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, this, count, Qt::DirectConnection);
        Init(iIndex, pList);
    }

    std::atomic<int> m_iSignals{0};
    std::atomic<int> m_iLastIndex{-7};
};

/// The shared list, as any other thread may read it.
inline QStringList SharedTexts(const QList<stPrinterManager>& listPrinter)
{
    const std::lock_guard lock(g_mutexPrinterList);
    return Texts(listPrinter);
}

/// Tries from a thread of its own: a mutex that this thread holds must not be tried here.
inline bool IsListFree()
{
    return std::async(std::launch::async,
                      [] { return std::unique_lock(g_mutexPrinterList, std::try_to_lock).owns_lock(); })
        .get();
}

inline stPrinterManager ListedPrinter(const QString& strName, int iStatus)
{
    stPrinterManager printer;
    printer.printerInfo = {strName, u"RA7QX"_s, 2, u"192.0.2.7"_s, u"ipp://a"_s};
    printer.printerState.enCurrentStatus = iStatus;
    return printer;
}
