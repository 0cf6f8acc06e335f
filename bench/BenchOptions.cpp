// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "BenchOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

BenchOptions::BenchOptions()
{
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption runs(QStringLiteral("runs"), QStringLiteral("Takes medians of N runs (9)."),
                                  QStringLiteral("N"), QString::number(m_iRuns));
    const QCommandLineOption quick(QStringLiteral("quick"),
                                   QStringLiteral("One run, short waits, few printers: shows only that all works."));
    const QCommandLineOption json(QStringLiteral("json"), QStringLiteral("Adds the figures to those in FILE."),
                                  QStringLiteral("FILE"));
    const QCommandLineOption only(QStringLiteral("only"), QStringLiteral("Runs the benchmark NAME alone."),
                                  QStringLiteral("NAME"));
    parser.addOptions({runs, quick, json, only});
    parser.process(*QCoreApplication::instance());
    m_bQuick = parser.isSet(quick);
    m_iRuns = m_bQuick ? 1 : parser.value(runs).toInt();
    m_strJsonPath = parser.value(json);
    m_strBenchmark = parser.value(only);
    if (m_iRuns < 1 || !parser.positionalArguments().isEmpty()) {
        parser.showHelp(2);
    }
}
