// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ScenarioLibrary.h"

#include "CodeNames.h"

#include <QDir>
#include <QFile>

/// Resources of a static library have to be asked for, and not from within a namespace.
static void InitResources()
{
    Q_INIT_RESOURCE(scenarios);
}

namespace {
const QString c_strFolder = u":/scenarios/"_s;
const QString c_strSuffix = u".json"_s;
const QString c_strEveryError = u"every-error"_s; // made of the table of errors, not a file

QByteArray EveryError()
{
    QString strSteps;
    int iAt = 0;
    for (const QString& strName : ErrorNames()) {
        iAt += 2;
        strSteps += u"    {\"at\": %1, \"state\": \"busy\", \"errors\": [\"%2\"]},\n"_s.arg(iAt).arg(strName);
    }
    return uR"({
  "description": "All %1 errors, one after the other",
  "duration": %2,
  "printers": [
    {
      "name": "Demo-Office", "model": "RB9Q", "connection": "network", "port": "192.168.10.22",
      "uri": "socket://192.168.10.22:9100", "serial": "SIM-B0022"
    }
  ],
  "timeline": [
%3    {"at": %4, "state": "ready", "errors": []}
  ]
}
)"_s.arg(ErrorNames().size())
        .arg(iAt + 5)
        .arg(strSteps)
        .arg(iAt + 2)
        .toUtf8();
}
} // namespace

QStringList BuiltInScenarios()
{
    InitResources();
    QStringList listName = QDir(c_strFolder).entryList({QLatin1Char('*') + c_strSuffix}, QDir::Files);
    listName.replaceInStrings(c_strSuffix, QString()).append(c_strEveryError);
    listName.sort();
    return listName;
}

QByteArray BuiltInScenario(const QString& strName)
{
    if (strName == c_strEveryError) {
        return EveryError();
    }
    InitResources();
    QFile file(c_strFolder + strName + c_strSuffix);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
