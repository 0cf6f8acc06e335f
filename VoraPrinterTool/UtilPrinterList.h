// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <optional>
#include <string_view>

// The driver package's printer list file.

/// The file's path.
QString PrinterListPath();

/// The printers that the file's content names, in its order. A missing group gives an empty record up to 1000 printers;
/// of a Count beyond that only groups that exist are taken, the first 1000 at most.
QList<stPrinterInfo> ParsePrinterList(std::string_view content);

/// The printers of the file. None, as of an empty file, when there is no regular file, when this user may not read it,
/// and when it is longer than any list is (1 MiB). No value when reading failed otherwise or the file changed
/// meanwhile: what it holds is not known just now.
std::optional<QList<stPrinterInfo>> ReadPrinterList();
