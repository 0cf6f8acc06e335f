// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// How long the workers wait between two looks at their files: what they ask for, not how long it took.

#include "OpenHook.h"
#include "RunningWorker.h"
#include "StatusFolder.h"
#include "TrdDeviceManage.h"

#include <QtTest>

#include <vector>

#include <unistd.h>

namespace {

constexpr std::size_t c_iLooks = 4;

using Pauses = std::vector<useconds_t>;

std::vector<Pauses> s_listPauses; // after each look at the file

/// Called at each look; the last one ends the loop.
void NoteLook(UtilThreadBase& worker)
{
    s_listPauses.emplace_back();
    worker.m_bThreadQuit = s_listPauses.size() == c_iLooks;
}

} // namespace

/// Stands for the C library's function of that name: notes what is asked for and takes no time.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names it otherwise
int usleep(useconds_t dwMicroSec)
{
    s_listPauses.back().push_back(dwMicroSec);
    return 0;
}

class tst_Intervals : public QObject
{
    Q_OBJECT

private slots:
    void init() { s_listPauses.clear(); }
    void statusIsReadEverySecond()
    {
        const QString strName = u"Queue"_s;
        StatusFolder().WriteStatus(strName, "no reply");
        QList<stPrinterManager> listPrinter{ListedPrinter(strName, enStatusOffline)}; // whose file is read each time
        TrdGetPrinterStatus worker;
        worker.Init(0, &listPrinter);
        const OpenHook look(StatusFolder().StatusPath(strName), [&worker] {
            NoteLook(worker);
            return true;
        });
        worker.SlotTaskStart();
        const Pauses second{500000, 500000};
        QCOMPARE(s_listPauses, (std::vector<Pauses>{second, second, second, {}}));
    }

    void listIsReadEveryThreeSeconds()
    {
        StatusFolder().WritePrinterList({ListedPrinter(u"Queue"_s, 0).printerInfo});
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        connect(&worker, &TrdDeviceManage::SgnUpdatePrinterList, &worker, [&] {
            NoteLook(worker);
            listPrinter.clear(); // so that the next look tells again
        });
        worker.SlotTaskStart();
        const Pauses threeSeconds(6, 500000);
        QCOMPARE(s_listPauses, (std::vector<Pauses>{threeSeconds, threeSeconds, threeSeconds, {}}));
    }
};

QTEST_GUILESS_MAIN(tst_Intervals)

#include "tst_Intervals.moc"
