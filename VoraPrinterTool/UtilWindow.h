// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class QString;
class QWidget;

/// What both windows are: of the size that their form gave them for good, without maximise button, with the title, and
/// in the middle of all screens together.
void SetUpFixedWindow(QWidget& window, const QString& strTitle);
