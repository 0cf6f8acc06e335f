// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "StatusFolder.h"

namespace {
const QString c_strCalls = u"/tmp/cancel-calls"_s;
} // namespace

/// Printers with names that a user's language, a joke or a fault gives them.
class tst_Names : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase() { FakeProgram(u"cancel"_s, "printf '%s\\n' \"$@\" >> " + c_strCalls.toLocal8Bit() + "\n"); }

    void anyNameIsFollowedAndAnnouncedOnTheScreen_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("logged"); // without what a terminal would obey
        QTest::addColumn<bool>("file");      // short enough for a file
        const auto add = [](const char* pTag, const QString& strName, const QString& strLogged) {
            QTest::newRow(pTag) << strName << strLogged << true;
        };
        add("emoji", u"打印👩‍👩‍👧🖨️"_s, u"打印👩\\u200D👩\\u200D👧🖨️"_s);
        add("right to left", u"مدپسة מדפסת 3"_s, u"مدپسة מדפסת 3"_s);
        add("override", u"Lab\u202Etxt.eciffO"_s, u"Lab\\u202Etxt.eciffO"_s);
        add("127 narrow bytes", QString(127, QLatin1Char('i')), QString(127, QLatin1Char('i')));
        add("127 wide bytes", QString(127, QLatin1Char('W')), QString(127, QLatin1Char('W')));
        QTest::newRow("4000 characters") << QString(4000, QChar(0x5B9E)) << QString(337, QChar(0x5B9E)) << false;
    }

    void anyNameIsFollowedAndAnnouncedOnTheScreen()
    {
        QFETCH(QString, name);
        QFETCH(QString, logged);
        QFETCH(bool, file);
        m_tool = std::make_unique<Tool>(QStringLiteral(VORA_SUPPORT_BUILD));
        QFile::remove(c_strCalls);
        WritePrinters(
            {{name, QString(), 1, QString(), u"usb://a"_s}, {u"Office"_s, QString(), 1, QString(), u"usb://b"_s}});
        WriteStatus(u"Office"_s, Reply());
        if (file) {
            WriteStatus(name, Reply());
        }
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(1, 3), u"就绪"_s);
        QCOMPARE(m_tool->Cell(0, 0), name);
        QTRY_COMPARE(m_tool->Cell(0, 3), file ? u"就绪"_s : u"脱机"_s);
        // A line of the log is cut at 1023 bytes.
        QVERIFY(LogText().contains(" DebugOutputPrinterInfo) printer[0] " + logged.toUtf8() + (file ? "=\n" : "")));
        HideWindow();
        if (file) {
            WriteStatus(name, Reply(0x03, {0x6100}));
            QTRY_VERIFY(m_tool->Access().Find(u"label"_s, u"进纸托盘处无纸,请放入纸张"_s));
            QTRY_VERIFY(!Desktop::Windows(m_tool->Class()).isEmpty());
            const QRect screen(0, 0, 1280, 800);
            for (const Desktop::Window& window : Desktop::Windows(m_tool->Class())) {
                // With Qt 5 the frame of a short right-to-left text reaches a few pixels beyond the right edge.
                const QRect visible = window.geometry & screen;
                QCOMPARE(visible.topLeft(), window.geometry.topLeft());
                QCOMPARE(visible.bottom(), window.geometry.bottom());
                QVERIFY(window.geometry.right() - visible.right() <= 8);
            }
            QTRY_COMPARE(QString::fromUtf8(ReadFile(c_strCalls)), name + QLatin1Char('\n'));
        }
        QVERIFY(m_tray->ShowWindow(*m_tool));
        ExitByMenu();
    }
};

QTEST_GUILESS_MAIN(tst_Names)

#include "tst_Names.moc"
