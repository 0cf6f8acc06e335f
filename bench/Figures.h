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

/// One measured figure, with the floor measured beside it unless there is none.
struct stFigure
{
    QString strName; ///< of the figure in the JSON file
    QString strText; ///< for people
    QString strUnit;
    double dValue = 0;
    std::optional<double> dFloor;
    std::optional<stBudget> budget; ///< none: the figure only explains another one
};

/// The figures of a run: each is printed as a row of a Markdown table when it comes, and all go into a JSON file.
class Figures
{
public:
    /// An empty path writes no file. The header is printed unless the file has figures of a program that ran before.
    explicit Figures(const QString& strJsonPath);

    void Add(const stFigure& figure);

    /// Ends the program when the file cannot be written.
    void Save() const;

private:
    QString m_strJsonPath;
    QJsonArray m_listFigure;
};
