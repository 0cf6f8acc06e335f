// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Names of the scenarios that are built in, sorted.
QStringList BuiltInScenarios();

/// The text of a built-in scenario, JSON in UTF-8; empty when there is none of that name.
QByteArray BuiltInScenario(const QString& strName);
