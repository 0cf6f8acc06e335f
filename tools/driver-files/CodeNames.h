// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QStringList>

#include <optional>

// Names for the printer's raw codes, for people who write scenarios and who query metrics. Letter case counts. Called
// from any thread.

/// Raw state byte of a name such as "printing"; none for any other text.
std::optional<quint8> StateCodeByName(const QString& strName);

/// Raw error or warning code of a name such as "no-paper"; none for any other text.
std::optional<quint16> ErrorCodeByName(const QString& strName);

// Every name that the two take, in the order of enPrinterStatus and of enErrorStatus.
QStringList StateNames();
QStringList ErrorNames();

/// The same names the other way round. Those that no printer sends have one too: "unknown", "version-mismatch",
/// "off-line" and "error"; every other number is "unknown".
QString StateName(int iStatus); ///< of an enPrinterStatus
QString ErrorName(int iError);  ///< of an enErrorStatus
