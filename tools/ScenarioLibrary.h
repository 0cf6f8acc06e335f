// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

/// Names of the scenarios that are built in.
QStringList BuiltInScenarios();

/// The text of a built-in scenario.
QByteArray BuiltInScenario(const QString& strName);
