// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonObject>

class StatusReport;

/// The report for programs: every key is always there, null where there is no value. Texts are in both languages.
QJsonObject ReportJson(const StatusReport& report);
