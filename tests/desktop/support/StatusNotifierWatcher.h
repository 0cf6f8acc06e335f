// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"

#include <QDBusConnection>

/// A desktop's list of tray icons, by StatusNotifier alone; the panel that shows them may come later than the list.
class StatusNotifierWatcher : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER m_bHost)

public:
    explicit StatusNotifierWatcher(const QString& strAddress, bool bHost = false) : m_bHost(bHost)
    {
        QDBusConnection bus = QDBusConnection::connectToBus(strAddress, c_strConnection);
        bus.registerObject(u"/StatusNotifierWatcher"_s, this, QDBusConnection::ExportAllContents);
        bus.registerService(u"org.kde.StatusNotifierWatcher"_s);
    }
    ~StatusNotifierWatcher() override { QDBusConnection::disconnectFromBus(c_strConnection); }

    void RegisterHost()
    {
        m_bHost = true;
        emit StatusNotifierHostRegistered();
    }

    int m_iIcons = 0;

public slots:
    void RegisterStatusNotifierItem(const QString& /*strService*/) { ++m_iIcons; }

signals:
    void StatusNotifierHostRegistered();

private:
    const QString c_strConnection = u"watcher"_s;
    bool m_bHost;
};
