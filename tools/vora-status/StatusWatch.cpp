// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusWatch.h"

#include "EndSignals.h"
#include "StatusRendering.h"
#include "StatusSource.h"

#include <unistd.h>

namespace {

/// Sets what is shown apart from what was before.
stStatusRendering Separated(stStatusRendering rendering, const StatusOptions& options, bool bFirst)
{
    if (::isatty(STDOUT_FILENO) != 0) {
        rendering.output.prepend("\033[H\033[2J"); // wipes the screen
    } else if (!bFirst && options.m_enFormat != enFormatJson) {
        rendering.output.prepend('\n');
    }
    return rendering;
}

} // namespace

enExitStatus WatchStatus(const StatusOptions& options, StatusSource& source)
{
    const EndSignals endSignals;
    stStatusRendering shown = RenderStatus(options, source);
    PrintStatus(Separated(shown, options, true), options.m_enLang, &endSignals);
    while (!endSignals.WaitFor(1000)) {
        // The overview tells ages, which change by themselves.
        if (options.m_enFormat != enFormatOverview && !source.HasChanged()) {
            continue;
        }
        const stStatusRendering next = RenderStatus(options, source);
        if (!next.LooksLike(shown)) {
            shown = next;
            PrintStatus(Separated(shown, options, false), options.m_enLang, &endSignals);
        }
    }
    return shown.enStatus;
}
