// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilWindow.h"

#include "TestFiles.h"

#include <QApplication>
#include <QScreen>
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

int main(int argc, char** argv)
{
    if (!WriteFile(u"/tmp/screens.json"_s,
                   R"({"screens": [{"name": "left", "x": 0, "y": 0, "width": 1280, "height": 800, "dpr": 1},
                                   {"name": "right", "x": 1280, "y": 0, "width": 1024, "height": 600, "dpr": 1}]})")) {
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=/tmp/screens.json");
    const QApplication application(argc, argv);
    tst_TwoScreens test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_TwoScreens.moc"
