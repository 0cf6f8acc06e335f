// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "voraprintertoolwidget.h"

#include <QThread>

#include <atomic>

inline std::atomic<int> g_iEndedThreads{0};

/// QThread::wait() orders what a thread did before what follows. It does so with a lock of Qt's own, which the thread
/// sanitizer does not see, so the same order is shown to it here: from the thread's end to the thread object's, which
/// the window deletes after it has waited and before it deletes the worker. Without captures: their way through Qt is
/// no more visible.
inline void ShowOrderOfEnds(const VoraPrinterToolWidget& window)
{
    for (QThread* pThread : window.m_listStatusThread + QList<QThread*>{window.m_pManageThread}) {
        QObject::connect(
            pThread, &QThread::finished, pThread, [] { g_iEndedThreads.fetch_add(1); }, Qt::DirectConnection);
        QObject::connect(pThread, &QObject::destroyed, [] { (void)g_iEndedThreads.load(); });
    }
}
