// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor that the tool is measured against: a Qt program with one window, one table and one tray icon with a menu of
// four entries, and nothing else.

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTableWidget>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.setFixedSize(860, 300);
    QTableWidget table(0, 4, &window);
    table.setGeometry(20, 20, 820, 260);
    QPixmap pixmap(256, 256);
    pixmap.fill(Qt::blue);
    QSystemTrayIcon icon{QIcon(pixmap)};
    QMenu menu;
    for (int i = 0; i < 4; ++i) {
        menu.addAction(QString::number(i));
    }
    icon.setContextMenu(&menu);
    icon.show();
    window.show();
    return QApplication::exec();
}
