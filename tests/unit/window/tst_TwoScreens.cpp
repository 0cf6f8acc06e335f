// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include <QScreen>
#include <QWidget>
#include <QtTest>

/// A window on a desktop of two screens, one beside the other.
class tst_TwoScreens : public QObject
{
    Q_OBJECT

private slots:
    void windowIsInTheMiddleOfBoth()
    {
        QCOMPARE(QGuiApplication::screens().size(), 2);
        QWidget window;
        window.resize(860, 300);
        SetUpFixedWindow(window, QString());
        QCOMPARE(window.pos(), QPoint(722, 250)); // (1280 + 1024 - 860) / 2, (800 - 300) / 2
    }

    void windowOutOfReachComesBack_data()
    {
        QTest::addColumn<QRect>("before");
        QTest::addColumn<QPoint>("after");
        QTest::newRow("just in reach on the right") << QRect(2224, 40, 860, 300) << QPoint(2224, 40);
        QTest::newRow("right") << QRect(2225, 40, 860, 300) << QPoint(230, 290);
        QTest::newRow("just in reach on the left") << QRect(-740, 40, 860, 300) << QPoint(-740, 40);
        QTest::newRow("left") << QRect(-741, 40, 860, 300) << QPoint(230, 290);
        QTest::newRow("just in reach below") << QRect(20, 832, 860, 300) << QPoint(20, 832);
        QTest::newRow("below") << QRect(20, 833, 860, 300) << QPoint(230, 290);
        QTest::newRow("above") << QRect(20, 39, 860, 300) << QPoint(230, 290);
        QTest::newRow("narrow, in reach") << QRect(2264, 40, 60, 40) << QPoint(2264, 40);
        QTest::newRow("narrow, out of reach") << QRect(2265, 40, 60, 40) << QPoint(630, 420);
        QTest::newRow("larger than the screen") << QRect(2225, 40, 2000, 900) << QPoint(20, 40);
    }

    /// To the middle of the primary screen.
    void windowOutOfReachComesBack()
    {
        QFETCH(QRect, before);
        QFETCH(QPoint, after);
        QWidget window;
        window.setGeometry(before);
        BringToScreen(window);
        QCOMPARE(window.pos(), after);
    }

    void addedScreenIsFollowed()
    {
        QWidget window;
        window.resize(860, 300);
        SetUpFixedWindow(window, QString());
        QScreen* pScreen = QGuiApplication::screens().last();
        QVERIFY(pScreen->disconnect(&window)); // as one that has not been there
        emit qGuiApp->screenAdded(pScreen);
        window.move(20, 39);
        emit pScreen->geometryChanged(pScreen->geometry());
        QTRY_COMPARE(window.pos(), QPoint(230, 290));
    }
};

QTEST_MAIN(tst_TwoScreens)

#include "tst_TwoScreens.moc"
