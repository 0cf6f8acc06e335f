// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

// Every difference between Qt 5.15 and Qt 6 that the sources meet; nothing else looks at QT_VERSION.

#include <QSettings>
#ifdef QT_GUI_LIB
#include <QGuiApplication>
#endif

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QTextCodec>
#define VORA_HAS_TEXT_CODEC

/// Qt 5 reads INI files as Latin-1 unless told otherwise.
inline void SetIniUtf8(QSettings& settings)
{
    settings.setIniCodec("utf-8");
}

#ifdef QT_GUI_LIB
/// Qt 5 closes the windows to find out whether the session may end, and our window, which only hides, would forbid it.
inline void LetSessionEnd()
{
    QGuiApplication::setFallbackSessionManagementEnabled(false);
}
#endif

#else

/// Qt 6 always reads INI files as UTF-8.
inline void SetIniUtf8(QSettings&) {}

/// Qt 6 leaves the windows alone at the session's end.
inline void LetSessionEnd() {}

#endif
