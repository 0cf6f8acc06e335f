// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor that the tool is measured against: a Qt program with one window, one table and one tray icon with a menu of
// four entries, and nothing else. With a picture's path as its argument it wears that icon, and Chinese texts in the
// table.

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTableWidget>

namespace {

QIcon PlainIcon()
{
    QPixmap pixmap(256, 256);
    pixmap.fill(Qt::blue);
    return QIcon(pixmap);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QWidget window;
    window.setFixedSize(860, 300);
    QTableWidget table(0, 4, &window);
    table.setGeometry(20, 20, 820, 260);
    QIcon trayIcon = PlainIcon();
    if (argc > 1) {
        trayIcon = QIcon(QString::fromLocal8Bit(argv[1]));
        window.setWindowIcon(trayIcon);
        table.setHorizontalHeaderLabels({QStringLiteral("打印机名称"), QStringLiteral("连接方式"),
                                         QStringLiteral("剩余墨水量"), QStringLiteral("状态")});
    }
    QSystemTrayIcon icon(trayIcon);
    QMenu menu;
    for (int i = 0; i < 4; ++i) {
        menu.addAction(QString::number(i));
    }
    icon.setContextMenu(&menu);
    icon.show();
    window.show();
    return QApplication::exec();
}
