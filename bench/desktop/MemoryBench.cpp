// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "ProcessFigures.h"
#include "Sampling.h"

void BenchMemory(const BenchOptions& options, Figures& figures)
{
    constexpr int c_iFewPrinters = 10;
    const int iManyPrinters = options.FullOrQuick(1000, 30);
    const auto pss = [&](const char* pProgram, const QStringList& listArgument = {}) {
        const MeasuredProcess process(QString::fromLocal8Bit(pProgram), listArgument);
        process.WaitUntilIdle(options.FullOrQuick(1000, 150));
        return PssKB(process.Pid());
    };
    WriteBenchPrinters(c_iFewPrinters);
    const stPair few = MedianPair(
        options.m_iRuns, [&] { return pss(VORA_TOOL); }, [&] { return pss(VORA_EMPTY_TRAY); });
    figures.Add({u"memory"_s, u"memory (Pss) with 10 printers"_s, u"MB"_s, few.dValue / 1024, few.dFloor / 1024,
                 stBudget{stBudget::enExcess, 3}});

    const stPair dressed = MedianPair(
        options.m_iRuns, [&] { return pss(VORA_TOOL); },
        [&] { return pss(VORA_EMPTY_TRAY, {QStringLiteral(VORA_ICON)}); });
    figures.Add({u"memory-dressed"_s,
                 u"the same beside an empty program with the same icon and texts"_s,
                 u"MB"_s,
                 dressed.dValue / 1024,
                 dressed.dFloor / 1024,
                 {}});

    WriteBenchPrinters(iManyPrinters);
    const double dMany = MedianOf(options.m_iRuns, [&] { return pss(VORA_TOOL); });
    figures.Add({u"memory-printer"_s,
                 u"memory per further printer, up to %1"_s.arg(iManyPrinters),
                 u"kB"_s,
                 (dMany - few.dValue) / (iManyPrinters - c_iFewPrinters),
                 {},
                 stBudget{stBudget::enValue, 40}});
}
