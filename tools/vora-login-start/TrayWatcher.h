// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QObject>

struct xcb_connection_t;

/// Tells when the desktop has a place for tray icons: an XEmbed tray on the X display, or a StatusNotifier host on the
/// session bus. Needs no polling: both announce themselves. A display or a bus that is not there has no tray. Lives in
/// the thread that made it and needs its event loop.
class TrayWatcher : public QObject
{
    Q_OBJECT

public:
    TrayWatcher();
    ~TrayWatcher() override;

    /// Whether a tray is there now. Waits for the display's answer and, when it has none, for the bus's, 5 s at most.
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
