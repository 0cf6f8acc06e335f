// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// One run of the built program as its user has it: on a desktop with a tray, beside a driver package that writes
/// files.
class tst_FromStartToExit : public DesktopTest
{
    Q_OBJECT

private slots:
    void followsTheDriverPackageFromStartToExit()
    {
        WritePrinters({{u"Office"_s, u"RA7Q"_s, 0, u"192.168.1.20"_s, u"ipp://a"_s},
                       {u"书房"_s, u"RB9Q"_s, 1, QString(), u"usb://b"_s}});
        WriteStatus(u"Office"_s, Reply());
        StartWithTray();

        Tool& tool = *m_tool;
        QTRY_COMPARE(tool.Cell(0, 3), u"就绪"_s);
        QCOMPARE(tool.RowCount(), 2);
        QCOMPARE(tool.Cell(0, 0), u"Office"_s);
        QCOMPARE(tool.Cell(0, 1), u"网络(192.168.1.20)"_s);
        QCOMPARE(tool.Cell(0, 2), u"青色：高   红色：中   黄色：较低   黑色：低"_s);
        QCOMPARE(tool.Cell(1, 0), u"书房"_s);
        QCOMPARE(tool.Cell(1, 1), u"USB"_s);
        QCOMPARE(tool.Cell(1, 2), u"青色：无   红色：无   黄色：无   黑色：无"_s);
        QCOMPARE(tool.Cell(1, 3), u"脱机"_s);
        QVERIFY(!tool.Popup());

        WriteStatus(u"Office"_s, Reply(0x10, {0x6100}));
        QTRY_COMPARE(tool.Cell(0, 3), u"进纸托盘处无纸,请放入纸张"_s);
        QTRY_VERIFY(tool.Popup());                     // the balloon
        QTRY_VERIFY_WITH_TIMEOUT(!tool.Popup(), 6000); // closes by itself after 3 s

        Desktop::CloseWindow(*tool.MainWindow());
        QTRY_VERIFY(!tool.MainWindow());
        QCOMPARE(tool.Process().state(), QProcess::Running);
        QVERIFY(m_tray->ShowWindow(tool));

        ExitByMenu();
    }
};

QTEST_GUILESS_MAIN(tst_FromStartToExit)

#include "tst_FromStartToExit.moc"
