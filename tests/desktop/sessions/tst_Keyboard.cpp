// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// The windows without a mouse. The tray's menu: tst_Tray. The second copy's message: tst_SecondCopy.
class tst_Keyboard : public DesktopTest
{
    Q_OBJECT

private slots:
    void settingsAndTableAreReached()
    {
        m_tool->Access().HearFocus();
        WriteReadyPrinters({u"Office"_s, u"Lab"_s});
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(1, 3), u"就绪"_s);
        QVERIFY(PressUntil(u"Down"_s, u"Lab"_s));
        QVERIFY(PressUntil(u"Right"_s, u"就绪"_s));
        HideWindow();

        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(m_tool->SettingsWindow());
        QTRY_COMPARE(Desktop::ActiveWindow(), m_tool->SettingsWindow()->strId);
        const auto isChecked = [this] { return m_tool->Access().Find(u"check box"_s, u"开机启动"_s).IsChecked(); };
        QVERIFY(PressUntil(u"Tab"_s, u"确定"_s));
        QVERIFY(PressUntil(u"Tab"_s, u"取消"_s));
        QVERIFY(PressUntil(u"Tab"_s, u"开机启动"_s));
        QVERIFY(!isChecked());
        Desktop::PressKey(u"space"_s);
        QTRY_VERIFY(isChecked());
        QVERIFY(PressUntil(u"Tab"_s, u"取消"_s));
        Desktop::PressKey(u"space"_s);
        QTRY_VERIFY(!m_tool->SettingsWindow());
    }

private:
    bool PressUntil(const QString& strKey, const QString& strName)
    {
        const auto hasFocus = [&] { return m_tool->Access().m_listHeard.endsWith(strName); };
        for (int i = 0; i < 8 && !hasFocus(); ++i) {
            Desktop::PressKey(strKey);
            (void)QTest::qWaitFor(hasFocus, 500);
        }
        return hasFocus();
    }
};

QTEST_GUILESS_MAIN(tst_Keyboard)

#include "tst_Keyboard.moc"
