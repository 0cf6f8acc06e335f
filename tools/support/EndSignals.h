// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

/// SIGINT, SIGTERM and SIGHUP as something to ask for, so that what is running can be ended in order. Made once, in the
/// main thread, before any other is started; from then on these signals no longer end the process, not even without
/// this object, and its descriptor stays open. When the system has no file descriptor left, they end it as ever.
class EndSignals
{
public:
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;

    /// Whether one of them has come.
    bool HaveCome() const { return WaitFor(0); }

    /// Waits so many milliseconds, less when one has come or comes: then it returns true.
    bool WaitFor(int iMSec) const;

    /// Waits until the descriptor takes PIPE_BUF bytes without blocking. Returns false when a signal has come first.
    bool WaitUntilWritable(int iFd) const;

    /// Readable once a signal has come, and nobody reads it; -1 without one.
    int Descriptor() const { return m_iFd; }

private:
    int m_iFd;
};
