// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QString>

class StatusReport;

/// The reply byte by byte: for each field its offset, its bytes, its name and its value. A rejected
/// reply is shown up to the byte where it broke, with the reason. Empty when no reply came.
QString ReportHex(const StatusReport& report, enLanguage enLang);
