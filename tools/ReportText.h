// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QByteArray>

class StatusReport;

/// The report for people, UTF-8: the printer, then one line for each value of the reply. Values that come as numbers
/// stand with their raw code. Empty when nothing is known.
QByteArray ReportText(const StatusReport& report, enLanguage enLang);

/// The line at the head of a report: its name and, when a reply came, the reply's length.
QByteArray ReportHeading(const StatusReport& report, enLanguage enLang);
