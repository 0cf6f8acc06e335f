// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// Screens that change while the program runs.
class tst_Screens : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QString strMode = u"640x480"_s;
        Desktop::Run(u"xrandr"_s,
                     (u"--newmode "_s + strMode + u" 25 640 640 640 640 480 480 480 480"_s).split(QLatin1Char(' ')));
        Desktop::Run(u"xrandr"_s, {u"--addmode"_s, u"screen"_s, strMode});
    }

    void windowIsReachableOnASmallerScreen_data()
    {
        QTest::addColumn<bool>("hidden");
        QTest::newRow("shown") << false;
        QTest::newRow("hidden") << true;
    }

    void windowIsReachableOnASmallerScreen()
    {
        QFETCH(bool, hidden);
        QVERIFY(SetScreen({1280, 800})); // as the display begins
        StartWithTray();
        Desktop::Run(u"xdotool"_s, {u"windowmove"_s, m_tool->MainWindow()->strId, u"700"_s, u"640"_s});
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->MainWindow()), QPoint(700, 640));
        if (hidden) {
            HideWindow();
        }
        QVERIFY(SetScreen({640, 480}));
        if (hidden) {
            QVERIFY(WaitForTrayIcon());
            QVERIFY(m_tray->ShowWindow(*m_tool));
        }
        const auto isReachable = [this] {
            const QPoint frame = Desktop::FramePosition(*m_tool->MainWindow());
            return frame.x() <= 540 && frame.y() >= 0 && frame.y() <= 470;
        };
        QTRY_VERIFY(isReachable());
        QVERIFY(SetScreen({1280, 800}));
        QTRY_VERIFY(isReachable());
        QVERIFY(WaitForTrayIcon());
        ExitByMenu();
    }

private:
    /// A second screen is a larger display here: the window stands in its lower right corner when it goes.
    bool SetScreen(QSize size) const
    {
        const QString strSize = u"%1x%2"_s.arg(size.width()).arg(size.height());
        Desktop::Run(u"xrandr"_s, {u"--output"_s, u"screen"_s, u"--mode"_s, strSize});
        return QTest::qWaitFor(
            [&] { return Desktop::Run(u"xwininfo"_s, {u"-root"_s}).contains(u"geometry "_s + strSize); });
    }
};

QTEST_GUILESS_MAIN(tst_Screens)

#include "tst_Screens.moc"
