// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal, so that what is running can be ended in order. Made once, in the
/// main thread, before any other is started; from then on these signals no longer end the process, not even without
/// this object. When the system has no file descriptor left, they end it as ever.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    SignalWatcher();
    ~SignalWatcher() override;

signals:
    void SgnEnd(); ///< one of them has come

private:
    int m_iFd;
};
