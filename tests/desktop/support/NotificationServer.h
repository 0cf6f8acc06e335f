// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"
#include "TestFiles.h"

#include <QDBusConnectionInterface>
#include <QProcess>
#include <QTest>

/// A desktop's notification server, which says what it is told. Killed with this object.
class NotificationServer
{
public:
    ~NotificationServer()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    /// Starts it and waits until its name is on the session bus.
    bool Start()
    {
        m_process.setStandardOutputFile(m_strOutput);
        m_process.start(u"dunst"_s, {u"-print"_s});
        const auto* pBus = QDBusConnection::sessionBus().interface();
        return QTest::qWaitFor([=] { return pBus->isServiceRegistered(u"org.freedesktop.Notifications"_s).value(); });
    }

    /// One of the last notification's fields; empty before the first.
    QString Last(const QString& strField) const
    {
        const QString strLast = QString::fromUtf8(ReadFile(m_strOutput)).section(u"\n}\n"_s, -2);
        const QStringList listLine = strLast.split(QLatin1Char('\n')).filter(QLatin1Char('\t') + strField + u": "_s);
        return listLine.value(0).section(u": "_s, 1).remove(QLatin1Char('\''));
    }

    /// All notifications since its start.
    int Count() const { return static_cast<int>(ReadFile(m_strOutput).count("\n}\n")); }

private:
    QString m_strOutput = u"/tmp/notifications.txt"_s;
    QProcess m_process;
};
