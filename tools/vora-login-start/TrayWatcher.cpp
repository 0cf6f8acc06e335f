// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrayWatcher.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QSocketNotifier>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace {

const QString c_strWatcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString c_strWatcherPath = QStringLiteral("/StatusNotifierWatcher");
constexpr int c_iBusPatienceMSec = 5000; // a panel that is starting may take its time to answer

template <typename Reply>
std::unique_ptr<Reply, decltype(&std::free)> Owned(Reply* pReply)
{
    return {pReply, &std::free};
}

xcb_screen_t* ScreenAt(xcb_connection_t* pX11, int iScreen)
{
    xcb_screen_iterator_t screen = xcb_setup_roots_iterator(xcb_get_setup(pX11));
    for (; iScreen > 0 && screen.rem > 1; --iScreen) {
        xcb_screen_next(&screen);
    }
    return screen.data;
}

} // namespace

TrayWatcher::TrayWatcher()
{
    // The host may register long after its watcher; both are announced.
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(c_strWatcherName, c_strWatcherPath, c_strWatcherName, QStringLiteral("StatusNotifierHostRegistered"),
                this, SIGNAL(SgnTrayMayBeThere()));
    auto* pServiceWatcher =
        new QDBusServiceWatcher(c_strWatcherName, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(pServiceWatcher, &QDBusServiceWatcher::serviceRegistered, this, &TrayWatcher::SgnTrayMayBeThere);

    int iScreen = 0;
    m_pX11 = xcb_connect(nullptr, &iScreen);
    if (xcb_connection_has_error(m_pX11) != 0) {
        xcb_disconnect(m_pX11);
        m_pX11 = nullptr;
        return;
    }
    m_dwRoot = ScreenAt(m_pX11, iScreen)->root;
    char selection[32] = {};
    const int iLength = std::snprintf(selection, sizeof(selection), "_NET_SYSTEM_TRAY_S%d", iScreen);
    const auto atom = Owned(
        xcb_intern_atom_reply(m_pX11, xcb_intern_atom(m_pX11, 0, static_cast<uint16_t>(iLength), selection), nullptr));
    m_dwTraySelection = atom ? atom->atom : 0;
    // A new tray sends a MANAGER message to the root window.
    const uint32_t dwMask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_pX11, m_dwRoot, XCB_CW_EVENT_MASK, &dwMask);
    xcb_flush(m_pX11);
    auto* pNotifier = new QSocketNotifier(xcb_get_file_descriptor(m_pX11), QSocketNotifier::Read, this);
    connect(pNotifier, &QSocketNotifier::activated, this, &TrayWatcher::SlotX11Event);
}

TrayWatcher::~TrayWatcher()
{
    if (m_pX11 != nullptr) {
        xcb_disconnect(m_pX11);
    }
}

bool TrayWatcher::IsTrayThere() const
{
    return HasX11Tray() || HasStatusNotifierHost();
}

/// Takes the events that have come; true when a message was among them.
bool TrayWatcher::TakeX11Message() const
{
    bool bMessage = false;
    while (const auto event = Owned(xcb_poll_for_event(m_pX11))) {
        bMessage = bMessage || (event->response_type & 0x7FU) == XCB_CLIENT_MESSAGE;
    }
    return bMessage;
}

bool TrayWatcher::HasX11Tray() const
{
    if (m_pX11 == nullptr) {
        return false;
    }
    bool bTray = false;
    do {
        const auto owner =
            Owned(xcb_get_selection_owner_reply(m_pX11, xcb_get_selection_owner(m_pX11, m_dwTraySelection), nullptr));
        bTray = owner && owner->owner != XCB_NONE;
    } while (!bTray && TakeX11Message()); // one that came along with the reply does not wake the socket's notifier
    return bTray;
}

bool TrayWatcher::HasStatusNotifierHost()
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        c_strWatcherName, c_strWatcherPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call.setAutoStartService(false);
    call << c_strWatcherName << QStringLiteral("IsStatusNotifierHostRegistered");
    const QDBusMessage reply = QDBusConnection::sessionBus().call(call, QDBus::Block, c_iBusPatienceMSec);
    return reply.arguments().value(0).value<QDBusVariant>().variant().toBool();
}

void TrayWatcher::SlotX11Event()
{
    if (TakeX11Message()) {
        emit SgnTrayMayBeThere();
    }
    if (xcb_connection_has_error(m_pX11) != 0) {
        emit SgnDisplayGone();
    }
}

#include "moc_TrayWatcher.cpp"
