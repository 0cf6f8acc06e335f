// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include "QtCompat.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace {

// Pixels of a title bar that a pointer can take hold of.
constexpr int c_iEdge = 8;
constexpr int c_iGrip = 100;

/// Told the format, Qt does not load every image plugin of the system first.
QIcon ProgramIcon()
{
    QImageReader reader(u":/Icon/Resource/Vora.png"_s, "png");
    reader.setAutoDetectImageFormat(false);
    return QIcon(QPixmap::fromImageReader(&reader));
}

/// Whether enough of the upper edge, by which a user moves a window, is on a screen.
bool IsReachable(const QWidget& window)
{
    const QRect frame = window.frameGeometry();
    const QRect edge(frame.topLeft(), QSize(frame.width(), c_iEdge));
    const QList<QScreen*> listScreen = QGuiApplication::screens();
    return std::any_of(listScreen.begin(), listScreen.end(), [&](const QScreen* pScreen) {
        const QRect seen = edge & pScreen->geometry();
        return seen.height() == c_iEdge && seen.width() >= qMin(c_iGrip, edge.width());
    });
}

/// Whenever a screen comes, goes or changes.
void FollowScreens(QWidget& window)
{
    const auto check = [&window] { BringToScreen(window); };
    const auto follow = [&window, check](QScreen* pScreen) {
        QObject::connect(pScreen, &QScreen::geometryChanged, &window, check, Qt::QueuedConnection);
    };
    const QList<QScreen*> listScreen = QGuiApplication::screens();
    std::for_each(listScreen.begin(), listScreen.end(), follow);
    QObject::connect(qGuiApp, &QGuiApplication::screenAdded, &window, follow);
    QObject::connect(qGuiApp, &QGuiApplication::screenRemoved, &window, check, Qt::QueuedConnection);
}

} // namespace

void BringToScreen(QWidget& window)
{
    const QScreen* pScreen = QGuiApplication::primaryScreen();
    if (pScreen == nullptr || IsReachable(window)) {
        return;
    }
    const QRect area = pScreen->availableGeometry();
    const QSize frame = window.frameGeometry().size();
    window.move(area.left() + qMax(0, (area.width() - frame.width()) / 2),
                area.top() + qMax(0, (area.height() - frame.height()) / 2));
}

void SetUpFixedWindow(QWidget& window, const QString& strTitle)
{
    Q_INIT_RESOURCE(res); // the linker drops a static library's resources unless they are asked for
    if (QGuiApplication::windowIcon().isNull()) {
        QGuiApplication::setWindowIcon(ProgramIcon()); // every window's, decoded once
    }
    window.setWindowFlags(window.windowFlags() & ~Qt::WindowMaximizeButtonHint);
    window.setFixedSize(window.size());
    window.setWindowTitle(strTitle);
    if (const QScreen* pScreen = QGuiApplication::primaryScreen()) { // there may be none for a moment
        const QSize desktop = pScreen->virtualSize();
        window.move((desktop.width() - window.width()) / 2, (desktop.height() - window.height()) / 2);
    }
    FollowScreens(window);
}
