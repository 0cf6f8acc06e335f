// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Writes one status reply. Throws stEnd and InputError.
void RunEncode(const QStringList& listArgument);
