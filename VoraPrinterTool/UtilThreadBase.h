// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

#include <atomic>

/// Base of the workers: each is made without parent, moved to a thread of its own and driven by queued signals.
class UtilThreadBase : public QObject
{
    Q_OBJECT

public:
    explicit UtilThreadBase(QObject* parent = nullptr);

    /// Sleeps iMSec milliseconds in slices of 500 ms and then the remainder in one piece; a quit request is seen before
    /// each slice. Returns the quit flag. Called from the worker's thread.
    bool WaitForSleep(int iMSec);

    bool m_bTaskRunning = false;            ///< the loop was started once; never cleared
    std::atomic<bool> m_bThreadQuit{false}; ///< quit requested, from any thread; never cleared
};
