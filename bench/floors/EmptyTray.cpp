// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor that the tool is measured against: a Qt program with one window, one table and one tray icon with a menu of
// four entries, and nothing else. With a picture's path as its argument it wears that icon, and its table shows what
// the tool's does with ten printers.

#include "GoldenColumns.h"

#include <QApplication>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTableWidget>

namespace {

QIcon PlainIcon()
{
    QPixmap pixmap(128, 128); // as large as the tool's
    pixmap.fill(Qt::blue);
    return QIcon(pixmap);
}

void ShowPrinters(QTableWidget& table)
{
    const QList<stGoldenColumn> listColumn = GoldenColumns();
    table.setColumnCount(static_cast<int>(listColumn.size()));
    table.setRowCount(10);
    for (int iColumn = 0; iColumn < listColumn.size(); ++iColumn) {
        table.setHorizontalHeaderItem(iColumn, new QTableWidgetItem(listColumn.at(iColumn).strHeader));
        table.setColumnWidth(iColumn, listColumn.at(iColumn).iWidth);
        for (int iRow = 0; iRow < table.rowCount(); ++iRow) {
            const QStringList listText = {
                QStringLiteral("printer%1").arg(iRow), QStringLiteral("网络(192.168.1.%1)").arg(iRow),
                QStringLiteral("青色：无   红色：无   黄色：无   黑色：中"), QStringLiteral("就绪")};
            table.setItem(iRow, iColumn, new QTableWidgetItem(listText.value(iColumn)));
        }
    }
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
        ShowPrinters(table);
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
