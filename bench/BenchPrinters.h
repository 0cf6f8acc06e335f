// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QByteArray>

// Printers for the benchmarks, in the driver package's folder, which must be a private one.

QString BenchPrinterName(int i);
stPrinterInfo BenchPrinter(int i);

/// A reply with nothing but a state (the printer's raw code) and one ink level.
QByteArray PlainReply(quint8 byStatus);

/// A reply with all that the program shows and keeps: 4 texts, 3 errors, 2 warnings, 14 supplies.
QByteArray RichReply();

/// The printer list and a status file "ready" for each printer.
void WriteBenchPrinters(int iCount);

/// Replaces one printer's status file at once.
void WriteBenchStatus(int i, const QByteArray& reply);
