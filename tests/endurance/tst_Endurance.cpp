// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "NotificationServer.h"
#include "PrinterPark.h"
#include "ToolFigures.h"

#include <QElapsedTimer>

#include <cstdlib>

namespace {

constexpr int c_iPrinters = 200;
constexpr int c_iTimeOutMSec = 30000; // for what takes three pauses of the program on an idle machine
constexpr int c_iStepsToAMinute = 60;
constexpr int c_iStepsToShow = 3; // a state is written three pauses before it must be seen
constexpr int c_iStepsToWarmUp = 20;
constexpr int c_iStepsToALook = 5;
constexpr int c_iStepsToAListChange = 3;
constexpr int c_iLongMinutes = 30;
constexpr int c_iMaxGrowthKB = 100;   // over the last 20 minutes
constexpr int c_iLateDescriptors = 4; // what Qt opens for itself after the first look

int s_iMinutes = 1;

// The error, the warning and the cancelling do not stay: each change of the list announces again what is wrong then.
const QList<stParkState> c_listState = {
    {0x10, {}, {}, u"正在打印"_s, true}, {0x10, {0x6100}, {}, u"进纸托盘处无纸,请放入纸张"_s, false},
    {0x11, {}, {}, u"正在扫描"_s, true}, {0x10, {}, {0x6160}, u"正在打印(墨水量低)"_s, false},
    {0x02, {}, {}, u"忙碌"_s, true},     {0x03, {}, {}, u"正在取消任务"_s, false},
};

} // namespace

/// The built program for hours: what it holds does not grow, and what it shows stays true.
class tst_Endurance : public DesktopTest
{
    Q_OBJECT

private slots:
    void holdsWhatItHeld()
    {
        FakeProgram(u"cancel"_s, "echo >> /tmp/cancelled\n");
        PrinterPark park(m_folder, c_iPrinters);
        // The balloons that Qt draws itself beside an XEmbed icon each leave 2.9 kB behind in Qt 6.4.
        NotificationServer server;
        QVERIFY(server.Start());
        StartWithTray(TrayHost::enXfcePanel);
        CheckRow(park, c_iPrinters - 1);
        m_sinceStart.start();
        for (int iStep = 0; iStep < s_iMinutes * c_iStepsToAMinute && !QTest::currentTestFailed(); ++iStep) {
            QElapsedTimer sinceStep;
            sinceStep.start();
            TakeStep(park, iStep);
            QTest::qWait(static_cast<int>(std::max<qint64>(0, Tool::PauseMSec() - sinceStep.elapsed())));
        }
        if (QTest::currentTestFailed()) {
            return;
        }
        qInfo("%d balloons", server.Count());
        QVERIFY(server.Count() > 0);
        QVERIFY(QFile::exists(u"/tmp/cancelled"_s));
        for (int iRow = 0; iRow < c_iPrinters; ++iRow) {
            CheckRow(park, iRow);
        }
        CheckGrowth();
        ExitByMenu(c_iTimeOutMSec);
    }

    /// By design: a worker that has no printer now waits for the list to grow, and beside it new ones are made for the
    /// rows that come.
    void workersStayWhenTheListShrinks()
    {
        m_tool->Start();
        stToolFigures first;
        for (int iRound = 0; iRound <= 3; ++iRound) {
            const int iWorkers = 51 + 40 * iRound; // and the list's
            if (iRound > 0) {
                ShowPrinters(10);
                QCOMPARE(SettledFigures(iWorkers - 40).iWorkers, iWorkers - 40);
            }
            ShowPrinters(50);
            const stToolFigures figures = SettledFigures(iWorkers);
            QCOMPARE(figures.iWorkers, iWorkers);
            qInfo("50 printers, %d: %d threads, %d descriptors, %d kB", iRound, figures.iThreads, figures.iDescriptors,
                  figures.iResidentKB);
            if (iRound == 0) {
                first = figures;
            }
            const int iGrowth = figures.iDescriptors - first.iDescriptors;
            QVERIFY2(iGrowth <= figures.iWorkers - first.iWorkers + c_iLateDescriptors, QByteArray::number(iGrowth));
        }
    }

private:
    struct stWritten
    {
        int iStep;
        int iRow;
        bool bStays;
    };

    /// A row that was right once was right: QTRY_COMPARE would look again, and a change of the list empties all rows
    /// for a moment.
    void CheckRow(const PrinterPark& park, int iRow, bool bWithState = true) const
    {
        QStringList listShown;
        const auto isRight = [&] {
            listShown = QStringList{m_tool->Cell(iRow, 0), m_tool->Cell(iRow, 1), m_tool->Cell(iRow, 3)};
            const int iCells = bWithState ? 3 : 2;
            return listShown.mid(0, iCells) == park.Row(iRow).mid(0, iCells);
        };
        QVERIFY2(QTest::qWaitFor(isRight, c_iTimeOutMSec), qPrintable(listShown.join(QLatin1Char(','))));
    }

    void TakeStep(PrinterPark& park, int iStep)
    {
        SetState(park, iStep, iStep * 7 % c_iPrinters, c_listState.at(iStep % c_listState.size()));
        while (m_listWritten.first().iStep <= iStep - c_iStepsToShow) {
            const stWritten written = m_listWritten.takeFirst();
            CheckRow(park, written.iRow);
            if (!written.bStays) {
                SetState(park, iStep, written.iRow, c_parkReady);
            }
        }
        if (iStep % c_iStepsToAListChange == 0) {
            for (const int iRow : std::as_const(m_listChangedRow)) {
                CheckRow(park, iRow, false);
            }
            m_listChangedRow = park.ChangeList(RowToChange());
            ++m_iListChanges;
        }
        if (iStep >= c_iStepsToWarmUp && iStep % c_iStepsToALook == 0) {
            LookAtTool();
        }
    }

    void SetState(PrinterPark& park, int iStep, int iRow, const stParkState& state)
    {
        park.SetState(iRow, state);
        m_listWritten.append({iStep, iRow, state.bStays});
        ++m_iStateChanges;
    }

    /// Neither the row nor the next one is one whose state was just written.
    int RowToChange() const
    {
        int iRow = m_iListChanges * 13 % (c_iPrinters - 1);
        while (std::any_of(m_listWritten.begin(), m_listWritten.end(), [&](const stWritten& written) {
            return written.iRow == iRow || written.iRow == iRow + 1;
        })) {
            iRow = (iRow + 1) % (c_iPrinters - 1);
        }
        return iRow;
    }

    void LookAtTool()
    {
        stToolFigures figures = LookAt(m_tool->Process().processId());
        figures.dMinutes = static_cast<double>(m_sinceStart.elapsed()) / 60000;
        m_listFigures.append(figures);
        QCOMPARE(figures.iWorkers, c_iPrinters + 1); // and the list's
        QVERIFY(figures.iThreads <= m_listFigures.first().iThreads);
        QVERIFY(figures.iDescriptors <= m_listFigures.first().iDescriptors);
        QCOMPARE(figures.iZombies, 0);
        qInfo("%5.1f min: %d kB, %d threads, %d descriptors, %d states, %d lists", figures.dMinutes,
              figures.iResidentKB, figures.iThreads, figures.iDescriptors, m_iStateChanges, m_iListChanges);
    }

    void CheckGrowth()
    {
        const double dEndOfFirstThird = m_listFigures.last().dMinutes / 3;
        while (m_listFigures.first().dMinutes < dEndOfFirstThird) {
            m_listFigures.removeFirst();
        }
        QVERIFY(m_listFigures.size() > 1);
        const double dGrowthKB = ResidentSlope(m_listFigures) * 20;
        qInfo("%d kB resident, growing by %.0f kB in 20 minutes (the last two thirds, linear fit)",
              m_listFigures.last().iResidentKB, dGrowthKB);
        if (s_iMinutes >= c_iLongMinutes) { // a minute says nothing of the kind
            QVERIFY2(dGrowthKB < c_iMaxGrowthKB, QByteArray::number(dGrowthKB).constData());
        }
    }

    void ShowPrinters(int iCount) const
    {
        const PrinterPark park(m_folder, iCount);
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), iCount, c_iTimeOutMSec);
        CheckRow(park, iCount - 1);
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
