// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"

#include <QProcess>

/// A desktop's notification server, which says what it is told. Killed with this object.
class NotificationServer
{
public:
    ~NotificationServer();

    /// Starts it and waits until its name is on the session bus.
    bool Start();

    /// One of the last notification's fields; empty before the first.
    QString Last(const QString& strField) const;

    /// All notifications since its start.
    int Count() const;

private:
    QByteArray Output() const;

    QString m_strOutput = u"/tmp/notifications.txt"_s;
    QProcess m_process;
};
