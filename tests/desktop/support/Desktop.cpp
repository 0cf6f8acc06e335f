// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Desktop.h"

#include "QtCompat.h"

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
        search.start(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--class"_s, strClass});
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
        const QString strInfo = Run(u"xwininfo"_s, {u"-id"_s, strId});
        const QString strTitle = QRegularExpression(u"Window id: \\S+ \"(.*)\""_s).match(strInfo).captured(1);
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

void Click(const Window& window, QPoint position, enButton button, int iClicks)
{
    Run(u"xdotool"_s,
        {u"mousemove"_s, u"--window"_s, window.strId, QString::number(position.x()), QString::number(position.y()),
         u"click"_s, u"--repeat"_s, QString::number(iClicks), u"--delay"_s, u"50"_s, QString::number(button)});
}

void PressKey(const QString& strKey)
{
    Run(u"xdotool"_s, {u"key"_s, strKey});
}

void MoveMouse(QPoint position)
{
    Run(u"xdotool"_s, {u"mousemove"_s, QString::number(position.x()), QString::number(position.y())});
}

QPoint FramePosition(const Window& window)
{
    const QString strExtents = Property(window, u"_NET_FRAME_EXTENTS"_s); // left, right, top, bottom
    return window.geometry.topLeft() -
           QPoint(Number(strExtents, "= (\\d+), "), Number(strExtents, "= \\d+, \\d+, (\\d+)"));
}

bool HasWindowManager()
{
    return Run(u"xprop"_s, {u"-root"_s, u"_NET_SUPPORTING_WM_CHECK"_s}).contains(QLatin1String("window id"));
}

void CloseWindow(const Window& window)
{
    Run(u"wmctrl"_s, {u"-i"_s, u"-c"_s, window.strId});
}

QString Property(const Window& window, const QString& strName)
{
    return Run(u"xprop"_s, {u"-id"_s, window.strId, strName});
}

QString ActiveWindow()
{
    return Run(u"xdotool"_s, {u"getactivewindow"_s}).trimmed();
}

QStringList Stacking()
{
    const QString strList = Run(u"xprop"_s, {u"-root"_s, u"-notype"_s, u"_NET_CLIENT_LIST_STACKING"_s});
    QStringList listId;
    for (const QString& strId : strList.section(QLatin1Char('#'), 1).split(QLatin1Char(','))) {
        listId.append(QString::number(strId.trimmed().toULongLong(nullptr, 16)));
    }
    return listId;
}

QStringList ProcessNames()
{
    QStringList listName = Run(u"ps"_s, {u"-A"_s, u"-o"_s, u"comm="_s}).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    listName.removeOne(u"ps"_s);
    listName.sort();
    return listName;
}

QImage Screen()
{
    QProcess process;
    process.start(u"import"_s, {u"-window"_s, u"root"_s, u"bmp:-"_s});
    process.waitForFinished();
    return QImage::fromData(process.readAllStandardOutput()).convertToFormat(QImage::Format_RGB32);
}

} // namespace Desktop
