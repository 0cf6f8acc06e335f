// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// Screens that change while the program runs.
class tst_Screens : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void windowIsReachableOnASmallerScreen_data();
    void windowIsReachableOnASmallerScreen();

private:
    bool SetScreen(QSize size) const;
};

/// A second screen is a larger display here: the window stands in its lower right corner when it goes.
bool tst_Screens::SetScreen(QSize size) const
{
    const QString strSize = QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
    Desktop::Run(QStringLiteral("xrandr"),
                 {QStringLiteral("--output"), QStringLiteral("screen"), QStringLiteral("--mode"), strSize});
    return QTest::qWaitFor([&] {
        return Desktop::Run(QStringLiteral("xwininfo"), {QStringLiteral("-root")})
            .contains(QStringLiteral("geometry ") + strSize);
    });
}

void tst_Screens::initTestCase()
{
    const QString strMode = QStringLiteral("640x480");
    Desktop::Run(QStringLiteral("xrandr"),
                 (QStringLiteral("--newmode ") + strMode + QStringLiteral(" 25 640 640 640 640 480 480 480 480"))
                     .split(QLatin1Char(' ')));
    Desktop::Run(QStringLiteral("xrandr"), {QStringLiteral("--addmode"), QStringLiteral("screen"), strMode});
}

void tst_Screens::windowIsReachableOnASmallerScreen_data()
{
    QTest::addColumn<bool>("hidden");
    QTest::newRow("shown") << false;
    QTest::newRow("hidden") << true;
}

void tst_Screens::windowIsReachableOnASmallerScreen()
{
    QFETCH(bool, hidden);
    QVERIFY(SetScreen({1280, 800})); // as the display begins
    StartWithTray();
    Desktop::Run(QStringLiteral("xdotool"), {QStringLiteral("windowmove"), m_tool->MainWindow()->strId,
                                             QStringLiteral("700"), QStringLiteral("640")});
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

QTEST_GUILESS_MAIN(tst_Screens)

#include "tst_Screens.moc"
