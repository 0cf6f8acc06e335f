// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Desktop.h"

#include <QProcess>
#include <QRegularExpression>

namespace Desktop {

namespace {

int Number(const QString& strText, const char* pPattern)
{
    return QRegularExpression(QLatin1String(pPattern)).match(strText).captured(1).toInt();
}

/// The ids of the visible windows of that class, one to a line. A window that vanishes meanwhile, be it a panel's, ends
/// the search with a BadWindow and without an id.
QString VisibleIds(const QString& strClass)
{
    QProcess search;
    do {
        search.start(QStringLiteral("xdotool"),
                     {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--class"), strClass});
        search.waitForFinished();
    } while (search.readAllStandardError().contains("BadWindow"));
    return QString::fromUtf8(search.readAllStandardOutput());
}

} // namespace

QString Run(const QString& strProgram, const QStringList& listArgument)
{
    QProcess process;
    process.start(strProgram, listArgument);
    process.waitForFinished(60000); // of what takes its time on a busy machine
    return QString::fromUtf8(process.readAllStandardOutput());
}

QList<Window> Windows(const QString& strClass)
{
    QList<Window> listWindow;
    for (const QString& strId : VisibleIds(strClass).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QString strInfo = Run(QStringLiteral("xwininfo"), {QStringLiteral("-id"), strId});
        const QString strTitle =
            QRegularExpression(QStringLiteral("Window id: \\S+ \"(.*)\"")).match(strInfo).captured(1);
        listWindow.append({strId, strTitle,
                           QRect(Number(strInfo, "Absolute upper-left X: +(-?\\d+)"),
                                 Number(strInfo, "Absolute upper-left Y: +(-?\\d+)"), Number(strInfo, "Width: (\\d+)"),
                                 Number(strInfo, "Height: (\\d+)"))});
    }
    return listWindow;
}

std::optional<Window> FindWindow(const QString& strClass, const QString& strTitle, QSize min, QSize max)
{
    for (const Window& window : Windows(strClass)) {
        const QSize size = window.geometry.size();
        if (window.strTitle == strTitle && size.expandedTo(min) == size && size.boundedTo(max) == size) {
            return window;
        }
    }
    return std::nullopt;
}

void Click(const Window& window, QPoint position, enButton button)
{
    Run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QStringLiteral("--window"), window.strId, QString::number(position.x()),
         QString::number(position.y()), QStringLiteral("click"), QString::number(button)});
}

void DoubleClick(const Window& window, QPoint position)
{
    Run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QStringLiteral("--window"), window.strId, QString::number(position.x()),
         QString::number(position.y()), QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
         QStringLiteral("--delay"), QStringLiteral("50"), QString::number(enButtonLeft)});
}

void PressKey(const QString& strKey)
{
    Run(QStringLiteral("xdotool"), {QStringLiteral("key"), strKey});
}

void MoveMouse(QPoint position)
{
    Run(QStringLiteral("xdotool"),
        {QStringLiteral("mousemove"), QString::number(position.x()), QString::number(position.y())});
}

QPoint FramePosition(const Window& window)
{
    const QString strExtents = Property(window, QStringLiteral("_NET_FRAME_EXTENTS")); // left, right, top, bottom
    return window.geometry.topLeft() -
           QPoint(Number(strExtents, "= (\\d+), "), Number(strExtents, "= \\d+, \\d+, (\\d+)"));
}

bool HasWindowManager()
{
    return Run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
        .contains(QLatin1String("window id"));
}

void CloseWindow(const Window& window)
{
    Run(QStringLiteral("wmctrl"), {QStringLiteral("-i"), QStringLiteral("-c"), window.strId});
}

QString Property(const Window& window, const QString& strName)
{
    return Run(QStringLiteral("xprop"), {QStringLiteral("-id"), window.strId, strName});
}

QString ActiveWindow()
{
    return Run(QStringLiteral("xdotool"), {QStringLiteral("getactivewindow")}).trimmed();
}

QStringList Stacking()
{
    const QString strList = Run(QStringLiteral("xprop"), {QStringLiteral("-root"), QStringLiteral("-notype"),
                                                          QStringLiteral("_NET_CLIENT_LIST_STACKING")});
    QStringList listId;
    for (const QString& strId : strList.section(QLatin1Char('#'), 1).split(QLatin1Char(','))) {
        listId.append(QString::number(strId.trimmed().toULongLong(nullptr, 16)));
    }
    return listId;
}

QStringList ProcessNames()
{
    QStringList listName =
        Run(QStringLiteral("ps"), {QStringLiteral("-A"), QStringLiteral("-o"), QStringLiteral("comm=")})
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    listName.removeOne(QStringLiteral("ps"));
    listName.sort();
    return listName;
}

void SavePicture(const QString& strPath)
{
    Run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"), strPath});
}

} // namespace Desktop
