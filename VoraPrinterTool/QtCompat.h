// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

// Every difference between Qt 5.15 and Qt 6 that the sources meet; nothing else looks at QT_VERSION.

#include <QSettings>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QTextCodec>
#define VORA_HAS_TEXT_CODEC

/// Qt 5 reads INI files as Latin-1 unless told otherwise.
inline void SetIniUtf8(QSettings& settings)
{
    settings.setIniCodec("utf-8");
}

#else

/// Qt 6 always reads INI files as UTF-8.
inline void SetIniUtf8(QSettings&) {}

#endif
