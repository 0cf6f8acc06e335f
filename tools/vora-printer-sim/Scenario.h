// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"
#include "RandomWalk.h"
#include "StatusEncoder.h"
#include "StatusFileContent.h"

#include <QJsonObject>

#include <optional>

/// One printer as it is when a round begins.
struct stSimPrinter
{
    stPrinterInfo info;
    bool bPresent = true; ///< in the printer list
    enFileContent enContent = enFileGood;
    stStatusReply reply;
    stWalk walk;
};

/// What happens at one moment to some printers.
struct stStep
{
    qint64 iAtMSec = 0;
    QList<int> listPrinter; ///< indexes
    QJsonObject fields;     ///< of the reply; the others stay
    std::optional<bool> bPresent;
    enFileContent enContent = enFileGood;
};

constexpr int c_iMaxPrinters = 1000;       ///< the printer tool takes a longer list for a damaged file
constexpr int c_iMaxChanges = 1000000;     ///< the printers of all steps together
constexpr int c_iMaxReplyBytes = 16 << 20; ///< the first replies of all printers and what all changes put into them

/// What a simulator plays: printers and a timeline. A plain value, like its parts.
struct stScenario
{
    QString strDescription;
    bool bLoop = false;        ///< a new round begins when one ends
    qint64 iDurationMSec = -1; ///< of a round; without end when negative
    QList<stSimPrinter> listPrinter;
    QList<stStep> listStep; ///< in the order of their times

    /// Whether two plays of it with different seeds may differ.
    bool UsesChance() const;
};

/// Reads a scenario. strSource names the file in messages; iPrinters, when it is not negative, is the number of
/// printers to make of the first entry that has a count. Throws ToolError for what docs/simulator.md does not allow
/// and for more than c_iMaxPrinters printers.
stScenario ReadScenario(const QByteArray& json, const QString& strSource, int iPrinters = -1);
