// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// One run of the built program as its user has it: on a desktop with a tray, beside a driver package that writes
/// files.
class tst_FromStartToExit : public DesktopTest
{
    Q_OBJECT

private slots:
    void followsTheDriverPackageFromStartToExit();
};

void tst_FromStartToExit::followsTheDriverPackageFromStartToExit()
{
    WritePrinters({{QStringLiteral("Office"), QStringLiteral("RA7Q"), 0, QStringLiteral("192.168.1.20"),
                    QStringLiteral("ipp://a")},
                   {QStringLiteral("书房"), QStringLiteral("RB9Q"), 1, QString(), QStringLiteral("usb://b")}});
    WriteStatus(QStringLiteral("Office"), Reply());
    StartWithTray();

    Tool& tool = *m_tool;
    QTRY_COMPARE(tool.Cell(0, 3), QStringLiteral("就绪"));
    QCOMPARE(tool.RowCount(), 2);
    QCOMPARE(tool.Cell(0, 0), QStringLiteral("Office"));
    QCOMPARE(tool.Cell(0, 1), QStringLiteral("网络(192.168.1.20)"));
    QCOMPARE(tool.Cell(0, 2), QStringLiteral("青色：高   红色：中   黄色：较低   黑色：低"));
    QCOMPARE(tool.Cell(1, 0), QStringLiteral("书房"));
    QCOMPARE(tool.Cell(1, 1), QStringLiteral("USB"));
    QCOMPARE(tool.Cell(1, 2), QStringLiteral("青色：无   红色：无   黄色：无   黑色：无"));
    QCOMPARE(tool.Cell(1, 3), QStringLiteral("脱机"));
    QVERIFY(!tool.Popup());

    WriteStatus(QStringLiteral("Office"), Reply(0x10, {0x6100}));
    QTRY_COMPARE(tool.Cell(0, 3), QStringLiteral("进纸托盘处无纸,请放入纸张"));
    QTRY_VERIFY(tool.Popup());                     // the balloon
    QTRY_VERIFY_WITH_TIMEOUT(!tool.Popup(), 6000); // closes by itself after 3 s

    Desktop::CloseWindow(*tool.MainWindow());
    QTRY_VERIFY(!tool.MainWindow());
    QCOMPARE(tool.Process().state(), QProcess::Running);
    QVERIFY(m_tray->ShowWindow(tool));

    ExitByMenu();
}

QTEST_GUILESS_MAIN(tst_FromStartToExit)

#include "tst_FromStartToExit.moc"
