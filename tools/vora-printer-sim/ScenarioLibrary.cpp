// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ScenarioLibrary.h"

#include <QDir>
#include <QFile>

/// Resources of a static library have to be asked for, and not from within a namespace.
static void InitResources()
{
    Q_INIT_RESOURCE(scenarios);
}

namespace {
const QString c_strFolder = QStringLiteral(":/scenarios/");
const QString c_strSuffix = QStringLiteral(".json");
} // namespace

QStringList BuiltInScenarios()
{
    InitResources();
    QStringList listName = QDir(c_strFolder).entryList({QLatin1Char('*') + c_strSuffix}, QDir::Files, QDir::Name);
    return listName.replaceInStrings(c_strSuffix, QString());
}

QByteArray BuiltInScenario(const QString& strName)
{
    InitResources();
    QFile file(c_strFolder + strName + c_strSuffix);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
