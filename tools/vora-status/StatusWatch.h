// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ToolError.h"

class StatusOptions;
class StatusSource;

/// Shows the replies, and again after every change: looks once a second until a signal ends it (EndSignals); returns
/// the exit status of what was shown last. Throws ToolError when the output cannot be written. Called once, from the
/// main thread, before any other is started.
enExitStatus WatchStatus(const StatusOptions& options, StatusSource& source);
