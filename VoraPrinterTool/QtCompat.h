// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

// Every difference between Qt 5.15 and Qt 6 that the sources meet; nothing else looks at QT_VERSION.

#include <QString>

#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)

#include <QTextCodec>
#define VORA_HAS_TEXT_CODEC

// A text that the compiler lays out: neither copied nor allocated. Qt 6.4 has this operator. Standard C++17 has no
// literal operator that knows the characters at compile time; g++ and clang have.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpedantic"
template <typename Char, Char... characters>
QString operator""_s()
{
    static const QStaticStringData<sizeof...(characters)> s_data = {
        Q_STATIC_STRING_DATA_HEADER_INITIALIZER(sizeof...(characters)), {characters..., 0}};
    return QString(QStringDataPtr{s_data.data_ptr()});
}
#pragma GCC diagnostic pop

/// Qt 5 reads and writes INI files as Latin-1 unless told otherwise.
template <typename Settings>
void SetIniUtf8(Settings& settings)
{
    settings.setIniCodec("utf-8");
}

#ifdef QT_GUI_LIB
#include <QGuiApplication>

/// Qt 5 closes the windows to find out whether the session may end, and our window, which only hides, would forbid it.
inline void LetSessionEnd()
{
    QGuiApplication::setFallbackSessionManagementEnabled(false);
}
#endif

#else

using namespace Qt::StringLiterals;

/// Qt 6 always reads and writes INI files as UTF-8.
template <typename Settings>
void SetIniUtf8(Settings&)
{
}

/// Qt 6 leaves the windows alone at the session's end.
inline void LetSessionEnd() {}

#endif
