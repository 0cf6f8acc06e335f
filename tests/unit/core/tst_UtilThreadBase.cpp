// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilThreadBase.h"

#include <QtTest>

#include <limits>
#include <numeric>
#include <vector>

#include <unistd.h>

Q_DECLARE_METATYPE(std::vector<useconds_t>)

namespace {

std::vector<useconds_t> s_listSlept;
UtilThreadBase* s_pQuitting = nullptr; // told to quit when that much has been slept
useconds_t s_dwQuitAfter = 0;

/// Sleeps with the quit flag set in the middle: after that many milliseconds, 0 for before all.
std::vector<useconds_t> SleptUntilQuit(int iMSec, int iQuitAtMSec)
{
    UtilThreadBase worker;
    worker.m_bThreadQuit = iQuitAtMSec == 0;
    s_pQuitting = &worker;
    s_dwQuitAfter = static_cast<useconds_t>(iQuitAtMSec) * 1000;
    s_listSlept.clear();
    const bool bQuit = worker.WaitForSleep(iMSec);
    s_pQuitting = nullptr;
    return bQuit ? s_listSlept : std::vector<useconds_t>{0};
}

} // namespace

/// Stands for the C library's function of that name: notes what is asked for and takes no time.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names it otherwise
int usleep(useconds_t dwMicroSec)
{
    s_listSlept.push_back(dwMicroSec);
    const useconds_t dwSlept = std::accumulate(s_listSlept.begin(), s_listSlept.end(), useconds_t(0));
    if (s_pQuitting != nullptr && dwSlept >= s_dwQuitAfter) {
        s_pQuitting->m_bThreadQuit = true;
    }
    return 0;
}

class tst_UtilThreadBase : public QObject
{
    Q_OBJECT

private slots:
    void startsWithBothFlagsClear()
    {
        const UtilThreadBase worker;
        QVERIFY(!worker.m_bTaskRunning);
        QVERIFY(!worker.m_bThreadQuit);
        QCOMPARE(worker.parent(), nullptr);
    }

    void keepsItsParent()
    {
        QObject parent;
        const auto worker = new UtilThreadBase(&parent);
        QCOMPARE(worker->parent(), &parent);
    }

    void metaObjectOnlyNamesTheClass()
    {
        const QMetaObject& meta = UtilThreadBase::staticMetaObject;
        QCOMPARE(meta.className(), "UtilThreadBase");
        QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
        QCOMPARE(meta.methodCount(), meta.methodOffset());
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
        QCOMPARE(meta.enumeratorCount(), meta.enumeratorOffset());

        UtilThreadBase worker;
        QCOMPARE(worker.qt_metacast("UtilThreadBase"), &worker);
        QVERIFY(worker.inherits("UtilThreadBase"));
        QCOMPARE(worker.qt_metacast("TrdDeviceManage"), nullptr);
    }

    void zeroAndNegativeReturnAtOnce_data()
    {
        QTest::addColumn<int>("mSec");
        QTest::addColumn<bool>("quit");
        for (const int iMSec : {0, -1, -499, -500, -501, -1200, -3000, std::numeric_limits<int>::min()}) {
            QTest::addRow("%d", iMSec) << iMSec << false;
            QTest::addRow("%d after a quit", iMSec) << iMSec << true;
        }
    }

    void zeroAndNegativeReturnAtOnce()
    {
        QFETCH(const int, mSec);
        QFETCH(const bool, quit);
        UtilThreadBase worker;
        worker.m_bThreadQuit = quit;
        s_listSlept.clear();
        QCOMPARE(worker.WaitForSleep(mSec), quit);
        QVERIFY(s_listSlept.empty());
    }

    void slicesHaveTheirLength_data()
    {
        using List = std::vector<useconds_t>;
        QTest::addColumn<int>("mSec");
        QTest::addColumn<List>("slept");
        QTest::newRow("nothing") << 0 << List{};
        QTest::newRow("remainder alone") << 1 << List{1000};
        QTest::newRow("longest remainder") << 499 << List{499000};
        QTest::newRow("one slice") << 500 << List{500000};
        QTest::newRow("one slice and the shortest remainder") << 501 << List{500000, 1000};
        QTest::newRow("two slices and a remainder") << 1200 << List{500000, 500000, 200000};
        QTest::newRow("six slices") << 3000 << List(6, 500000);
    }

    void slicesHaveTheirLength()
    {
        QFETCH(const int, mSec);
        s_listSlept.clear();
        QVERIFY(!UtilThreadBase().WaitForSleep(mSec));
        QTEST(s_listSlept, "slept");
    }

    void quitIsSeenBeforeEachSlice_data()
    {
        using List = std::vector<useconds_t>;
        QTest::addColumn<int>("mSec");
        QTest::addColumn<int>("quitAt");
        QTest::addColumn<List>("slept");
        QTest::newRow("remainder alone is not cut short") << 499 << 50 << List{499000};
        QTest::newRow("first of two slices, no remainder after it") << 1200 << 50 << List{500000};
        QTest::newRow("second of six slices") << 3000 << 700 << List{500000, 500000};
        QTest::newRow("last slice") << 500 << 50 << List{500000};
        QTest::newRow("last slice, remainder is slept all the same") << 900 << 50 << List{500000, 400000};
        QTest::newRow("remainder after a slice") << 900 << 600 << List{500000, 400000};
        QTest::newRow("before one slice") << 500 << 0 << List{};
        QTest::newRow("before slice and remainder") << 999 << 0 << List{};
        QTest::newRow("before six slices") << 3000 << 0 << List{};
        QTest::newRow("before a remainder alone, which is slept") << 499 << 0 << List{499000};
    }

    void quitIsSeenBeforeEachSlice()
    {
        QFETCH(const int, mSec);
        QFETCH(const int, quitAt);
        QTEST(SleptUntilQuit(mSec, quitAt), "slept");
    }

    void neverTouchesTheFlags()
    {
        UtilThreadBase worker;
        worker.m_bTaskRunning = true;
        QVERIFY(!worker.WaitForSleep(1));
        QVERIFY(worker.m_bTaskRunning);
        worker.m_bThreadQuit = true;
        QVERIFY(worker.WaitForSleep(500));
        QVERIFY(worker.WaitForSleep(1));
        QVERIFY(worker.m_bThreadQuit);
        QVERIFY(worker.m_bTaskRunning);
    }
};

QTEST_MAIN(tst_UtilThreadBase)

#include "tst_UtilThreadBase.moc"
