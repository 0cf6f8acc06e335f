// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDir>

namespace {

const QString c_strProgramFolder = u"/tmp/app/"_s;
const QString c_strEntryName = u"vora-k507-tool-autostart.desktop"_s;
const QString c_strSource = c_strProgramFolder + c_strEntryName;
const QByteArray c_entry = "[Desktop Entry]\nType=Application\nExec=/opt/vora/tool -hide\n";

const QString c_strOK = u"确定"_s;
const QString c_strCancel = u"取消"_s;

QString AutoStartFolder()
{
    return QDir::homePath() + u"/.config/autostart"_s;
}

QString Target()
{
    return AutoStartFolder() + QLatin1Char('/') + c_strEntryName;
}

} // namespace

/// The settings window under mouse clicks, with the desktop entry beside the program and the user's autostart folder.
class tst_SettingsWindow : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY(QDir().mkpath(c_strProgramFolder));
        QVERIFY(QFile::copy(QStringLiteral(VORA_TOOL), c_strProgramFolder + u"VoraPrinterTool"_s));
    }

    void isFixedCentredAndLabelled()
    {
        QDir(AutoStartFolder()).removeRecursively();
        StartInTray();
        QVERIFY(Open()); // "设置", 400 x 300
        const Desktop::Window window = *m_tool->SettingsWindow();
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->SettingsWindow()), QPoint(440, 250));
        const QString strHints = Desktop::Property(window, u"WM_NORMAL_HINTS"_s);
        QVERIFY(strHints.contains(QLatin1String("minimum size: 400 by 300")));
        QVERIFY(strHints.contains(QLatin1String("maximum size: 400 by 300")));

        const QPoint origin = m_tool->SettingsWindow()->geometry.topLeft();
        const Accessibility& access = m_tool->Access();
        const QRect checkBox = access.Extents(*CheckBox()).translated(-origin); // no larger than its text
        QCOMPARE(checkBox.left(), 70);
        QVERIFY(QRect(70, 60, 130, 25).contains(checkBox));
        QCOMPARE(access.Names(m_tool->Class(), u"push button"_s), QStringList({c_strOK, c_strCancel}));
        const auto button = [&](const QString& strName) {
            return access.Extents(*access.Find(m_tool->Class(), u"push button"_s, strName)).translated(-origin);
        };
        QCOMPARE(button(c_strOK), QRect(70, 250, 80, 25));
        QCOMPARE(button(c_strCancel), QRect(250, 250, 80, 25));
    }

    void okTurnsAutoStartOnAndOff()
    {
        QDir(AutoStartFolder()).removeRecursively();
        QVERIFY(WriteFile(c_strSource, c_entry));
        StartInTray();
        QVERIFY(Open());
        QVERIFY(!IsChecked());
        QVERIFY(ToggleCheckBox());
        QVERIFY(!QFile::exists(Target())); // not before OK
        QVERIFY(Leave(c_strOK));
        QTRY_COMPARE(ReadFile(Target()), c_entry);

        QVERIFY(Open());
        QVERIFY(IsChecked());
        QVERIFY(ToggleCheckBox());
        QVERIFY(Leave(c_strOK));
        QTRY_VERIFY(!QFile::exists(Target()));
        QVERIFY(Open());
        QVERIFY(!IsChecked());
        QCOMPARE(ReadFile(c_strSource), c_entry);
    }

    void discardingLeavesTheFile_data()
    {
        QTest::addColumn<QString>("button");
        QTest::newRow("cancel") << c_strCancel;
        QTest::newRow("title bar") << QString();
    }

    void discardingLeavesTheFile()
    {
        QFETCH(QString, button);
        QVERIFY(WriteFile(c_strSource, c_entry));
        QVERIFY(WriteFile(Target(), "")); // counts whatever it holds
        StartInTray();
        QVERIFY(Open());
        QVERIFY(IsChecked());
        QVERIFY(ToggleCheckBox());
        QVERIFY(Leave(button));
        QVERIFY(Open());
        QVERIFY(IsChecked());
        QVERIFY(QFile::exists(Target()));

        QVERIFY(QFile::remove(Target()));
        QVERIFY(Leave(button)); // reads the folder anew
        QVERIFY(Open());
        QVERIFY(!IsChecked());
        QVERIFY(ToggleCheckBox());
        QVERIFY(Leave(button));
        QVERIFY(Open());
        QVERIFY(!IsChecked());
        QVERIFY(!QFile::exists(Target()));
    }

    void worksWhileTheMainWindowIsHidden()
    {
        StartInTray({u"-hide"_s});
        for (const QString& strButton : {QString(), c_strCancel, c_strOK}) {
            QVERIFY(Open());
            QVERIFY(!m_tool->MainWindow());
            QVERIFY(Leave(strButton)); // the last visible window
        }
        QVERIFY(Open()); // the program is still there
        QVERIFY(Leave(QString()));
        QVERIFY(m_tray->ShowWindow(*m_tool));
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

private:
    void StartInTray(const QStringList& listArgument = {})
    {
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        m_tool = std::make_unique<Tool>(c_strProgramFolder + u"VoraPrinterTool"_s);
        m_tool->Start(listArgument);
        QVERIFY(WaitForTrayIcon());
    }

    std::optional<AccessibleNode> CheckBox() const
    {
        return m_tool->Access().Find(m_tool->Class(), u"check box"_s, u"开机启动"_s);
    }

    bool IsChecked() const
    {
        const std::optional<AccessibleNode> box = CheckBox();
        return box && m_tool->Access().IsChecked(*box);
    }

    /// By the tray's menu.
    bool Open() const
    {
        return m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings) &&
               QTest::qWaitFor([this] { return m_tool->SettingsWindow() && CheckBox().has_value(); });
    }

    bool Click(const AccessibleNode& node) const
    {
        const std::optional<Desktop::Window> window = m_tool->SettingsWindow();
        if (window) {
            Desktop::Click(*window, m_tool->Access().Extents(node).center() - window->geometry.topLeft());
        }
        return window.has_value();
    }

    bool ToggleCheckBox() const
    {
        const bool bBefore = IsChecked();
        return Click(*CheckBox()) && QTest::qWaitFor([=] { return IsChecked() != bBefore; });
    }

    /// By a button or, when it has no name, by the title bar.
    bool Leave(const QString& strButton) const
    {
        if (strButton.isEmpty()) {
            Desktop::CloseWindow(*m_tool->SettingsWindow());
        } else {
            const auto button = m_tool->Access().Find(m_tool->Class(), u"push button"_s, strButton);
            if (!button || !Click(*button)) {
                return false;
            }
        }
        return QTest::qWaitFor([this] { return !m_tool->SettingsWindow(); });
    }
};

QTEST_GUILESS_MAIN(tst_SettingsWindow)

#include "tst_SettingsWindow.moc"
