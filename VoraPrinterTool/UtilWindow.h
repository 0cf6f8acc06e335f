// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;
class QWidget;

/// What both windows are: with the icon and the title, of the size that their form gave them for good, without maximise
/// button, and in the middle of all screens together. Called from the GUI thread.
void SetUpFixedWindow(QWidget& window, const QString& strTitle);
