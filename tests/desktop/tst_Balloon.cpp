// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "NotificationServer.h"

namespace {

const QString c_strPrinter = QStringLiteral("Office");
const QString c_strNoPaper = QStringLiteral("进纸托盘处无纸,请放入纸张"); // error 0x6100
const QString c_strInkLow = QStringLiteral("墨水量低");                   // warning 0x6160

} // namespace

/// The messages about errors and warnings, in the program's own balloons beside an XEmbed icon and through the
/// desktop's notification server beside a StatusNotifier icon.
class tst_Balloon : public DesktopTest
{
    Q_OBJECT

private slots:
    void ownBalloon_data();
    void ownBalloon();
    void notificationServer();
};

void tst_Balloon::ownBalloon_data()
{
    QTest::addColumn<int>("iHost");
    QTest::newRow("tint2") << int(TrayHost::enTint2);
    QTest::newRow("trayer") << int(TrayHost::enTrayer);
}

void tst_Balloon::ownBalloon()
{
    WriteReadyPrinters({c_strPrinter});
    StartWithRowsTray();
    const Tool& tool = *m_tool;
    const auto labels = [&] {
        QStringList listText = tool.Access().Names(tool.Class(), QStringLiteral("label"));
        listText.removeAll(QString());
        return listText;
    };
    QTRY_COMPARE(tool.Cell(0, 3), QStringLiteral("就绪"));
    QVERIFY(!tool.Popup());
    HideWindow();

    WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
    QTRY_COMPARE(labels(), (QStringList{c_strPrinter, c_strInkLow}));
    QVERIFY(tool.Popup());

    // The error takes the warning's place while that is still to be seen.
    WriteStatus(c_strPrinter, Reply(0x00, {0x6100}, {0x6160}));
    QTRY_COMPARE(labels(), (QStringList{c_strPrinter, c_strNoPaper}));
    QVERIFY(tool.Popup());

    // The last window of the program has closed by itself, yet the program lives on.
    QTRY_VERIFY_WITH_TIMEOUT(!tool.Popup(), 6000);
    QVERIFY(m_tray->ShowWindow(tool));
}

void tst_Balloon::notificationServer()
{
    NotificationServer server;
    QVERIFY(server.Start());
    WriteReadyPrinters({c_strPrinter});
    StartWithTray(TrayHost::enXfcePanel);
    QTRY_COMPARE(m_tool->Cell(0, 3), QStringLiteral("就绪"));
    QCOMPARE(server.Last(QStringLiteral("summary")), QString());
    HideWindow();

    WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
    QTRY_COMPARE(server.Last(QStringLiteral("body")), c_strInkLow);
    QCOMPARE(server.Last(QStringLiteral("summary")), c_strPrinter);
    QCOMPARE(server.Last(QStringLiteral("timeout")), QStringLiteral("3000"));
    QCOMPARE(server.Last(QStringLiteral("icon")), QStringLiteral("dialog-warning"));

    WriteStatus(c_strPrinter, Reply(0x00, {0x6100}, {0x6160}));
    QTRY_COMPARE(server.Last(QStringLiteral("body")), c_strNoPaper);
    QCOMPARE(server.Last(QStringLiteral("summary")), c_strPrinter);
    QCOMPARE(server.Last(QStringLiteral("timeout")), QStringLiteral("3000"));
    QCOMPARE(server.Last(QStringLiteral("icon")), QStringLiteral("dialog-error"));
    QTRY_VERIFY(!Desktop::Windows(QStringLiteral("Dunst")).isEmpty());

    QTRY_VERIFY_WITH_TIMEOUT(Desktop::Windows(QStringLiteral("Dunst")).isEmpty(), 6000);
    QVERIFY(m_tray->ShowWindow(*m_tool));
}

QTEST_GUILESS_MAIN(tst_Balloon)

#include "tst_Balloon.moc"
