// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Writes one status reply to standard output or, whole or not at all, to a file. The first argument is what the
/// command is called in its help text. Throws ToolError. Called from the main thread.
void RunEncode(const QStringList& listArgument);
