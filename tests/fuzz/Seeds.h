// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// Replies as the simulator's encoder writes them, each under a name of its own. All of them decode.
QMap<QString, QByteArray> ReplySeeds();
