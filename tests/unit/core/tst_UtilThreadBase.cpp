// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilThreadBase.h"

#include <QtTest>

#include <limits>
#include <numeric>
#include <vector>

#include <unistd.h>

using Pauses = std::vector<useconds_t>;

Q_DECLARE_METATYPE(Pauses)

namespace {
Pauses s_listSlept;
UtilThreadBase* s_pQuitting = nullptr; // told to quit when so much has been slept
useconds_t s_dwQuitAfter = 0;
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
        QVERIFY(!worker.m_bTaskRunning && !worker.m_bThreadQuit);
        QCOMPARE(worker.parent(), nullptr);
        QObject parent;
        const auto child = new UtilThreadBase(&parent);
        QCOMPARE(child->parent(), &parent);
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
        QCOMPARE(worker.qt_metacast("TrdDeviceManage"), nullptr);
    }

    void zeroAndNegativeReturnAtOnce()
    {
        UtilThreadBase worker;
        s_listSlept.clear();
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
        QTest::addColumn<int>("quitAt"); // so much has been slept; -1: never
        QTest::addColumn<Pauses>("slept");
        QTest::newRow("remainder alone") << 1 << -1 << Pauses{1000};
        QTest::newRow("longest remainder") << 499 << -1 << Pauses{499000};
        QTest::newRow("one slice") << 500 << -1 << Pauses{500000};
        QTest::newRow("one slice and the shortest remainder") << 501 << -1 << Pauses{500000, 1000};
        QTest::newRow("two slices and a remainder") << 1200 << -1 << Pauses{500000, 500000, 200000};
        QTest::newRow("six slices") << 3000 << -1 << Pauses(6, 500000);
        QTest::newRow("quit in a remainder alone") << 499 << 50 << Pauses{499000};
        QTest::newRow("first of two slices, no remainder after it") << 1200 << 50 << Pauses{500000};
        QTest::newRow("second of six slices") << 3000 << 700 << Pauses{500000, 500000};
        QTest::newRow("last slice") << 500 << 50 << Pauses{500000};
        QTest::newRow("last slice, remainder is slept all the same") << 900 << 50 << Pauses{500000, 400000};
        QTest::newRow("remainder after a slice") << 900 << 600 << Pauses{500000, 400000};
        QTest::newRow("before one slice") << 500 << 0 << Pauses{};
        QTest::newRow("before slice and remainder") << 999 << 0 << Pauses{};
        QTest::newRow("before a remainder alone, which is slept") << 499 << 0 << Pauses{499000};
    }

    void sleepsInSlicesUntilQuit()
    {
        QFETCH(const int, mSec);
        QFETCH(const int, quitAt);
        UtilThreadBase worker;
        worker.m_bTaskRunning = true;
        worker.m_bThreadQuit = quitAt == 0;
        s_pQuitting = quitAt < 0 ? nullptr : &worker;
        s_dwQuitAfter = static_cast<useconds_t>(quitAt) * 1000;
        s_listSlept.clear();
        const bool bQuit = worker.WaitForSleep(mSec);
        s_pQuitting = nullptr;
        QTEST(s_listSlept, "slept");
        QCOMPARE(bQuit, quitAt >= 0);
        QCOMPARE(worker.m_bThreadQuit.load(), quitAt >= 0); // no flag is ever touched
        QVERIFY(worker.m_bTaskRunning);
    }
};

QTEST_MAIN(tst_UtilThreadBase)

#include "tst_UtilThreadBase.moc"
