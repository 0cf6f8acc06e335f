// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

/// Plays a scenario into a driver folder until it ends or a signal ends it. Throws stEnd and InputError.
void RunPlay(const QStringList& listArgument);
