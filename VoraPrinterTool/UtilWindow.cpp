// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

void SetUpFixedWindow(QWidget& window, const QString& strTitle)
{
    window.setWindowFlags(window.windowFlags() & ~Qt::WindowMaximizeButtonHint);
    window.setFixedSize(window.size());
    window.setWindowTitle(strTitle);
    const QSize desktop = QGuiApplication::primaryScreen()->virtualSize();
    window.move((desktop.width() - window.width()) / 2, (desktop.height() - window.height()) / 2);
}
