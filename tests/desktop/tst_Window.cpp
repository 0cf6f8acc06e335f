// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <algorithm>

namespace {

const QString c_strLongError = u"纸张尺寸不匹配，请选择匹配的纸张，按OK键取消任务"_s;

} // namespace

/// The main window as the window manager and the user's eye find it.
class tst_Window : public DesktopTest
{
    Q_OBJECT

private slots:
    void isFixedAndInTheMiddleOfTheScreen()
    {
        WriteReadyPrinters({u"Office"_s});
        StartWithTray();
        const Desktop::Window window = *m_tool->MainWindow();           // with the title, of 860 x 300
        QTRY_COMPARE(Desktop::FramePosition(window), QPoint(210, 250)); // (1280 - 860) / 2, (800 - 300) / 2
        QVERIFY(Desktop::Property(window, u"_NET_WM_NAME"_s).contains(u"星原喷墨打印机助手"_s));
        const QString strHints = Desktop::Property(window, u"WM_NORMAL_HINTS"_s);
        QVERIFY(strHints.contains(QLatin1String("minimum size: 860 by 300")));
        QVERIFY(strHints.contains(QLatin1String("maximum size: 860 by 300")));
        QVERIFY(!HasMaximiseButton());
        TryToResize();

        // The close button hides it; what it shows is followed all the same.
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        HideWindow();
        WriteStatus(u"Office"_s, Reply(0x11));
        QVERIFY(m_tray->ShowWindow(*m_tool));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在扫描"_s);
        QVERIFY(HasMaximiseButton());
        TryToResize();
    }

    void hideSwitch()
    {
        m_tool->Start({u"--hide"_s, u"-hidden"_s, u"-hid"_s, u"hide"_s, u" -hide"_s, QString()});
        QTRY_VERIFY(m_tool->MainWindow());

        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        for (const QStringList& listArgument : {QStringList{u"-HIDE"_s}, QStringList{u"x"_s, u"-Hide"_s, u"y"_s}}) {
            m_tool = std::make_unique<Tool>();
            QTRY_VERIFY(!m_tool->TrayIcon()); // of the one before
            m_tool->Start(listArgument);
            QVERIFY(WaitForTrayIcon());
            QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings)); // a main window would be there before
            QTRY_VERIFY(m_tool->SettingsWindow());
            QVERIFY(!m_tool->MainWindow());
        }
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }

    void toolTipsCarryWholeTexts()
    {
        const QString strLongName = QString(u"彩色打印机Office"_s).repeated(6).left(60);
        const QString strLongPort = u"printserver.east-wing.example.org"_s;
        const QString strTagName = u"<b>Office"_s;
        WritePrinters(
            {{strLongName, QString(), 0, strLongPort, QString()}, {strTagName, QString(), 1, QString(), QString()}});
        WriteStatus(strLongName, Reply(0x10, {0x6105}));
        WriteStatus(strTagName, Reply(0x10, {}, {0x6105}));
        m_tool->Start();
        const QString strWarning = u"正在打印("_s + c_strLongError + QLatin1Char(')');
        QTRY_COMPARE(m_tool->Cell(0, 3), c_strLongError);
        QTRY_COMPARE(m_tool->Cell(1, 3), strWarning);
        QTRY_COMPARE(ToolTipAt(0, 3), QStringList{c_strLongError});
        QTRY_COMPARE(ToolTipAt(1, 3), QStringList{strWarning});
        QTRY_COMPARE(ToolTipAt(0, 0), QStringList{strLongName});
        QTRY_COMPARE(ToolTipAt(0, 1), QStringList{u"网络("_s + strLongPort + QLatin1Char(')')});
        QTRY_COMPARE(ToolTipAt(1, 0), QStringList{strTagName}); // a text that fits has one too
    }

private:
    /// A move after the resize tells when the window manager is through with both.
    void TryToResize() const
    {
        const QString strId = m_tool->MainWindow()->strId;
        for (const QString& strSize : {u"1000 500"_s, u"400 200"_s}) {
            Desktop::Run(u"xdotool"_s, QStringList{u"windowsize"_s, strId} + strSize.split(QLatin1Char(' ')));
        }
        Desktop::Run(u"wmctrl"_s, {u"-i"_s, u"-r"_s, strId, u"-b"_s, u"add,maximized_vert,maximized_horz"_s});
        Desktop::Run(u"xdotool"_s, {u"windowmove"_s, strId, u"30"_s, u"40"_s});
        const auto isMoved = [&] {
            const QList<Desktop::Window> listWindow = Desktop::Windows(m_tool->Class());
            return std::any_of(listWindow.begin(), listWindow.end(), [&](const Desktop::Window& other) {
                return other.strId == strId && Desktop::FramePosition(other) == QPoint(30, 40);
            });
        };
        QTRY_VERIFY(isMoved());
        QVERIFY(m_tool->MainWindow()); // of 860 x 300
    }

    /// As a function and as a button: both or none.
    bool HasMaximiseButton() const
    {
        const QString strHints = Desktop::Property(*m_tool->MainWindow(), u"_MOTIF_WM_HINTS"_s);
        const QStringList listHint = strHints.section(QLatin1Char('='), 1).split(QLatin1Char(',')); // flags first
        const bool bFunction = (listHint.value(1).trimmed().toInt(nullptr, 16) & 0x10) != 0;
        const bool bDecoration = (listHint.value(2).trimmed().toInt(nullptr, 16) & 0x40) != 0;
        if (bFunction != bDecoration) {
            qWarning() << strHints;
        }
        return bFunction;
    }

    QStringList ToolTipAt(int iRow, int iColumn) const
    {
        Desktop::MoveMouse(m_tool->Access().Cell(iRow, iColumn).Extents().center());
        return m_tool->Access().Names(u"tool tip"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Window)

#include "tst_Window.moc"
