// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Figures.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <utility>

namespace {

/// What the median must not exceed.
enum enLimit
{
    enRatio,  ///< value through floor
    enExcess, ///< value less floor
    enValue,
    enNone ///< the figure only explains another one
};

struct stFigure
{
    const char* pText;
    const char* pUnit;
    enLimit enLimited = enNone;
    double dLimit = 0;
    const char* pWhy = ""; ///< just that limit
};

constexpr stFigure c_figureList[] = {
    {"start, CPU time", "ms", enRatio, 1.1, "the tool's own share is small beside Qt's"},
    {"`ps` and `grep`, which look for a second copy, CPU time", "ms"},
    {"start, until the window rests", "ms", enExcess, 50, "three frames, which nobody sees"},
    {"memory (Pss)", "MB", enExcess, 1, "ten printers are little data"},
    {"start with 1000 printers, until the window rests", "ms", enValue, 300, "the window still seems to open at once"},
    {"memory per further printer, up to 1000", "kB", enValue, 40, "1000 printers fit into 64 MB"},
    {"idle CPU per printer and second, 10 printers", "µs", enRatio, 1.3,
     "a look costs little more than its system calls"},
    {"idle CPU per printer and second, 1000 printers", "µs", enRatio, 1.3, "the same"},
    {"exit with 1000 printers", "s", enValue, 0.8, "less than a second; workers notice it within 0.5 s"},
    {"`vora-status` on 10,000 files, CPU time", "ms", enRatio, 2, "decoding costs no more than reading and writing"},
};
static_assert(std::size(c_figureList) == enFigureCount);

/// As many digits as a reader compares.
QString Number(double dValue)
{
    return QString::number(dValue, 'f', dValue < 9.995 ? 2 : dValue < 99.95 ? 1 : 0);
}

QString BudgetText(const stFigure& figure)
{
    const QString strLimit = QString::number(figure.dLimit);
    const QString strUnit = QString::fromUtf8(figure.pUnit);
    switch (figure.enLimited) {
    case enRatio: return u"≤ %1 ×"_s.arg(strLimit);
    case enExcess: return u"≤ floor + %1 %2"_s.arg(strLimit, strUnit);
    case enValue: return u"≤ %1 %2"_s.arg(strLimit, strUnit);
    case enNone: break;
    }
    return QString();
}

QString VerdictText(const stFigure& figure, double dValue, double dFloor)
{
    bool bMet = true;
    switch (figure.enLimited) {
    case enRatio: bMet = dValue <= figure.dLimit * dFloor; break;
    case enExcess: bMet = dValue <= figure.dLimit + dFloor; break;
    case enValue: bMet = dValue <= figure.dLimit; break;
    case enNone: return QString();
    }
    return bMet ? u"met"_s : u"**missed**"_s;
}

} // namespace

void PrintRow(const QStringList& listCell)
{
    std::printf("| %s |\n", listCell.join(u" | "_s).toUtf8().constData());
    std::fflush(stdout);
}

void PrintHeader(const QStringList& listColumn)
{
    std::puts("");
    PrintRow(listColumn);
    PrintRow(QStringList(listColumn).fill(u"---"_s));
}

void PrintFigure(enFigure enMeasured, const Samples& value, const Samples& floor)
{
    static bool s_bHeader = false;
    if (!std::exchange(s_bHeader, true)) {
        PrintHeader({u"with 10 printers, if not said otherwise"_s, u"value"_s, u"floor"_s, u"ratio"_s, u"budget"_s,
                     QString(), u"why that budget"_s});
    }
    const stFigure& figure = c_figureList[enMeasured];
    const QString strUnit = QString::fromUtf8(figure.pUnit);
    const bool bFloor = !floor.empty();
    const double dValue = Median(value);
    const double dFloor = bFloor ? Median(floor) : 0;
    PrintRow({QString::fromUtf8(figure.pText), SpreadText(value, strUnit),
              bFloor ? SpreadText(floor, strUnit) : QString(), bFloor ? Number(dValue / dFloor) : QString(),
              BudgetText(figure), VerdictText(figure, dValue, dFloor), QString::fromUtf8(figure.pWhy)});
}

QString SpreadText(const Samples& samples, const QString& strUnit)
{
    const auto [min, max] = std::minmax_element(samples.begin(), samples.end());
    return u"%1 %2 (%3–%4)"_s.arg(Number(Median(samples)), strUnit, Number(*min), Number(*max));
}
