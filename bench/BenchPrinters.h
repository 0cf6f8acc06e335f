// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

// Printers for the benchmarks, in the driver package's folder, which must be a private one. They are counted from 0. A
// file that cannot be written ends the program. Called from the main thread.

/// Its queue: "printer0".
QString BenchPrinterName(int i);

/// The printer list, of network printers at 192.168.1.0 to 192.168.1.249, and a status file "ready" for each, with
/// black ink, 50 per cent; files of more printers than iCount stay.
void WriteBenchPrinters(int iCount);

/// Replaces one printer's status file at once.
void WriteBenchStatus(int i, const QByteArray& reply);
