// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

class StatusOptions;
class StatusSource;

/// Shows the replies, and again after every change: looks once a second until SIGINT or SIGTERM ends it or the output
/// cannot be written; returns the exit status of what was shown last. Called once, from the main thread, before any
/// other is started: from then on these signals no longer end the process.
int WatchStatus(const StatusOptions& options, StatusSource& source);
