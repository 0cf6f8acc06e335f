// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "BenchOptions.h"

#include "QtCompat.h"

#include <QCommandLineParser>
#include <QCoreApplication>

BenchOptions::BenchOptions()
{
    QCommandLineParser parser;
    parser.addHelpOption();
    const QCommandLineOption runs(u"runs"_s, u"Takes medians of N runs (9)."_s, u"N"_s, QString::number(m_iRuns));
    const QCommandLineOption quick(u"quick"_s, u"One run, short waits, few printers: shows only that all works."_s);
    const QCommandLineOption json(u"json"_s, u"Adds the figures to those in FILE."_s, u"FILE"_s);
    const QCommandLineOption only(u"only"_s, u"Runs the benchmark NAME alone."_s, u"NAME"_s);
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
