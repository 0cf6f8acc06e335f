// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <algorithm>

namespace {
constexpr int c_iMaxAnswerMSec = 1000; // 100 on an idle machine
constexpr int c_iMaxExitMSec = 2000;
} // namespace

void FaultTest::StartBeside(const QStringList& listName)
{
    m_listName = QStringList{u"Neighbour"_s} + listName;
    m_iSlowestMSec = 0;
    WriteReadyPrinters(m_listName);
    StartWithTray();
    for (int iRow = 0; iRow < m_listName.size(); ++iRow) {
        QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"就绪"_s, c_iTimeOutMSec);
    }
}

QString FaultTest::State(int iRow)
{
    QElapsedTimer timer;
    timer.start();
    m_tool->RowCount();
    m_iSlowestMSec = std::max(m_iSlowestMSec, timer.elapsed());
    return m_tool->Cell(iRow, 3);
}

void FaultTest::CheckNeighbour()
{
    const QList<std::pair<quint8, QString>> listState = {
        {0x10, u"正在打印"_s}, {0x11, u"正在扫描"_s}, {0x02, u"忙碌"_s}};
    for (const auto& state : listState) {
        WriteStatus(m_listName.first(), Reply(state.first));
        QTRY_COMPARE_WITH_TIMEOUT(State(0), state.second, c_iTimeOutMSec);
    }
}

void FaultTest::CheckAnswersAndExit()
{
    QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuExit));
    QElapsedTimer timer;
    timer.start();
    const bool bEnded = m_tool->Process().waitForFinished(c_iMaxExitMSec);
    qInfo("slowest answer %lld ms, exit %lld ms", static_cast<long long>(m_iSlowestMSec),
          static_cast<long long>(timer.elapsed()));
    QVERIFY(bEnded);
    QCOMPARE(m_tool->Process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_tool->Process().exitCode(), 0);
    QVERIFY(m_iSlowestMSec < c_iMaxAnswerMSec);
}
