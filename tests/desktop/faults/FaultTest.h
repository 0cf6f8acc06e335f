// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DesktopTest.h"

/// Base of the tests in which something is wrong with a printer's files: another printer beside it is followed all the
/// same, the window answers and the program ends in time.
class FaultTest : public DesktopTest
{
    Q_OBJECT

protected:
    static constexpr int c_iTimeOutMSec = 40000; // eleven failed reads

    /// Starts the tool with the neighbour in row 0 and these printers in the rows below it, all ready.
    void StartBeside(const QStringList& listName);

    QString Ink(int iRow) const { return m_tool->Cell(iRow, 2); }

    /// What stands in the state column. Each call takes the time of an answer, too.
    QString State(int iRow);

    /// The neighbour takes one state after the other, and each is shown.
    void CheckNeighbour();

    /// Ends the tool by its menu, tells how long its answers and its end took, and checks that.
    void CheckAnswersAndExit();

    QString StatusPath(int iRow) const { return m_folder.StatusPath(m_listName.at(iRow)); }

private:
    QStringList m_listName;
    qint64 m_iSlowestMSec = 0;
};
