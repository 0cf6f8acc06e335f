// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "NotificationServer.h"

#include "QtCompat.h"

#include "TestFiles.h"

#include <QDBusConnectionInterface>
#include <QTest>

NotificationServer::~NotificationServer()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool NotificationServer::Start()
{
    m_process.setStandardOutputFile(m_strOutput);
    m_process.start(u"dunst"_s, {u"-print"_s});
    return QTest::qWaitFor([] {
        return QDBusConnection::sessionBus()
            .interface()
            ->isServiceRegistered(u"org.freedesktop.Notifications"_s)
            .value();
    });
}

QString NotificationServer::Last(const QString& strField) const
{
    const QStringList listLine = QString::fromUtf8(Output())
                                     .section(u"\n}\n"_s, -2)
                                     .split(QLatin1Char('\n'))
                                     .filter(QLatin1Char('\t') + strField + QLatin1String(": "));
    return listLine.value(0).section(u": "_s, 1).remove(QLatin1Char('\''));
}

int NotificationServer::Count() const
{
    return static_cast<int>(Output().count("\n}\n"));
}

QByteArray NotificationServer::Output() const
{
    return ReadFile(m_strOutput);
}
