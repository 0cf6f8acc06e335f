// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QByteArray>

// Printers for the benchmarks, in the driver package's folder, which must be a private one. They are counted from 0. A
// file that cannot be written ends the program. Called from the main thread.

/// Its queue: "printer0".
QString BenchPrinterName(int i);

/// Its record: a network printer at 192.168.1.0 to 192.168.1.249.
stPrinterInfo BenchPrinter(int i);

/// A reply with nothing but a state (the printer's raw code) and black ink, 50 per cent.
QByteArray PlainReply(quint8 byStatus);

/// The printer list and a status file "ready" for each printer; files of more printers than iCount stay.
void WriteBenchPrinters(int iCount);

/// Replaces one printer's status file at once.
void WriteBenchStatus(int i, const QByteArray& reply);
