// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Plays a scenario into a driver folder until it ends, a signal ends it or a file cannot be written, and removes its
/// files. The first argument is what the command is called in its help text. Throws ToolError. Called from the main
/// thread, whose event loop it runs.
void RunPlay(const QStringList& listArgument);
