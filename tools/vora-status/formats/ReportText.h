// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QString>

class ReportWriter;
class StatusReport;

/// The report for people: the printer, then one line for each value of the reply. Values that come as
/// numbers stand with their raw code. Empty when nothing is known.
QString ReportText(const StatusReport& report, enLanguage enLang);

/// The line at the head of a report: its name and, when a reply came, the reply's length.
void AddReportHeading(const StatusReport& report, ReportWriter& writer);
