// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// How long the workers wait, in one sleep and between two looks at their files: what they ask for, not how long it
// took.

#include "OpenHook.h"
#include "RunningWorker.h"
#include "StatusFolder.h"
#include "TrdDeviceManage.h"

#include <QtTest>

#include <limits>
#include <vector>

#include <time.h>
#include <unistd.h>

using Pauses = std::vector<useconds_t>;

Q_DECLARE_METATYPE(Pauses)

namespace {

Pauses s_listSlept;
std::function<void()> s_afterPause;

} // namespace

// They stand for the C library's functions of these names: note what is asked for and take no time.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
int usleep(useconds_t dwMicroSec)
{
    s_listSlept.push_back(dwMicroSec);
    s_afterPause();
    return 0;
}

int nanosleep(const timespec* pPause, timespec*)
{
    return ::usleep(static_cast<useconds_t>(pPause->tv_sec * 1000000 + pPause->tv_nsec / 1000));
}
// NOLINTEND(readability-inconsistent-declaration-parameter-name)

class tst_UtilThreadBase : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        s_listSlept.clear();
        s_afterPause = [] {};
    }

    void metaObjectOnlyNamesTheClass()
    {
        const QMetaObject& meta = UtilThreadBase::staticMetaObject;
        QCOMPARE(meta.className(), "UtilThreadBase");
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
        QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());
    }

    void zeroAndNegativeReturnAtOnce()
    {
        UtilThreadBase worker;
        for (const bool bQuit : {false, true}) {
            worker.m_bThreadQuit = bQuit;
            for (const int iMSec : {0, -1, -499, -500, -501, -1200, -3000, std::numeric_limits<int>::min()}) {
                QCOMPARE(worker.WaitForSleep(iMSec), bQuit);
            }
        }
        QVERIFY(s_listSlept.empty());
    }

    void sleepsInSlicesUntilQuit_data()
    {
        QTest::addColumn<int>("mSec");
        QTest::addColumn<int>("quitAfter"); // so many pauses; -1: never
        QTest::addColumn<Pauses>("slept");
        QTest::newRow("remainder alone") << 1 << -1 << Pauses{1000};
        QTest::newRow("longest remainder") << 499 << -1 << Pauses{499000};
        QTest::newRow("one slice") << 500 << -1 << Pauses{500000};
        QTest::newRow("one slice and the shortest remainder") << 501 << -1 << Pauses{500000, 1000};
        QTest::newRow("two slices and a remainder") << 1200 << -1 << Pauses{500000, 500000, 200000};
        QTest::newRow("six slices") << 3000 << -1 << Pauses(6, 500000);
        QTest::newRow("quit in a remainder alone") << 499 << 1 << Pauses{499000};
        QTest::newRow("quit in the first of two slices, no remainder after it") << 1200 << 1 << Pauses{500000};
        QTest::newRow("quit in the second of six slices") << 3000 << 2 << Pauses{500000, 500000};
        QTest::newRow("quit in the last slice") << 500 << 1 << Pauses{500000};
        QTest::newRow("remainder is slept all the same") << 900 << 1 << Pauses{500000, 400000};
        QTest::newRow("quit in a remainder") << 900 << 2 << Pauses{500000, 400000};
        QTest::newRow("quit before one slice") << 500 << 0 << Pauses{};
        QTest::newRow("quit before slice and remainder") << 999 << 0 << Pauses{};
        QTest::newRow("quit before a remainder alone, which is slept") << 499 << 0 << Pauses{499000};
    }

    void sleepsInSlicesUntilQuit()
    {
        QFETCH(const int, mSec);
        QFETCH(const int, quitAfter);
        UtilThreadBase worker;
        worker.m_bTaskRunning = true;
        worker.m_bThreadQuit = quitAfter == 0;
        s_afterPause = [&] {
            if (quitAfter == static_cast<int>(s_listSlept.size())) {
                worker.m_bThreadQuit = true;
            }
        };
        QCOMPARE(worker.WaitForSleep(mSec), quitAfter >= 0);
        QTEST(s_listSlept, "slept");
        QCOMPARE(worker.m_bThreadQuit.load(), quitAfter >= 0); // no flag is ever touched
        QVERIFY(worker.m_bTaskRunning);
    }

    void statusIsReadEverySecond()
    {
        const QString strName = u"Queue"_s;
        StatusFolder().WriteStatus(strName, "no reply");
        QList<stPrinterManager> listPrinter{ListedPrinter(strName, enStatusOffline)}; // whose file is read each time
        TrdGetPrinterStatus worker;
        worker.Init(0, &listPrinter);
        const OpenHook look(StatusFolder().StatusPath(strName), [&worker] { return NoteLook(worker); });
        worker.SlotTaskStart();
        QCOMPARE(s_listSlept, (Pauses{0, 500000, 500000, 0, 500000, 500000, 0}));
    }

    void listIsReadEveryThreeSeconds()
    {
        StatusFolder().WritePrinterList(Printers(u"Queue"_s));
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        connect(&worker, &TrdDeviceManage::SgnUpdatePrinterList, &worker, [&] {
            NoteLook(worker);
            listPrinter.clear(); // so that the next look tells again
        });
        worker.SlotTaskStart();
        // The first look finds a new list, which has to stay as it is for a moment.
        QCOMPARE(s_listSlept, (Pauses{50000, 0, 500000, 500000, 500000, 500000, 500000, 500000, 0, 500000, 500000,
                                      500000, 500000, 500000, 500000, 0}));
    }

    void listThatChangesSoonAfterItWasReadIsReadAgain()
    {
        StatusFolder().WritePrinterList(Printers(u"Half"_s));
        s_afterPause = [] {
            if (s_listSlept.size() == 1) {
                StatusFolder().WritePrinterList(Printers(u"Queue"_s));
            }
        };
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        connect(&worker, &TrdDeviceManage::SgnUpdatePrinterList, &worker, [&] { worker.m_bThreadQuit = true; });
        worker.SlotTaskStart();
        QCOMPARE(listPrinter.first().printerInfo.strPrinterName, u"Queue"_s);
        QCOMPARE(s_listSlept, (Pauses{50000, 500000, 500000, 500000, 500000, 500000, 500000, 50000}));
    }

private:
    /// A look is noted as a pause of 0; the third one ends the loop.
    static bool NoteLook(UtilThreadBase& worker)
    {
        s_listSlept.push_back(0);
        worker.m_bThreadQuit = std::count(s_listSlept.begin(), s_listSlept.end(), useconds_t(0)) == 3;
        return true;
    }
};

QTEST_GUILESS_MAIN(tst_UtilThreadBase)

#include "tst_UtilThreadBase.moc"
