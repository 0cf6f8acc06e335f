// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class StatusOptions;
class StatusSource;

/// Shows the replies again after every change.
class StatusWatch
{
public:
    /// From here on SIGINT and SIGTERM end Run and no longer the process.
    StatusWatch();

    /// Looks once a second until a signal ends it or the output cannot be written; returns the exit status of what was
    /// shown last.
    int Run(const StatusOptions& options, StatusSource& source);
};
