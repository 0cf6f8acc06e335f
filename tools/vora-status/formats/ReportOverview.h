// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilLanguageCtrl.h"

#include <QString>

#include <vector>

class StatusReport;

/// One line for each printer, in columns below a header. Used by one thread at a time.
class ReportOverview
{
public:
    /// With bColored, errors and failures are red, warnings and low ink yellow.
    ReportOverview(enLanguage enLang, bool bColored);

    void Add(const StatusReport& report);

    /// All lines; empty when nothing was added.
    QString Text() const;

private:
    enum enColor
    {
        enColorNone,
        enColorHeader,
        enColorTrouble,
        enColorConcern
    };

    struct stCell
    {
        QString strText;
        enColor color = enColorNone;
    };

    using Row = std::vector<stCell>;

    stCell StateCell(const StatusReport& report) const;
    QString AgeText(const StatusReport& report) const;
    QString ConnectionText(const StatusReport& report) const;
    static void AddInk(const StatusReport& report, Row& row);
    void AddCell(const stCell& cell, int iPadding, bool bRight, QString& strText) const;

    const enLanguage m_enLang;
    const bool m_bColored;
    const qint64 m_iNow; ///< milliseconds since 1970
    std::vector<Row> m_listRow;
};
