// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "NotificationServer.h"

namespace {

const QString c_strPrinter = u"Office"_s;
const QString c_strNoPaper = u"进纸托盘处无纸,请放入纸张"_s; // error 0x6100
const QString c_strInkLow = u"墨水量低"_s;                   // warning 0x6160

} // namespace

/// The messages about errors and warnings, in the program's own balloons beside an XEmbed icon and through the
/// desktop's notification server beside a StatusNotifier icon.
class tst_Balloon : public DesktopTest
{
    Q_OBJECT

private slots:
    void ownBalloon()
    {
        WriteReadyPrinters({c_strPrinter});
        StartWithTray();
        const auto labels = [&] {
            QStringList listText = m_tool->Access().Names(u"label"_s);
            listText.removeAll(QString());
            return listText;
        };
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QVERIFY(!m_tool->Popup());
        HideWindow();
        WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
        QTRY_COMPARE(labels(), (QStringList{c_strPrinter, c_strInkLow}));
        QVERIFY(m_tool->Popup());

        // The error takes the warning's place while that is still to be seen.
        WriteStatus(c_strPrinter, Reply(0x00, {0x6100}, {0x6160}));
        QTRY_COMPARE(labels(), (QStringList{c_strPrinter, c_strNoPaper}));
        QVERIFY(m_tool->Popup());

        // The last window of the program has closed by itself, yet the program lives on.
        QTRY_VERIFY_WITH_TIMEOUT(!m_tool->Popup(), 6000);
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }

    void notificationServer()
    {
        NotificationServer server;
        QVERIFY(server.Start());
        WriteReadyPrinters({c_strPrinter});
        StartWithTray(TrayHost::enXfcePanel);
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QCOMPARE(server.Last(u"summary"_s), QString());
        HideWindow();

        WriteStatus(c_strPrinter, Reply(0x00, {}, {0x6160}));
        QTRY_COMPARE(server.Last(u"body"_s), c_strInkLow);
        QCOMPARE(server.Last(u"icon"_s), u"dialog-warning"_s);
        WriteStatus(c_strPrinter, Reply(0x00, {0x6100}, {0x6160}));
        QTRY_COMPARE(server.Last(u"body"_s), c_strNoPaper);
        QCOMPARE(server.Last(u"icon"_s), u"dialog-error"_s);
        QCOMPARE(server.Last(u"summary"_s), c_strPrinter);
        QCOMPARE(server.Last(u"timeout"_s), u"3000"_s);
        QTRY_VERIFY(!Desktop::Windows(u"Dunst"_s).isEmpty());
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }
};

QTEST_GUILESS_MAIN(tst_Balloon)

#include "tst_Balloon.moc"
