// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

struct xcb_connection_t;

/// Tells when the desktop has a place for tray icons: an XEmbed tray on the X display, or a StatusNotifier host on the
/// session bus. Needs no polling: both announce themselves.
class TrayWatcher : public QObject
{
    Q_OBJECT

public:
    explicit TrayWatcher(QObject* parent = nullptr);
    ~TrayWatcher() override;

    /// Whether a tray is there now.
    bool IsTrayThere() const;

signals:
    /// Something that may be a tray has appeared: time to ask again.
    void SgnTrayMayBeThere();

    /// The X display, which was there, has gone: the session has ended.
    void SgnDisplayGone();

private slots:
    void SlotX11Event();

private:
    bool TakeX11Message() const;
    bool HasX11Tray() const;
    static bool HasStatusNotifierHost();

    xcb_connection_t* m_pX11 = nullptr; ///< none on a desktop without X display
    unsigned int m_dwRoot = 0;
    unsigned int m_dwTraySelection = 0;
};
