// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "NotificationServer.h"
#include "PrinterPark.h"
#include "ToolFigures.h"

#include <QElapsedTimer>

#include <cstdlib>
#include <functional>
#include <vector>

namespace {

constexpr int c_iPrinters = 200;
constexpr int c_iTimeOutMSec = 30000; // for what takes three pauses of the program on an idle machine
constexpr int c_iStepsToShow = 3;     // a state is written three pauses before it must be seen
constexpr int c_iStepsToWarmUp = 20;
constexpr int c_iStepsToALook = 5;
constexpr int c_iStepsToAListChange = 3;
constexpr int c_iLongMinutes = 30;
constexpr int c_iMaxGrowthKB = 100;   // over the last 20 minutes
constexpr int c_iLateDescriptors = 4; // what Qt opens for itself after the first look

constexpr int c_iStepsToAMinute = 60;

int s_iMinutes = 1;

const PrinterPark::stState c_ready = {0x00, {}, {}, u"就绪"_s};

// The error, the warning and the cancelling do not stay: each change of the list announces again what is wrong then.
const QList<PrinterPark::stState> c_listState = {
    {0x10, {}, {}, u"正在打印"_s}, {0x10, {0x6100}, {}, u"进纸托盘处无纸,请放入纸张"_s},
    {0x11, {}, {}, u"正在扫描"_s}, {0x10, {}, {0x6160}, u"正在打印(墨水量低)"_s},
    {0x02, {}, {}, u"忙碌"_s},     {0x03, {}, {}, u"正在取消任务"_s},
};

bool Stays(const PrinterPark::stState& state)
{
    return state.listErrorCode.isEmpty() && state.listWarningCode.isEmpty() && state.byStatus != 0x03;
}

/// Calls these one after the other until a check has failed, which by itself ends only the function that it stands in.
void InTurn(const std::vector<std::function<void()>>& listStep)
{
    for (const auto& step : listStep) {
        if (QTest::currentTestFailed()) {
            return;
        }
        step();
    }
}

} // namespace

/// The built program for hours: what it holds does not grow, and what it shows stays true.
class tst_Endurance : public DesktopTest
{
    Q_OBJECT

private slots:
    void holdsWhatItHeld()
    {
        PrinterPark park(m_folder, c_iPrinters);
        NotificationServer server;
        InTurn({
            [&] { StartBeside(server, park); },
            [&] { TakeSteps(server, park); },
            [&] { CheckThatAllHappened(server); },
            [&] { CheckEveryRow(park); },
            [&] { CheckGrowth(); },
            [&] { ExitByMenu(c_iTimeOutMSec); },
        });
    }

    /// By design: a worker that has no printer now waits for the list to grow, and beside it new ones are made for the
    /// rows that come.
    void workersStayWhenTheListShrinks()
    {
        m_tool->Start();
        QVERIFY(WaitForList(50));
        const stToolFigures first = SettledFigures(51); // and the list's
        QCOMPARE(first.iWorkers, 51);
        qInfo("50 printers: %d threads, %d descriptors, %d kB", first.iThreads, first.iDescriptors, first.iResidentKB);
        for (int iRound = 1; iRound <= 3; ++iRound) {
            QVERIFY(WaitForList(10));
            QCOMPARE(SettledFigures(51 + 40 * (iRound - 1)).iWorkers, 51 + 40 * (iRound - 1));
            QVERIFY(WaitForList(50));
            const stToolFigures figures = SettledFigures(51 + 40 * iRound);
            QCOMPARE(figures.iWorkers, 51 + 40 * iRound);
            qInfo("10 and 50 again, %d: %d threads, %d descriptors, %d kB", iRound, figures.iThreads,
                  figures.iDescriptors, figures.iResidentKB);
            const int iGrowth = figures.iDescriptors - first.iDescriptors;
            QVERIFY2(iGrowth <= figures.iWorkers - first.iWorkers + c_iLateDescriptors, QByteArray::number(iGrowth));
        }
    }

private:
    struct stWritten
    {
        int iStep;
        QString strName;
        bool bStays;
    };

    QStringList ShownRow(int iRow) const
    {
        return {m_tool->Cell(iRow, 0), m_tool->Cell(iRow, 1), m_tool->Cell(iRow, 3)};
    }

    /// A row that was right once was right: QTRY_COMPARE would look again, and a change of the list empties all rows
    /// for a moment. The row may leave out what comes after its name and its connection.
    bool WaitForRow(int iRow, const QStringList& row) const
    {
        return QTest::qWaitFor([&] { return ShownRow(iRow).mid(0, row.size()) == row; }, c_iTimeOutMSec);
    }

    void StartBeside(NotificationServer& server, const PrinterPark& park)
    {
        FakeProgram(u"cancel"_s, "echo >> /tmp/cancelled\n");
        park.WriteAll();
        // The balloons that Qt draws itself beside an XEmbed icon each leave 2.9 kB behind in Qt 6.4.
        QVERIFY(server.Start());
        StartWithTray(TrayHost::enXfcePanel);
        QVERIFY(WaitForRow(c_iPrinters - 1, park.Row(c_iPrinters - 1)));
    }

    void TakeStep(const NotificationServer& server, PrinterPark& park, int iStep)
    {
        InTurn({[&] { ChangeState(park, iStep); }, [&] { CheckState(park, iStep); }});
        if (iStep % c_iStepsToAListChange == 0) {
            InTurn({[&] { CheckChangedRows(park); }, [&] { ChangeList(park); }});
        }
        if (iStep >= c_iStepsToWarmUp && iStep % c_iStepsToALook == 0) {
            InTurn({[&] { LookAtTool(server.Count()); }});
        }
    }

    void TakeSteps(const NotificationServer& server, PrinterPark& park)
    {
        m_sinceStart.start();
        for (int iStep = 0; iStep < s_iMinutes * c_iStepsToAMinute && !QTest::currentTestFailed(); ++iStep) {
            QElapsedTimer sinceStep;
            sinceStep.start();
            TakeStep(server, park, iStep);
            QTest::qWait(static_cast<int>(std::max<qint64>(0, Tool::PauseMSec() - sinceStep.elapsed())));
        }
    }

    void ChangeState(PrinterPark& park, int iStep)
    {
        const int iRow = iStep * 7 % c_iPrinters;
        const PrinterPark::stState& state = c_listState.at(iStep % c_listState.size());
        park.SetState(iRow, state);
        m_listWritten.append({iStep, park.Name(iRow), Stays(state)});
        ++m_iStateChanges;
    }

    /// Of the states that were written three steps ago.
    void CheckState(PrinterPark& park, int iStep)
    {
        while (!m_listWritten.isEmpty() && m_listWritten.first().iStep <= iStep - c_iStepsToShow) {
            const stWritten written = m_listWritten.takeFirst();
            const int iRow = park.RowOf(written.strName);
            QVERIFY2(WaitForRow(iRow, park.Row(iRow)), qPrintable(ShownRow(iRow).join(QLatin1Char(','))));
            if (!written.bStays) {
                park.SetState(iRow, c_ready);
                m_listWritten.append({iStep, written.strName, true});
                ++m_iStateChanges;
            }
        }
    }

    /// What the last change of the list was to show, but for the states.
    void CheckChangedRows(const PrinterPark& park) const
    {
        for (const int iRow : m_listChangedRow) {
            QVERIFY2(WaitForRow(iRow, park.Row(iRow).mid(0, 2)), qPrintable(ShownRow(iRow).join(QLatin1Char(','))));
        }
    }

    void ChangeList(PrinterPark& park)
    {
        const int iRow = RowToChange(park);
        switch (m_iListChanges % 3) {
        case 0: m_listChangedRow = park.SwapWithNext(iRow); break;
        case 1: m_listChangedRow = park.Rename(iRow); break;
        default: m_listChangedRow = park.Move(iRow); break;
        }
        QVERIFY(!m_listChangedRow.isEmpty());
        ++m_iListChanges;
    }

    /// Neither the row nor the next one is that of a printer whose state was just written.
    int RowToChange(const PrinterPark& park) const
    {
        int iRow = m_iListChanges * 13 % (c_iPrinters - 1);
        const auto isWritten = [&](int iAnyRow) {
            return std::any_of(m_listWritten.begin(), m_listWritten.end(),
                               [&](const stWritten& written) { return written.strName == park.Name(iAnyRow); });
        };
        while (isWritten(iRow) || isWritten(iRow + 1)) {
            iRow = (iRow + 1) % (c_iPrinters - 1);
        }
        return iRow;
    }

    void LookAtTool(int iBalloons)
    {
        stToolFigures figures = LookAt(m_tool->Process().processId());
        figures.dMinutes = static_cast<double>(m_sinceStart.elapsed()) / 60000;
        m_listFigures.append(figures);
        QCOMPARE(figures.iWorkers, c_iPrinters + 1); // and the list's
        QVERIFY(figures.iThreads <= m_listFigures.first().iThreads);
        QVERIFY(figures.iDescriptors <= m_listFigures.first().iDescriptors);
        QCOMPARE(figures.iZombies, 0);
        qInfo("%5.1f min: %d kB, %d threads, %d descriptors, %d states, %d lists, %d balloons", figures.dMinutes,
              figures.iResidentKB, figures.iThreads, figures.iDescriptors, m_iStateChanges, m_iListChanges, iBalloons);
    }

    void CheckThatAllHappened(const NotificationServer& server) const
    {
        QVERIFY(m_listFigures.size() > 1);
        QVERIFY(server.Count() > 0);
        QVERIFY(QFile::exists(u"/tmp/cancelled"_s));
    }

    void CheckEveryRow(const PrinterPark& park) const
    {
        for (int iRow = 0; iRow < c_iPrinters; ++iRow) {
            QVERIFY2(WaitForRow(iRow, park.Row(iRow)), qPrintable(ShownRow(iRow).join(QLatin1Char(','))));
        }
    }

    void CheckGrowth()
    {
        const double dEndOfFirstThird = m_listFigures.last().dMinutes / 3;
        while (m_listFigures.first().dMinutes < dEndOfFirstThird) {
            m_listFigures.removeFirst();
        }
        const double dGrowthKB = ResidentSlope(m_listFigures) * 20;
        qInfo("%d kB resident, growing by %.0f kB in 20 minutes (the last two thirds, linear fit)",
              m_listFigures.last().iResidentKB, dGrowthKB);
        if (s_iMinutes >= c_iLongMinutes) { // a minute says nothing of the kind
            QVERIFY2(dGrowthKB < c_iMaxGrowthKB, QByteArray::number(dGrowthKB).constData());
        }
    }

    bool WaitForList(int iCount) const
    {
        PrinterPark park(m_folder, iCount);
        const QStringList lastRow = park.Row(iCount - 1);
        park.WriteAll();
        return QTest::qWaitFor([&] { return m_tool->RowCount() == iCount && ShownRow(iCount - 1) == lastRow; },
                               c_iTimeOutMSec);
    }

    /// With so many workers, and twice the same. A new thread takes its name and its descriptor when it first runs,
    /// which may be after the others have filled the rows.
    stToolFigures SettledFigures(int iWorkers) const
    {
        stToolFigures figures;
        const bool bSettled = QTest::qWaitFor(
            [&] {
                const stToolFigures last = figures;
                figures = LookAt(m_tool->Process().processId());
                return figures.iWorkers == iWorkers && figures.iDescriptors == last.iDescriptors;
            },
            c_iTimeOutMSec);
        return bSettled ? figures : stToolFigures();
    }

    QElapsedTimer m_sinceStart;
    QList<stToolFigures> m_listFigures;
    QList<stWritten> m_listWritten;
    QList<int> m_listChangedRow; ///< those that the last change of the list made look different
    int m_iStateChanges = 0;
    int m_iListChanges = 0;
};

/// tst_Endurance [MINUTES] [what a test program takes]. Without MINUTES as many steps as a minute has, of a tenth each.
int main(int argc, char** argv)
{
    if (argc > 1 && std::atoi(argv[1]) > 0) {
        s_iMinutes = std::atoi(argv[1]);
        qputenv("VORA_REAL_TIME", "1");
        argv[1] = argv[0];
        --argc;
        ++argv;
    }
    // A test function that takes longer than this ends the program; five minutes unless told.
    qputenv("QTEST_FUNCTION_TIMEOUT", QByteArray::number((s_iMinutes + 10) * 60000));
    QCoreApplication application(argc, argv);
    tst_Endurance test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_Endurance.moc"
