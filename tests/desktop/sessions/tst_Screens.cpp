// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// Screens of any size and scale, and screens that change while the program runs. The display is as large as the
/// largest of them, 1920 x 1080.
class tst_Screens : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (const QString& strSize : {u"1366 768"_s, u"1280 800"_s, u"800 480"_s, u"640 480"_s}) {
            const QString strMode =
                u"xrandr --newmode %1x%2 25 %1 %1 %1 %1 %2 %2 %2 %2; xrandr --addmode screen %1x%2"_s;
            Shell(strMode.arg(strSize.section(QLatin1Char(' '), 0, 0), strSize.section(QLatin1Char(' '), 1)));
        }
    }

    void windowIsReachableOnWhatIsLeft_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("more");
        QTest::addColumn<QString>("less");
        QTest::addColumn<bool>("hidden");
        const QString strHalf = u"xrandr --output screen --mode 640x480"_s;
        QTest::newRow("resolution halved, window shown") << QString() << QString() << strHalf << false;
        QTest::newRow("resolution halved, window hidden") << QString() << QString() << strHalf << true;
        QTest::newRow("another screen, halved") << u"xrandr --setmonitor left 640/1x480/1+0+0 screen"_s
                                                << u"xrandr --delmonitor left"_s << strHalf << false;
#ifndef VORA_HAS_TEXT_CODEC // Qt 5 knows no monitor without an output of its own, of which the server has but one
        QTest::newRow("second screen plugged in and out")
            << u"xrandr --fb 1280x800 --output screen --mode 640x480"_s
            << u"xrandr --setmonitor right 640/1x800/1+640+0 none"_s << u"xrandr --delmonitor right"_s << false;
#endif
    }

    void windowIsReachableOnWhatIsLeft()
    {
        QFETCH(QString, start);
        QFETCH(QString, more);
        QFETCH(QString, less);
        QFETCH(bool, hidden);
        QVERIFY(SetScreen(u"1280x800"_s));
        Shell(start);
        StartWithTray();
        Shell(more);
        QCOMPARE(m_tool->RowCount(), 0); // when it answers, it has seen that
        Desktop::Run(u"xdotool"_s, {u"windowmove"_s, m_tool->MainWindow()->strId, u"700"_s, u"640"_s});
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->MainWindow()), QPoint(700, 640));
        if (hidden) {
            HideWindow();
        }
        Shell(less);
        if (hidden) {
            QVERIFY(WaitForTrayIcon());
            QVERIFY(m_tray->ShowWindow(*m_tool));
        }
        QTRY_VERIFY(IsReachable(*m_tool->MainWindow(), {640, 480}));
        QVERIFY(SetScreen(u"1280x800"_s));
        QTRY_VERIFY(IsReachable(*m_tool->MainWindow(), {640, 480}));
        QVERIFY(WaitForTrayIcon());
        ExitByMenu();
    }

    void scaledWindowIsWholeOrReachable_data()
    {
        QTest::addColumn<double>("scale");
        QTest::addColumn<QSize>("screen");
        QTest::addColumn<bool>("whole");
        QTest::newRow("1.5, just large enough") << 1.5 << QSize(1366, 768) << true;
        QTest::newRow("1.5, just too small") << 1.5 << QSize(1280, 800) << false;
        QTest::newRow("2, large enough") << 2.0 << QSize(1920, 1080) << true;
        QTest::newRow("2, too narrow") << 2.0 << QSize(1280, 800) << false;
        QTest::newRow("2, too low as well") << 2.0 << QSize(800, 480) << false;
    }

    void scaledWindowIsWholeOrReachable()
    {
        QFETCH(double, scale);
        QFETCH(QSize, screen);
        QFETCH(bool, whole);
        QVERIFY(SetScreen(u"%1x%2"_s.arg(screen.width()).arg(screen.height())));
        qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
        m_tool->Start();
        qunsetenv("QT_SCALE_FACTOR");
        const QSize size = QSize(860, 300) * scale;
        const auto window = [&] { return Desktop::FindWindow(m_tool->Class(), u"星原喷墨打印机助手"_s, size, size); };
        QTRY_VERIFY(window());
        QTRY_VERIFY(IsReachable(*window(), screen));
        QCOMPARE(QRect({}, screen).contains(window()->geometry), whole);
    }

    /// A larger text alone is cut in its cell, whose width is fixed.
    void largerTextIsWholeInItsToolTip()
    {
        QVERIFY(SetScreen(u"1280x800"_s));
        WriteReadyPrinters({u"Office"_s});
        qputenv("QT_FONT_DPI", "144");
        qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
        m_tool->Start();
        qunsetenv("QT_FONT_DPI");
        qunsetenv("QT_ENABLE_HIGHDPI_SCALING");
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        const Accessibility& access = m_tool->Access();
        const QRect cell = access.Cell(0, 2).Extents();
        QCOMPARE(cell.width(), 344); // and the grid's line
        AccessibleNode tip;
        QTRY_VERIFY((Desktop::MoveMouse(cell.center()), tip = access.Find(u"tool tip"_s)));
        QCOMPARE(tip.Name(), u"青色：高   红色：中   黄色：较低   黑色：低"_s);
        const QRect extents = tip.Extents();
        QVERIFY(extents.width() > cell.width());
        QVERIFY(QRect(0, 0, 1280, 800).contains(extents));
    }

private:
    static void Shell(const QString& strCommand)
    {
        Desktop::Run(u"sh"_s, {u"-c"_s, strCommand});
    }

    /// Gives the display's one output a mode, and waits until the window manager knows.
    bool SetScreen(const QString& strMode) const
    {
        Shell(u"xrandr --output screen --mode "_s + strMode);
        const QString strSize = QString(strMode).replace(QLatin1Char('x'), u", "_s);
        return QTest::qWaitFor([&] {
            return Desktop::Run(u"xprop"_s, {u"-root"_s, u"_NET_DESKTOP_GEOMETRY"_s}).contains(strSize);
        });
    }

    /// Whether the title bar can be taken hold of.
    static bool IsReachable(const Desktop::Window& window, QSize screen)
    {
        const QRect bar(Desktop::FramePosition(window), QSize(window.geometry.width(), 20));
        const QRect seen = bar & QRect({}, screen);
        return seen.height() == bar.height() && seen.width() >= 100;
    }
};

QTEST_GUILESS_MAIN(tst_Screens)

#include "tst_Screens.moc"
