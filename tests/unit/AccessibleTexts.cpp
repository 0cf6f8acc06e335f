// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AccessibleTexts.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

const QString c_strInterface = QStringLiteral("org.a11y.atspi.Accessible");

QVariant Call(const QDBusConnection& bus, QDBusMessage message, const QVariantList& listArgument = {})
{
    message.setArguments(listArgument);
    return bus.call(message).arguments().value(0);
}

void Collect(const QDBusConnection& bus, const QString& strService, const QString& strPath, QStringList& listText)
{
    const auto method = [&](const QString& strInterface, const QString& strName) {
        return QDBusMessage::createMethodCall(strService, strPath, strInterface, strName);
    };
    const QString strText = Call(bus, method(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get")),
                                 {c_strInterface, QStringLiteral("Name")})
                                .value<QDBusVariant>()
                                .variant()
                                .toString();
    if (!strText.isEmpty()) {
        const QString strRole = Call(bus, method(c_strInterface, QStringLiteral("GetRoleName"))).toString();
        listText.append(strRole + QStringLiteral(": ") + strText);
    }
    const auto children = Call(bus, method(c_strInterface, QStringLiteral("GetChildren"))).value<QDBusArgument>();
    if (children.currentType() != QDBusArgument::ArrayType) {
        return;
    }
    children.beginArray();
    while (!children.atEnd()) {
        QString strChildService;
        QDBusObjectPath childPath;
        children.beginStructure();
        children >> strChildService >> childPath;
        children.endStructure();
        Collect(bus, strChildService, childPath.path(), listText);
    }
    children.endArray();
}

} // namespace

QStringList AccessibleTexts()
{
    static const QDBusConnection bus = [] {
        const QString strName = QStringLiteral("org.a11y.Bus");
        const QString strAddress =
            Call(QDBusConnection::sessionBus(), QDBusMessage::createMethodCall(strName, QStringLiteral("/org/a11y/bus"),
                                                                               strName, QStringLiteral("GetAddress")))
                .toString();
        return QDBusConnection::connectToBus(strAddress, QStringLiteral("accessibility"));
    }();
    QStringList listText;
    Collect(bus, QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/accessible/root"),
            listText);
    return listText;
}
