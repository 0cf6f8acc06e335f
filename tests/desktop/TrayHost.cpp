// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrayHost.h"

#include "Tool.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QTest>

namespace {
const QString c_strWatcher = QStringLiteral("org.kde.StatusNotifierWatcher");
} // namespace

bool TrayHost::Start()
{
    switch (m_enKind) {
    case enTint2: m_process.start(QStringLiteral("tint2"), QStringList()); break;
    case enTrayer:
        m_process.start(QStringLiteral("trayer"), {QStringLiteral("--widthtype"), QStringLiteral("request"),
                                                   QStringLiteral("--height"), QStringLiteral("24")});
        break;
    case enXfcePanel:
        qputenv("XFCE_PANEL_MIGRATE_DEFAULT", "1"); // no question about the panel's first start
        m_process.start(QStringLiteral("xfce4-panel"), {QStringLiteral("--disable-wm-check")});
        break;
    }
    return m_process.waitForStarted() &&
           (m_enKind != enXfcePanel || QTest::qWaitFor([] {
                return QDBusConnection::sessionBus().interface()->isServiceRegistered(c_strWatcher).value();
            }));
}

void TrayHost::Kill()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool TrayHost::HasIcon(const Tool& tool) const
{
    if (m_enKind != enXfcePanel) {
        return tool.TrayIcon().has_value();
    }
    const QDBusInterface watcher(c_strWatcher, QStringLiteral("/StatusNotifierWatcher"), c_strWatcher);
    return !watcher.property("RegisteredStatusNotifierItems").toStringList().isEmpty();
}
