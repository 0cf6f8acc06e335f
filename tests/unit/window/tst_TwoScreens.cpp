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
};

QTEST_MAIN(tst_TwoScreens)

#include "tst_TwoScreens.moc"
