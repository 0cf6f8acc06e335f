// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

namespace {

const QString c_strProgramFolder = u"/tmp/app/"_s;
const QString c_strEntryName = u"vora-k507-tool-autostart.desktop"_s;
const QByteArray c_entry = "[Desktop Entry]\nType=Application\nExec=/opt/vora/tool -hide\n";

const QString c_strOK = u"确定"_s;
const QString c_strCancel = u"取消"_s;

QString Target()
{
    return QDir::homePath() + u"/.config/autostart/"_s + c_strEntryName;
}

} // namespace

/// The settings window under mouse clicks, with the desktop entry beside the program and the user's autostart folder.
class tst_SettingsWindow : public DesktopTest
{
    Q_OBJECT

private slots:
    /// While the main window is hidden, so that each time the program's last visible window closes.
    void turnsAutoStartOnAndOffWhenOkIsClicked()
    {
        QVERIFY(WriteFile(c_strProgramFolder + c_strEntryName, c_entry));
        QVERIFY(QFile::copy(QStringLiteral(VORA_TOOL), c_strProgramFolder + u"VoraPrinterTool"_s));
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        m_tool = std::make_unique<Tool>(c_strProgramFolder + u"VoraPrinterTool"_s);
        m_tool->Start({u"-hide"_s});
        QVERIFY(WaitForTrayIcon());
        QVERIFY(Open());
        QVERIFY(!m_tool->MainWindow());
        // "设置", 400 x 300 and in the middle of the screen
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->SettingsWindow()), QPoint(440, 250));
        const QString strHints = Desktop::Property(*m_tool->SettingsWindow(), u"WM_NORMAL_HINTS"_s);
        QVERIFY(strHints.contains(QLatin1String("minimum size: 400 by 300")));
        QVERIFY(strHints.contains(QLatin1String("maximum size: 400 by 300")));

        QVERIFY(!IsChecked());
        QVERIFY(ToggleCheckBox());
        QVERIFY(!QFile::exists(Target())); // not before OK
        QVERIFY(Leave(c_strOK));
        QTRY_COMPARE(ReadFile(Target()), c_entry);
        for (const QString& strButton : {c_strCancel, QString()}) {
            QVERIFY(Open());
            QVERIFY(IsChecked());
            QVERIFY(ToggleCheckBox());
            QVERIFY(Leave(strButton));
            QCOMPARE(ReadFile(Target()), c_entry);
        }
        QVERIFY(Open());
        QVERIFY(ToggleCheckBox());
        QVERIFY(Leave(c_strOK));
        QTRY_VERIFY(!QFile::exists(Target()));

        QVERIFY(WriteFile(Target(), "")); // counts whatever it holds
        QVERIFY(Open());
        QVERIFY(IsChecked());
        QVERIFY(Leave(c_strCancel));
        QCOMPARE(ReadFile(c_strProgramFolder + c_strEntryName), c_entry);
        QVERIFY(!m_tool->MainWindow());
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }

private:
    AccessibleNode CheckBox() const { return m_tool->Access().Find(u"check box"_s, u"开机启动"_s); }
    bool IsChecked() const { return CheckBox().IsChecked(); }

    /// By the tray's menu.
    bool Open() const
    {
        return m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings) &&
               QTest::qWaitFor([this] { return m_tool->SettingsWindow() && CheckBox(); });
    }

    void Click(const AccessibleNode& node) const
    {
        const Desktop::Window window = *m_tool->SettingsWindow();
        Desktop::Click(window, node.Extents().center() - window.geometry.topLeft());
    }

    bool ToggleCheckBox() const
    {
        const bool bBefore = IsChecked();
        Click(CheckBox());
        return QTest::qWaitFor([=] { return IsChecked() != bBefore; });
    }

    /// By a button or, when it has no name, by the title bar.
    bool Leave(const QString& strButton) const
    {
        if (strButton.isEmpty()) {
            Desktop::CloseWindow(*m_tool->SettingsWindow());
        } else {
            Click(m_tool->Access().Find(u"push button"_s, strButton));
        }
        return QTest::qWaitFor([this] { return !m_tool->SettingsWindow(); });
    }
};

QTEST_GUILESS_MAIN(tst_SettingsWindow)

#include "tst_SettingsWindow.moc"
