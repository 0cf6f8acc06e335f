// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QImage>
#include <QRect>
#include <QStringList>

#include <optional>

// The display that a test runs on, as its user sees and touches it.
namespace Desktop {

struct Window
{
    QString strId;
    QString strTitle;
    QRect geometry; ///< on the screen, without the window manager's frame
};

/// The visible windows of a program (X class), its tray icon, menus and balloons included.
QList<Window> Windows(const QString& strClass);

/// The first of them whose title and size fit; each bound is inclusive.
std::optional<Window> FindWindow(const QString& strClass, const QString& strTitle, QSize min, QSize max);

enum enButton
{
    enButtonLeft = 1,
    enButtonRight = 3
};

void Click(const Window& window, QPoint position, enButton button = enButtonLeft, int iClicks = 1);
void PressKey(const QString& strKey);

/// To a place on the screen.
void MoveMouse(QPoint position);

/// The upper left corner on the screen of the window with its frame.
QPoint FramePosition(const Window& window);

/// A window manager that has only begun to start can lose a window that is shown then.
bool HasWindowManager();

/// What the window manager's close button does.
void CloseWindow(const Window& window);

/// What is on the whole screen.
QImage Screen();

/// A window property as xprop prints it, such as "_NET_FRAME_EXTENTS(CARDINAL) = 1, 1, 20, 1".
QString Property(const Window& window, const QString& strName);

/// The id of the window that has the keyboard; empty when none has.
QString ActiveWindow();

/// The ids of the windows that the window manager shows, the topmost last.
QStringList Stacking();

/// The names of all processes but the one that looks, in their order.
QStringList ProcessNames();

/// Runs a command to its end and returns its standard output.
QString Run(const QString& strProgram, const QStringList& listArgument);

} // namespace Desktop
