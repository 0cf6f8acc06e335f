// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor that the tool is measured against: a Qt program that shows what the tool does with ten printers, an icon
// (the picture that its argument names), a menu, a window and its table, and does nothing else.

#include "GoldenColumns.h"

#include <QApplication>
#include <QHeaderView>
#include <QMenu>
#include <QSystemTrayIcon>
#include <QTableWidget>

namespace {

constexpr int c_iPrinters = 10;

void ShowPrinters(QTableWidget& table)
{
    const QList<stGoldenColumn> listColumn = GoldenColumns();
    table.setColumnCount(static_cast<int>(listColumn.size()));
    table.setRowCount(c_iPrinters);
    table.setWordWrap(false);
    table.horizontalHeader()->setStretchLastSection(true);
    for (int iColumn = 0; iColumn < listColumn.size(); ++iColumn) {
        table.setHorizontalHeaderItem(iColumn, new QTableWidgetItem(listColumn.at(iColumn).strHeader));
        table.setColumnWidth(iColumn, listColumn.at(iColumn).iWidth);
        for (int iRow = 0; iRow < c_iPrinters; ++iRow) {
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
    window.setWindowTitle(QStringLiteral("星原喷墨打印机助手"));
    window.setWindowIcon(QIcon(QString::fromLocal8Bit(argv[argc - 1])));
    QTableWidget table(&window);
    table.setGeometry(20, 20, 820, 260);
    ShowPrinters(table);
    QMenu menu;
    for (const char* pEntry : {"显示主界面", "打印机更新助手", "设置", "退出"}) {
        menu.addAction(QString::fromUtf8(pEntry));
    }
    QSystemTrayIcon icon(window.windowIcon());
    icon.setContextMenu(&menu);
    icon.show();
    window.show();
    return QApplication::exec();
}
