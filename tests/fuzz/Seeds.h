// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>

/// What fuzzing begins with: replies as the simulator's encoder writes them, each under a name of its own. All of them
/// decode.
QMap<QString, QByteArray> ReplySeeds();

/// The pieces that a reply is made of, as a fuzzer reads them: keys with their lengths, codes, lengths at the bounds.
QByteArray ReplyDictionary();

/// Printer lists that are too long for a file of their own: deep, wide and with long names.
QMap<QString, QByteArray> PrinterListSeeds();
