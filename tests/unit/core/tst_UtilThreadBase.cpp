// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilThreadBase.h"

#include <QtTest>

#include <chrono>
#include <limits>
#include <thread>
#include <vector>

#include <unistd.h>

Q_DECLARE_METATYPE(std::vector<useconds_t>)

namespace {

std::vector<useconds_t> s_listSlept;

/// Sets the quit flag from another thread some time after its making.
class QuitLater
{
public:
    QuitLater(UtilThreadBase& worker, int iMSec)
        : m_thread([&worker, iMSec] {
            std::this_thread::sleep_for(std::chrono::milliseconds(iMSec));
            worker.m_bThreadQuit = true;
        })
    {
    }
    ~QuitLater() { m_thread.join(); }
    QuitLater(const QuitLater&) = delete;
    QuitLater& operator=(const QuitLater&) = delete;

private:
    std::thread m_thread;
};

} // namespace

/// Stands for the C library's function of that name.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names it otherwise
int usleep(useconds_t dwMicroSec)
{
    s_listSlept.push_back(dwMicroSec);
    std::this_thread::sleep_for(std::chrono::microseconds(dwMicroSec));
    return 0;
}

class tst_UtilThreadBase : public QObject
{
    Q_OBJECT

private slots:
    void startsWithBothFlagsClear();
    void keepsItsParent();
    void metaObjectOnlyNamesTheClass();
    void zeroAndNegativeReturnAtOnce_data();
    void zeroAndNegativeReturnAtOnce();
    void sleepsSlicesAndRemainder_data();
    void sleepsSlicesAndRemainder();
    void slicesHaveTheirLength_data();
    void slicesHaveTheirLength();
    void quitWhileSleeping_data();
    void quitWhileSleeping();
    void quitBeforeSleeping_data();
    void quitBeforeSleeping();
    void neverTouchesTheFlags();
};

void tst_UtilThreadBase::startsWithBothFlagsClear()
{
    const UtilThreadBase worker;
    QVERIFY(!worker.m_bTaskRunning);
    QVERIFY(!worker.m_bThreadQuit);
    QCOMPARE(worker.parent(), nullptr);
}

void tst_UtilThreadBase::keepsItsParent()
{
    QObject parent;
    const auto worker = new UtilThreadBase(&parent);
    QCOMPARE(worker->parent(), &parent);
}

void tst_UtilThreadBase::metaObjectOnlyNamesTheClass()
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

void tst_UtilThreadBase::zeroAndNegativeReturnAtOnce_data()
{
    QTest::addColumn<int>("mSec");
    QTest::addColumn<bool>("quit");
    for (const int iMSec : {0, -1, -499, -500, -501, -1200, -3000, std::numeric_limits<int>::min()}) {
        QTest::addRow("%d", iMSec) << iMSec << false;
        QTest::addRow("%d after a quit", iMSec) << iMSec << true;
    }
}

void tst_UtilThreadBase::zeroAndNegativeReturnAtOnce()
{
    QFETCH(const int, mSec);
    QFETCH(const bool, quit);
    UtilThreadBase worker;
    worker.m_bThreadQuit = quit;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(worker.WaitForSleep(mSec), quit);
    QVERIFY2(timer.elapsed() < 400, qPrintable(QString::number(timer.elapsed())));
}

void tst_UtilThreadBase::sleepsSlicesAndRemainder_data()
{
    QTest::addColumn<int>("mSec");
    QTest::newRow("remainder alone") << 1;
    QTest::newRow("longest remainder") << 499;
    QTest::newRow("one slice") << 500;
    QTest::newRow("one slice and the shortest remainder") << 501;
    QTest::newRow("two slices and a remainder") << 1200;
}

void tst_UtilThreadBase::sleepsSlicesAndRemainder()
{
    QFETCH(const int, mSec);
    UtilThreadBase worker;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!worker.WaitForSleep(mSec));
    const qint64 iElapsed = timer.elapsed();
    QVERIFY2(iElapsed >= mSec, qPrintable(QString::number(iElapsed)));
    QVERIFY2(iElapsed < mSec + 450, qPrintable(QString::number(iElapsed)));
}

void tst_UtilThreadBase::slicesHaveTheirLength_data()
{
    using List = std::vector<useconds_t>;
    QTest::addColumn<int>("mSec");
    QTest::addColumn<List>("slept");
    QTest::newRow("nothing") << 0 << List{};
    QTest::newRow("remainder alone") << 3 << List{3000};
    QTest::newRow("one slice") << 500 << List{500000};
    QTest::newRow("two slices and a remainder") << 1001 << List{500000, 500000, 1000};
}

void tst_UtilThreadBase::slicesHaveTheirLength()
{
    QFETCH(const int, mSec);
    s_listSlept.clear();
    QVERIFY(!UtilThreadBase().WaitForSleep(mSec));
    QTEST(s_listSlept, "slept");
}

void tst_UtilThreadBase::quitWhileSleeping_data()
{
    QTest::addColumn<int>("mSec");
    QTest::addColumn<int>("quitAt");
    QTest::addColumn<int>("atLeast");
    QTest::addColumn<int>("below");
    QTest::newRow("remainder alone is not cut short") << 499 << 50 << 499 << 900;
    QTest::newRow("first of two slices") << 1200 << 50 << 500 << 1000;
    QTest::newRow("first of two slices, no remainder after it") << 1499 << 50 << 500 << 999;
    QTest::newRow("second of six slices") << 3000 << 700 << 1000 << 1500;
    QTest::newRow("last slice") << 500 << 50 << 500 << 950;
    QTest::newRow("last slice, remainder is slept all the same") << 900 << 50 << 900 << 1350;
    QTest::newRow("remainder after a slice") << 900 << 600 << 900 << 1350;
}

void tst_UtilThreadBase::quitWhileSleeping()
{
    QFETCH(const int, mSec);
    QFETCH(const int, quitAt);
    QFETCH(const int, atLeast);
    QFETCH(const int, below);
    UtilThreadBase worker;
    QElapsedTimer timer;
    timer.start();
    const QuitLater quit(worker, quitAt);
    QVERIFY(worker.WaitForSleep(mSec));
    const qint64 iElapsed = timer.elapsed();
    QVERIFY2(iElapsed >= atLeast, qPrintable(QString::number(iElapsed)));
    QVERIFY2(iElapsed < below, qPrintable(QString::number(iElapsed)));
}

void tst_UtilThreadBase::quitBeforeSleeping_data()
{
    QTest::addColumn<int>("mSec");
    QTest::addColumn<int>("atLeast");
    QTest::addColumn<int>("below");
    QTest::newRow("one slice") << 500 << 0 << 400;
    QTest::newRow("slice and remainder") << 999 << 0 << 400;
    QTest::newRow("six slices") << 3000 << 0 << 400;
    QTest::newRow("remainder alone is slept") << 499 << 499 << 950;
}

void tst_UtilThreadBase::quitBeforeSleeping()
{
    QFETCH(const int, mSec);
    QFETCH(const int, atLeast);
    QFETCH(const int, below);
    UtilThreadBase worker;
    worker.m_bThreadQuit = true;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(worker.WaitForSleep(mSec));
    const qint64 iElapsed = timer.elapsed();
    QVERIFY2(iElapsed >= atLeast, qPrintable(QString::number(iElapsed)));
    QVERIFY2(iElapsed < below, qPrintable(QString::number(iElapsed)));
}

void tst_UtilThreadBase::neverTouchesTheFlags()
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

QTEST_MAIN(tst_UtilThreadBase)

#include "tst_UtilThreadBase.moc"
