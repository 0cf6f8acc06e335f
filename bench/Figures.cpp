// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Figures.h"

#include "QtCompat.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>
#include <cstdio>

namespace {

QString Number(double dValue)
{
    const int iDecimals = dValue == std::floor(dValue) ? 0 : (std::abs(dValue) < 10 ? 2 : 1);
    return QString::number(dValue, 'f', iDecimals);
}

QString BudgetText(const stFigure& figure)
{
    const stBudget budget = figure.budget.value_or(stBudget());
    switch (budget.enLimited) {
    case stBudget::enRatio: return u"≤ %1 ×"_s.arg(Number(budget.dLimit));
    case stBudget::enExcess: return u"≤ floor + %1 %2"_s.arg(Number(budget.dLimit), figure.strUnit);
    case stBudget::enValue: break;
    }
    return u"≤ %1 %2"_s.arg(Number(budget.dLimit), figure.strUnit);
}

bool IsMet(const stFigure& figure)
{
    const double dFloor = figure.dFloor.value_or(0);
    switch (figure.budget->enLimited) {
    case stBudget::enRatio: return figure.dValue <= figure.budget->dLimit * dFloor;
    case stBudget::enExcess: return figure.dValue <= figure.budget->dLimit + dFloor;
    case stBudget::enValue: break;
    }
    return figure.dValue <= figure.budget->dLimit;
}

void PrintRow(const QStringList& listCell)
{
    std::printf("| %s |\n", listCell.join(u" | "_s).toUtf8().constData());
    std::fflush(stdout);
}

} // namespace

Figures::Figures(const QString& strJsonPath) : m_strJsonPath(strJsonPath)
{
    QFile file(m_strJsonPath);
    if (!m_strJsonPath.isEmpty() && file.open(QIODevice::ReadOnly)) {
        m_listFigure = QJsonDocument::fromJson(file.readAll()).array();
    }
    if (m_listFigure.isEmpty()) {
        PrintRow({u"figure"_s, u"value"_s, u"floor"_s, u"ratio"_s, u"budget"_s, QString()});
        PrintRow({u"---"_s, u"---:"_s, u"---:"_s, u"---:"_s, u"---"_s, u"---"_s});
    }
}

void Figures::Add(const stFigure& figure)
{
    QJsonObject object{{u"name"_s, figure.strName},
                       {u"text"_s, figure.strText},
                       {u"unit"_s, figure.strUnit},
                       {u"value"_s, figure.dValue}};
    QStringList listCell{figure.strText, Number(figure.dValue) + QLatin1Char(' ') + figure.strUnit};
    if (figure.dFloor) {
        object.insert(u"floor"_s, *figure.dFloor);
        listCell.append(Number(*figure.dFloor) + QLatin1Char(' ') + figure.strUnit);
        const bool bRatio = *figure.dFloor > 0;
        listCell.append(bRatio ? QString::number(figure.dValue / *figure.dFloor, 'f', 2) : QString());
    } else {
        listCell.append({QString(), QString()});
    }
    if (figure.budget) {
        const bool bMet = IsMet(figure);
        object.insert(u"budget"_s, BudgetText(figure));
        object.insert(u"met"_s, bMet);
        listCell.append({BudgetText(figure), bMet ? u"met"_s : u"**missed**"_s});
    } else {
        listCell.append({QString(), QString()});
    }
    PrintRow(listCell);
    m_listFigure.append(object);
}

void Figures::Save() const
{
    if (m_strJsonPath.isEmpty()) {
        return;
    }
    QFile file(m_strJsonPath);
    const QByteArray bytes = QJsonDocument(m_listFigure).toJson();
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("cannot write %s", qPrintable(m_strJsonPath));
    }
}
