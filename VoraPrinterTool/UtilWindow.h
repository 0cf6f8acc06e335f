// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"

#include <QString>

class QWidget;

/// What users know the program by: the main window, the tray icon and the message of a second copy bear it.
inline const QString c_strProgramTitle = u"星原喷墨打印机助手"_s;

/// Gives a window the title, the size of its form for good, no maximise button, and the middle of all screens together.
/// The first call sets the icon of the whole application, which the tray icon takes over. When screens change later,
/// call BringToScreen. Called from the GUI thread.
void SetUpFixedWindow(QWidget& window, const QString& strTitle);

/// Moves a window whose upper edge is on no screen to the middle of the first screen, or to its upper left corner if it
/// is too large. Called from the GUI thread.
void BringToScreen(QWidget& window);
