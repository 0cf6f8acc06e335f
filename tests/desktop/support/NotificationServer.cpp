// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "NotificationServer.h"

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
    m_process.start(QStringLiteral("dunst"), {QStringLiteral("-print")});
    return QTest::qWaitFor([] {
        return QDBusConnection::sessionBus()
            .interface()
            ->isServiceRegistered(QStringLiteral("org.freedesktop.Notifications"))
            .value();
    });
}

QString NotificationServer::Last(const QString& strField) const
{
    const QStringList listLine = QString::fromUtf8(Output())
                                     .section(QStringLiteral("\n}\n"), -2)
                                     .split(QLatin1Char('\n'))
                                     .filter(QLatin1Char('\t') + strField + QLatin1String(": "));
    return listLine.value(0).section(QStringLiteral(": "), 1).remove(QLatin1Char('\''));
}

int NotificationServer::Count() const
{
    return static_cast<int>(Output().count("\n}\n"));
}

QByteArray NotificationServer::Output() const
{
    return ReadFile(m_strOutput);
}
