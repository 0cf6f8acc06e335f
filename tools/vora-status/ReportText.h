// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <string>

class ReportWriter;
class StatusReport;

// Called from any thread.

/// Appends the report for people, UTF-8: the printer, then one line for each value of the reply. Values that come as
/// numbers stand with their raw code. Nothing when nothing is known.
void AddReportText(const StatusReport& report, enLanguage enLang, std::string& text);

/// The line at the head of a report: its name and, when a reply came, the reply's length.
void AddReportHeading(const StatusReport& report, ReportWriter& writer);
