// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"
#include "Seeds.h"
#include "ToolError.h"

#include <QDir>

#include <cstdio>

namespace {

void Write(const QString& strFolder, const QString& strName, const QByteArray& content)
{
    QDir().mkpath(strFolder);
    ReplaceFile(strFolder + QLatin1Char('/') + strName, content);
}

void WritePrinterList(const QString& strFolder, const QString& strName, const stScenario& scenario)
{
    QList<stPrinterInfo> listPrinter;
    for (int i = 0; i < scenario.listPrinter.size() && i < 5; ++i) {
        listPrinter.append(scenario.listPrinter.at(i).info);
    }
    const DriverFolder folder(strFolder + QLatin1Char('/') + strName);
    folder.WritePrinterList(listPrinter);
}

} // namespace

/// The argument is the folder into which the seeds of all fuzzers go: reply/, printer-list/ and scenario/, and the
/// dictionary of replies.
int main(int argc, char** argv)
{
    const QString strFolder = QString::fromLocal8Bit(argc == 2 ? argv[1] : ".");
    try {
        const QMap<QString, QByteArray> seeds = ReplySeeds();
        for (auto seed = seeds.begin(); seed != seeds.end(); ++seed) {
            Write(strFolder + u"/reply"_s, seed.key(), seed.value());
        }
        Write(strFolder, u"reply.dict"_s, ReplyDictionary());
        const QMap<QString, QByteArray> lists = PrinterListSeeds();
        for (auto list = lists.begin(); list != lists.end(); ++list) {
            Write(strFolder + u"/printer-list"_s, list.key(), list.value());
        }
        for (const QString& strName : BuiltInScenarios()) {
            const QByteArray json = BuiltInScenario(strName);
            Write(strFolder + u"/scenario"_s, strName, json);
            WritePrinterList(strFolder + u"/printer-list"_s, strName, ReadScenario(json, strName));
        }
    } catch (const ToolError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
