// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"

#include <QString>

class QWidget;

/// What users know the program by: the main window, the tray icon and the message of a second copy bear it.
inline const QString c_strProgramTitle = u"星原喷墨打印机助手"_s;

/// What both windows are: with the icon and the title, of the size that their form gave them for good, without maximise
/// button, and in the middle of all screens together. When screens change later, BringToScreen. Called from the GUI
/// thread.
void SetUpFixedWindow(QWidget& window, const QString& strTitle);

/// Moves a window whose upper edge is on no screen to the middle of the first screen, or to its upper left corner if it
/// is too large. Called from the GUI thread.
void BringToScreen(QWidget& window);
