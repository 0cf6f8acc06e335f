// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QScopeGuard>

/// The icon and its menu in the trays of three desktops, and a desktop without one.
class tst_Tray : public DesktopTest
{
    Q_OBJECT

private slots:
    void clickShowsTheWindow_data()
    {
        menuDoesWhatItSays_data();
        QTest::newRow("trayer") << TrayHost::enTrayer;
    }

    void clickShowsTheWindow()
    {
        QFETCH(const TrayHost::enKind, kind);
        StartWithTray(kind);
        const Tool& tool = *m_tool;
        QTRY_COMPARE(Desktop::ActiveWindow(), WindowId());

        // The active window stays as it is. A window that is shown anew would have another id.
        const QString strId = WindowId();
        m_tray->ClickIcon(tool);
        LetClicksArrive();
        QCOMPARE(WindowId(), strId);

        HideWindow();
        QVERIFY(m_tray->ShowWindow(tool));
        QTRY_COMPARE(Desktop::ActiveWindow(), WindowId());

        const auto iWindows = Desktop::Stacking().size();
        QProcess cover;
        const auto uncover = qScopeGuard([&] {
            cover.kill();
            cover.waitForFinished();
        });
        cover.start(u"xev"_s, {u"-geometry"_s, u"1000x500+140+150"_s, u"-name"_s, u"cover"_s});
        QTRY_VERIFY(Desktop::Stacking().size() > iWindows);
        QTRY_VERIFY(!QStringList({QString(), WindowId()}).contains(Desktop::ActiveWindow()));
        const QString strCover = Desktop::ActiveWindow();
        QVERIFY(Desktop::Stacking().indexOf(strCover) > Desktop::Stacking().indexOf(WindowId()));
        QVERIFY(m_tray->ClickIconUntil(tool, [&] { return Desktop::ActiveWindow() == WindowId(); }));
        QTRY_VERIFY(Desktop::Stacking().indexOf(WindowId()) > Desktop::Stacking().indexOf(strCover));

        HideWindow();
        m_tray->ClickIcon(tool, Desktop::enButtonLeft, 2);
        LetClicksArrive();
        QTRY_VERIFY(tool.MainWindow());

        m_tray->Kill();
        QTRY_VERIFY(!m_tray->HasIcon(tool));
        QVERIFY(tool.MainWindow());
        HideWindow();
        QVERIFY(m_tray->Start());
        QVERIFY(WaitForTrayIcon());
        QVERIFY(m_tray->ShowWindow(tool));
    }

    void menuDoesWhatItSays_data()
    {
        QTest::addColumn<TrayHost::enKind>("kind"); // trayer's menu is the same window of ours as tint2's
        QTest::newRow("tint2") << TrayHost::enTint2;
        QTest::newRow("xfce4-panel") << TrayHost::enXfcePanel;
    }
    void menuDoesWhatItSays()
    {
        m_tool->Access().HearFocus();
        QStringList& listHeard = m_tool->Access().m_listHeard;
        QFETCH(const TrayHost::enKind, kind);
        StartWithTray(kind);
        Tool& tool = *m_tool;
        QVERIFY(m_tray->OpenMenu(tool));
        // A key may come before the menu listens, hence once round until the last entry, which the first one follows.
        for (int i = 0; i < 10 && !listHeard.contains(u"退出"_s); ++i) {
            PressDown();
        }
        listHeard.clear();
        for (int i = 0; i < 4; ++i) {
            PressDown();
        }
        QTRY_COMPARE(listHeard, (QStringList{u"显示主界面"_s, u"打印机更新助手"_s, u"设置"_s, u"退出"_s}));
        Desktop::PressKey(u"Escape"_s);
        QTRY_VERIFY(!m_tray->Menu(tool));

        HideWindow();
        QVERIFY(m_tray->ChooseFromMenu(tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(tool.SettingsWindow());
        QVERIFY(!tool.MainWindow());
        Desktop::CloseWindow(*tool.SettingsWindow());
        QTRY_VERIFY(!tool.SettingsWindow());

        // The last visible window is closed, yet the program lives on.
        QVERIFY(m_tray->ChooseFromMenu(tool, TrayHost::enMenuMainWindow));
        QTRY_VERIFY(tool.MainWindow());
        ExitByMenu();
        QVERIFY(!m_tray->HasIcon(tool));
    }

    void runsWithoutATray()
    {
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QVERIFY(!m_tool->TrayIcon());
        WriteStatus(u"Office"_s, Reply(0x00, {0x6100}));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"进纸托盘处无纸,请放入纸张"_s);
        QVERIFY(!m_tool->Popup());
        WriteStatus(u"Office"_s, Reply());
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
    }

private:
    /// Returns when the program has met all earlier clicks: it has opened its menu after them.
    void LetClicksArrive() const
    {
        QVERIFY(m_tray->OpenMenu(*m_tool));
        Desktop::PressKey(u"Escape"_s);
        QTRY_VERIFY(!m_tray->Menu(*m_tool));
    }

    void PressDown() const
    {
        const QStringList& listHeard = m_tool->Access().m_listHeard;
        const auto iHeard = listHeard.size();
        Desktop::PressKey(u"Down"_s);
        (void)QTest::qWaitFor([&] { return listHeard.size() > iHeard; }, 1000);
    }

    QString WindowId() const { return m_tool->MainWindow().value_or(Desktop::Window()).strId; }
};

QTEST_GUILESS_MAIN(tst_Tray)

#include "tst_Tray.moc"
