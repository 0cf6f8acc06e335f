// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDBusMessage>

/// The icon's menu in the trays of three desktops.
class tst_TrayMenu : public DesktopTest
{
    Q_OBJECT

public slots:
    void Hear(const QDBusMessage& message)
    {
        const QString strName = m_tool->Access().Name({message.service(), message.path()});
        const bool bGained = message.arguments().value(1).toInt() == 1;
        if (bGained && !strName.isEmpty()) {
            m_listHeard.append(strName);
        }
    }

private slots:
    void menuDoesWhatItSays_data() { AddTrayHosts(); }
    void menuDoesWhatItSays()
    {
        m_tool->Access().HearFocus(this,
                                   SLOT(Hear(QDBusMessage))); // before the start: Qt 5 asks for listeners but once
        m_listHeard.clear();
        StartWithRowsTray();
        Tool& tool = *m_tool;
        QVERIFY(m_tray->OpenMenu(tool));
        // A key may come before the menu listens, hence once round until the last entry, which the first one follows.
        for (int i = 0; i < 10 && !m_listHeard.contains(u"退出"_s); ++i) {
            PressDown();
        }
        m_listHeard.clear();
        for (int i = 0; i < 4; ++i) {
            PressDown();
        }
        QTRY_COMPARE(m_listHeard, (QStringList{u"显示主界面"_s, u"打印机更新助手"_s, u"设置"_s, u"退出"_s}));
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

private:
    void PressDown() const
    {
        const auto iHeard = m_listHeard.size();
        Desktop::PressKey(u"Down"_s);
        [[maybe_unused]] const bool bHeard = QTest::qWaitFor([&] { return m_listHeard.size() > iHeard; }, 1000);
    }

    QStringList m_listHeard; ///< what a screen reader would say
};

QTEST_GUILESS_MAIN(tst_TrayMenu)

#include "tst_TrayMenu.moc"
