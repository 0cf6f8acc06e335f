// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DesktopTest.h"

#include <algorithm>

/// Base of the tests in which something is wrong with a printer's files: another printer beside it is followed all the
/// same, the window answers and the program ends in time.
class FaultTest : public DesktopTest
{
protected:
    static constexpr int c_iTimeOutMSec = 40000; // eleven failed reads

    /// Starts the tool with the neighbour in row 0 and these printers in the rows below it, all ready.
    void StartBeside(const QStringList& listName)
    {
        m_listName = QStringList{u"Neighbour"_s} + listName;
        m_iSlowestMSec = 0;
        WriteReadyPrinters(m_listName);
        StartWithTray();
        for (int iRow = 0; iRow < m_listName.size(); ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"就绪"_s, c_iTimeOutMSec);
        }
    }

    QString Ink(int iRow) const { return m_tool->Cell(iRow, 2); }

    /// What stands in the state column. Each call takes the time of an answer, too.
    QString State(int iRow)
    {
        QElapsedTimer timer;
        timer.start();
        m_tool->RowCount();
        m_iSlowestMSec = std::max(m_iSlowestMSec, timer.elapsed());
        return m_tool->Cell(iRow, 3);
    }

    /// The neighbour takes one state after the other, and each is shown.
    void CheckNeighbour()
    {
        const QList<std::pair<quint8, QString>> listState = {
            {0x10, u"正在打印"_s}, {0x11, u"正在扫描"_s}, {0x02, u"忙碌"_s}};
        for (const auto& state : listState) {
            WriteStatus(m_listName.first(), Reply(state.first));
            QTRY_COMPARE_WITH_TIMEOUT(State(0), state.second, c_iTimeOutMSec);
        }
    }

    /// Ends the tool by its menu, within two seconds, and checks that each answer took less than one.
    void CheckAnswersAndExit()
    {
        ExitByMenu();
        qInfo("slowest answer %lld ms", static_cast<long long>(m_iSlowestMSec)); // 100 on an idle machine
        QVERIFY(m_iSlowestMSec < 1000);
    }

    QString StatusPath(int iRow) const { return m_folder.StatusPath(m_listName.at(iRow)); }

private:
    QStringList m_listName;
    qint64 m_iSlowestMSec = 0;
};
