// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>
#include <QScreen>
#include <QWidget>

namespace {

/// Told the format, Qt does not load every image plugin of the system first.
QIcon ProgramIcon()
{
    QImageReader reader(QStringLiteral(":/Icon/Resource/Vora.png"), "png");
    reader.setAutoDetectImageFormat(false);
    return QIcon(QPixmap::fromImageReader(&reader));
}

} // namespace

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
}
