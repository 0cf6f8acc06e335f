// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QProcess>

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

    explicit TrayHost(enKind enTrayKind) : m_enKind(enTrayKind) {}
    ~TrayHost() { Kill(); }

    /// Starts the panel; for StatusNotifier waits until its name is on the session bus.
    bool Start();
    void Kill();

    /// Whether the program's icon is in this tray.
    bool HasIcon(const Tool& tool) const;

private:
    enKind m_enKind;
    QProcess m_process;
};
