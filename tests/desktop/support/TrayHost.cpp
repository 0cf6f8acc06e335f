// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrayHost.h"

#include "QtCompat.h"
#include "TestFiles.h"
#include "Tool.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>
#include <QTest>

#include <algorithm>

namespace {

const QString c_strWatcher = u"org.kde.StatusNotifierWatcher"_s;
constexpr int c_iMenuEntries = 4;
const QString c_strPlugin = u"wrapper-2.0"_s; // the panel runs its tray in a process of this name

bool IsWatched()
{
    QDBusMessage get = QDBusMessage::createMethodCall(c_strWatcher, u"/StatusNotifierWatcher"_s,
                                                      u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    get << c_strWatcher << u"RegisteredStatusNotifierItems"_s;
    const QDBusReply<QVariant> reply = QDBusConnection::sessionBus().call(get);
    return !reply.value().toStringList().isEmpty();
}

/// Qt hears late, by about a tenth of a second, that the keyboard has gone to another program, and then closes open
/// menus.
bool KnowsItsFocus(const Tool& tool)
{
    const QString strActive = Desktop::ActiveWindow();
    const QList<Desktop::Window> listWindow = Desktop::Windows(tool.Class());
    const bool bActive = std::any_of(listWindow.begin(), listWindow.end(),
                                     [&](const Desktop::Window& window) { return window.strId == strActive; });
    return tool.Access().HasActiveWindow() == bActive;
}

} // namespace

bool TrayHost::Start()
{
    switch (m_enKind) {
    case enTint2: m_process.start(u"tint2"_s, QStringList()); break;
    case enTrayer: m_process.start(u"trayer"_s, {u"--widthtype"_s, u"request"_s, u"--height"_s, u"24"_s}); break;
    case enXfcePanel:
        if (!WriteFile(QDir::homePath() + u"/.config/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml"_s,
                       ReadFile(QStringLiteral(VORA_PANEL)))) {
            return false;
        }
        m_process.start(u"xfce4-panel"_s, {u"--disable-wm-check"_s});
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

std::optional<Desktop::Window> TrayHost::Icon(const Tool& tool) const
{
    if (m_enKind != enXfcePanel) {
        return tool.TrayIcon();
    }
    return IsWatched() ? Desktop::FindWindow(c_strPlugin, c_strPlugin, {16, 16}, {48, 48}) : std::nullopt;
}

std::optional<Desktop::Window> TrayHost::Menu(const Tool& tool) const
{
    return m_enKind == enXfcePanel ? Desktop::FindWindow(c_strPlugin, c_strPlugin, {60, 50}, {700, 300}) : tool.Popup();
}

void TrayHost::ClickIcon(const Tool& tool, Desktop::enButton button, int iClicks) const
{
    (void)QTest::qWaitFor([&] { return KnowsItsFocus(tool); }, 1000);
    const std::optional<Desktop::Window> icon = Icon(tool);
    if (icon) {
        Desktop::Click(*icon, {icon->geometry.width() / 2, icon->geometry.height() / 2}, button, iClicks);
    }
}

bool TrayHost::ClickIconUntil(const Tool& tool, const std::function<bool()>& condition, Desktop::enButton button) const
{
    for (int iTry = 0; iTry < 3; ++iTry) {
        ClickIcon(tool, button);
        if (QTest::qWaitFor(condition, 2000)) {
            return true;
        }
    }
    return false;
}

bool TrayHost::ShowWindow(const Tool& tool) const
{
    return ClickIconUntil(tool, [&] { return tool.MainWindow().has_value(); });
}

bool TrayHost::OpenMenu(const Tool& tool) const
{
    return ClickIconUntil(
        tool, [&] { return Menu(tool).has_value(); }, Desktop::enButtonRight);
}

bool TrayHost::ChooseFromMenu(const Tool& tool, enMenuEntry entry) const
{
    if (!OpenMenu(tool)) {
        return false;
    }
    const Desktop::Window menu = *Menu(tool);
    Desktop::Click(menu, {menu.geometry.width() / 2, menu.geometry.height() * (2 * entry + 1) / (2 * c_iMenuEntries)});
    return true;
}
