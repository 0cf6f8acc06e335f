// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class QWidget;

/// What users know the program by: the main window, the tray icon and the message of a second copy bear it.
inline const QString c_strProgramTitle = QStringLiteral("星原喷墨打印机助手");

/// What both windows are: with the icon and the title, of the size that their form gave them for good, without maximise
/// button, and in the middle of all screens together. Called from the GUI thread.
void SetUpFixedWindow(QWidget& window, const QString& strTitle);
