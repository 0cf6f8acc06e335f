// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusWatch.h"

#include "StatusRendering.h"
#include "StatusSource.h"

#include <csignal>
#include <ctime>

#include <unistd.h>

namespace {

sigset_t EndingSignals()
{
    sigset_t signalSet;
    sigemptyset(&signalSet);
    sigaddset(&signalSet, SIGINT);
    sigaddset(&signalSet, SIGTERM);
    return signalSet;
}

/// Waits one second; true when a signal asks for the end.
bool WaitForEnd()
{
    const sigset_t signalSet = EndingSignals();
    const timespec second{1, 0};
    return sigtimedwait(&signalSet, nullptr, &second) > 0;
}

/// What sets one showing apart from the one before it.
std::string Separator(const StatusOptions& options, bool bFirst)
{
    if (::isatty(STDOUT_FILENO) != 0) {
        return "\033[H\033[2J"; // wipes the screen
    }
    return bFirst || options.m_enFormat == enFormatJson ? "" : "\n";
}

} // namespace

int WatchStatus(const StatusOptions& options, StatusSource& source)
{
    // Blocked and waited for, so that none is lost between two waits.
    const sigset_t signalSet = EndingSignals();
    sigprocmask(SIG_BLOCK, &signalSet, nullptr);
    StatusRendering shown(options, source);
    bool bWritten = shown.Print(Separator(options, true));
    while (bWritten && !WaitForEnd()) {
        if (!source.HasChanged()) {
            continue;
        }
        const StatusRendering next(options, source);
        if (!next.LooksLike(shown)) {
            shown = next;
            bWritten = shown.Print(Separator(options, false));
        }
    }
    return shown.ExitStatus();
}
