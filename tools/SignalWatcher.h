// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

/// Turns SIGINT, SIGTERM and SIGHUP into a Qt signal, so that what is running can be ended in order.
/// Made once, before any thread is started; from then on these signals no longer end the process.
class SignalWatcher : public QObject
{
    Q_OBJECT

public:
    explicit SignalWatcher(QObject* parent = nullptr);
    ~SignalWatcher() override;

signals:
    void SgnEnd();

private:
    int m_iFd;
};
