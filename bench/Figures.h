// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QString>

#include <optional>

/// What a figure must not exceed.
struct stBudget
{
    enum enKind
    {
        enValue,  ///< the value
        enExcess, ///< value less floor
        enRatio   ///< value through floor
    };
    enKind enLimited = enValue;
    double dLimit = 0;
};

/// One measured figure, with the floor, in the same unit, measured beside it unless there is none.
struct stFigure
{
    QString strName; ///< of the figure in the JSON file
    QString strText; ///< for people
    QString strUnit;
    double dValue = 0;
    std::optional<double> dFloor;
    std::optional<stBudget> budget; ///< none: the figure only explains another one
};

/// The figures of a run: each is printed as a row of a Markdown table when it comes, and all go into a JSON file. Used
/// by one thread at a time.
class Figures
{
public:
    /// An empty path writes no file. The header is printed unless the file has figures of a program that ran before; a
    /// file that holds anything else is replaced.
    explicit Figures(const QString& strJsonPath);

    /// Prints the figure's row and keeps the figure for Save.
    void Add(const stFigure& figure);

    /// Writes the file: the figures that it had and those added. Ends the program when that cannot be done.
    void Save() const;

private:
    QString m_strJsonPath;
    QJsonArray m_listFigure;
};
