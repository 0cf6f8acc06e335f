// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <string>

class StatusReport;

/// Appends the reply byte by byte, UTF-8: for each field its offset, its bytes, its name and its value. A rejected
/// reply is shown up to the byte where it broke, with the reason. Nothing when no reply came. Called from any thread.
void AddReportHex(const StatusReport& report, enLanguage enLang, std::string& text);
