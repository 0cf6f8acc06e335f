// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// What a screen reader finds in all programs of the session that were started with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1: "role: text" of everything that has a text.
QStringList AccessibleTexts();
