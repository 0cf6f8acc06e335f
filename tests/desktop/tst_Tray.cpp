// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QScopeGuard>

/// The icon in the trays of three desktops, and a desktop without one.
class tst_Tray : public DesktopTest
{
    Q_OBJECT

private slots:
    void clickShowsTheWindow_data() { AddTrayHosts(); }
    void clickShowsTheWindow()
    {
        StartWithRowsTray();
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
    }

    void iconComesBackWithTheTray_data() { AddTrayHosts(); }
    void iconComesBackWithTheTray()
    {
        StartWithRowsTray();
        m_tray->Kill();
        QTRY_VERIFY(!m_tray->HasIcon(*m_tool));
        QVERIFY(m_tool->MainWindow());
        HideWindow();

        QVERIFY(m_tray->Start());
        QVERIFY(WaitForTrayIcon());
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }

    void runsWithoutATray()
    {
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QVERIFY(!m_tool->TrayIcon());

        WriteStatus(u"Office"_s, Reply(0x00, {0x6100}));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"进纸托盘处无纸,请放入纸张"_s);
        QVERIFY(!m_tool->Popup());
        WriteStatus(u"Office"_s, Reply());
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QVERIFY(m_tool->MainWindow());
    }

private:
    /// Returns when the program has met all earlier clicks: it has opened its menu after them.
    void LetClicksArrive() const
    {
        QVERIFY(m_tray->OpenMenu(*m_tool));
        Desktop::PressKey(u"Escape"_s);
        QTRY_VERIFY(!m_tray->Menu(*m_tool));
    }

    QString WindowId() const
    {
        const std::optional<Desktop::Window> window = m_tool->MainWindow();
        return window ? window->strId : QString();
    }
};

QTEST_GUILESS_MAIN(tst_Tray)

#include "tst_Tray.moc"
