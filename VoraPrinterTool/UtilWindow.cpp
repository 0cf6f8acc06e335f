// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QWidget>

void SetUpFixedWindow(QWidget& window, const QString& strTitle)
{
    Q_INIT_RESOURCE(res); // the linker drops a static library's resources unless they are asked for
    window.setWindowIcon(QIcon(QStringLiteral(":/Icon/Resource/Vora.png")));
    window.setWindowFlags(window.windowFlags() & ~Qt::WindowMaximizeButtonHint);
    window.setFixedSize(window.size());
    window.setWindowTitle(strTitle);
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    window.move((desktop.width() - window.width()) / 2, (desktop.height() - window.height()) / 2);
}
