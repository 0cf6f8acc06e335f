// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QStringList>

// What the log says of the printers for a support engineer, one line for each field. Control characters are
// escaped.

/// The number of printers, then three lines for each: name and port, model, connect type.
QStringList PrinterInfoLines(const QList<stPrinterManager>& listPrinter);

/// The last decoded state of the printer with this index: 24 lines, codes as values of the enumerations.
QStringList PrinterStatusLines(int iIndex, const stPrinterManager& printer);
