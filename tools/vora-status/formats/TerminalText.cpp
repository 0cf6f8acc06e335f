// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TerminalText.h"

#include <QString>
#include <QVector>

#include <clocale>
#include <cwchar>

#include <unistd.h>

int TerminalWidth(const QString& strText)
{
    // Output is UTF-8 in every locale, and that of a locale without would know no width beyond ASCII.
    static const locale_t s_locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    const locale_t before = ::uselocale(s_locale);
    int iWidth = 0;
    for (const uint character : strText.toUcs4()) {
        const int iColumns = ::wcwidth(static_cast<wchar_t>(character));
        iWidth += iColumns < 0 ? 1 : iColumns; // of what the system does not know
    }
    ::uselocale(before);
    return iWidth;
}

bool IsColorWanted()
{
    return ::isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR");
}
