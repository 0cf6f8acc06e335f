// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Desktop.h"

#include <QProcess>

#include <functional>

class Tool;

/// A panel of the desktop that shows tray icons, by one of the two protocols. Killed with this object.
class TrayHost
{
public:
    enum enKind
    {
        enTint2,    ///< XEmbed
        enTrayer,   ///< XEmbed
        enXfcePanel ///< StatusNotifier
    };

    /// The menu's entries, from above.
    enum enMenuEntry
    {
        enMenuMainWindow,
        enMenuUpdateTool,
        enMenuSettings,
        enMenuExit
    };

    explicit TrayHost(enKind enTrayKind) : m_enKind(enTrayKind) {}
    ~TrayHost() { Kill(); }

    /// Starts the panel; for StatusNotifier waits until its name is on the session bus.
    bool Start();
    void Kill();

    /// Whether the program's icon is in this tray.
    bool HasIcon(const Tool& tool) const { return Icon(tool).has_value(); }

    /// The icon in this tray, as the window that a click on it meets.
    std::optional<Desktop::Window> Icon(const Tool& tool) const;

    /// The icon's open menu: the program's own window with XEmbed, the panel's with StatusNotifier.
    std::optional<Desktop::Window> Menu(const Tool& tool) const;

    void ClickIcon(const Tool& tool, Desktop::enButton button = Desktop::enButtonLeft, int iClicks = 1) const;

    /// Clicks until a condition holds, as a user would, up to three times: a panel that still arranges its icons loses
    /// a click, and Qt closes a menu when it hears late that the keyboard has gone elsewhere.
    bool ClickIconUntil(const Tool& tool, const std::function<bool()>& condition,
                        Desktop::enButton button = Desktop::enButtonLeft) const;

    /// Clicks on the icon until the hidden main window is there.
    bool ShowWindow(const Tool& tool) const;
    bool OpenMenu(const Tool& tool) const;

    /// Opens the menu and clicks on one of its entries.
    bool ChooseFromMenu(const Tool& tool, enMenuEntry entry) const;

private:
    enKind m_enKind;
    QProcess m_process;
};

Q_DECLARE_METATYPE(TrayHost::enKind)
