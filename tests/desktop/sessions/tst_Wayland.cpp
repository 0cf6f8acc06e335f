// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// The program as a Wayland client. The compositor has no screen, so the windows are seen as a screen reader sees them;
/// the tray, which is the session bus's business, is a panel on the X display beside it.
class tst_Wayland : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        m_compositor.start(u"weston"_s, {u"--backend=headless-backend.so"_s, u"--socket=vora"_s, u"--no-config"_s,
                                         u"--idle-time=0"_s});
        QTRY_VERIFY(QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/vora"_s));
    }

    void runsFromStartToExit()
    {
        const QString strTitle = u"星原喷墨打印机助手"_s;
        const QString strSettings = u"设置"_s;
        WritePrinters({{u"书房"_s, u"RB9Q"_s, 1, QString(), u"usb://b"_s}});
        WriteStatus(u"书房"_s, Reply(0x10, {}, {0x6160}));
        m_tray = std::make_unique<TrayHost>(TrayHost::enXfcePanel);
        QVERIFY(m_tray->Start());
        qputenv("WAYLAND_DISPLAY", "vora");
        qputenv("QT_QPA_PLATFORM", "wayland");
        m_tool = std::make_unique<Tool>();
        const QByteArray display = qgetenv("DISPLAY");
        qunsetenv("DISPLAY");
        m_tool->Start();
        qputenv("DISPLAY", display);
        QVERIFY(WaitForTrayIcon());
        QTRY_VERIFY(IsWindowVisible(strTitle));
        QVERIFY(!m_tool->MainWindow()); // not on the X display

        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在打印(墨水量低)"_s);
        QCOMPARE(m_tool->RowCount(), 1);
        QCOMPARE(m_tool->Cell(0, 0), u"书房"_s);
        QCOMPARE(m_tool->Cell(0, 1), u"USB"_s);
        QCOMPARE(m_tool->Cell(0, 2), u"青色：高   红色：中   黄色：较低   黑色：低"_s);

        QVERIFY(!IsWindowVisible(strSettings));
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(IsWindowVisible(strSettings));

        m_tray->ClickIcon(*m_tool);
        QTRY_VERIFY(IsWindowVisible(strTitle));

        ExitByMenu();
    }

    void cleanupTestCase()
    {
        m_compositor.kill();
        m_compositor.waitForFinished();
    }

private:
    bool IsWindowVisible(const QString& strTitle) const
    {
        return m_tool->Access().Find(u"filler"_s, strTitle).IsVisible();
    }

    QProcess m_compositor;
};

QTEST_GUILESS_MAIN(tst_Wayland)

#include "tst_Wayland.moc"
