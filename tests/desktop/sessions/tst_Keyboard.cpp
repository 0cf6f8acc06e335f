// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDBusMessage>

/// The windows without a mouse. The tray's menu: tst_Tray.
class tst_Keyboard : public DesktopTest
{
    Q_OBJECT

public slots:
    void Hear(const QDBusMessage& message)
    {
        if (message.arguments().value(1).toInt() == 1) {
            m_strFocus = m_tool->Access().Name({message.service(), message.path()});
        }
    }

private slots:
    void settingsAndTableAreReached()
    {
        m_tool->Access().HearFocus(this,
                                   SLOT(Hear(QDBusMessage))); // before the start: Qt 5 asks for listeners but once
        WriteReadyPrinters({u"Office"_s, u"Lab"_s});
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(1, 3), u"就绪"_s);
        QVERIFY(PressUntil(u"Down"_s, u"Lab"_s));
        QVERIFY(PressUntil(u"Right"_s, u"就绪"_s));
        HideWindow();

        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(m_tool->SettingsWindow());
        QTRY_COMPARE(Desktop::ActiveWindow(), m_tool->SettingsWindow()->strId);
        const auto isChecked = [this] {
            const auto box = m_tool->Access().Find(m_tool->Class(), u"check box"_s, u"开机启动"_s);
            return box && m_tool->Access().IsChecked(*box);
        };
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

    void messageBoxIsLeftByEnter()
    {
        StartWithTray();
        Tool second;
        second.Start();
        const auto box = [&] { return second.Access().Find(second.Class(), u"push button"_s, u"确  定"_s); };
        QTRY_VERIFY(box());
        QTRY_VERIFY(!Desktop::ActiveWindow().isEmpty() && Desktop::ActiveWindow() != m_tool->MainWindow()->strId);
        Desktop::PressKey(u"Return"_s);
        QVERIFY(second.Process().waitForFinished(5000));
        QCOMPARE(second.Process().exitCode(), 0);
    }

private:
    bool PressUntil(const QString& strKey, const QString& strName)
    {
        for (int i = 0; i < 8 && m_strFocus != strName; ++i) {
            Desktop::PressKey(strKey);
            (void)QTest::qWaitFor([&] { return m_strFocus == strName; }, 500);
        }
        return m_strFocus == strName;
    }

    QString m_strFocus; ///< the name of what has the keyboard, as a screen reader says it
};

QTEST_GUILESS_MAIN(tst_Keyboard)

#include "tst_Keyboard.moc"
