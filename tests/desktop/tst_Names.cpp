// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

namespace {
const QString c_strCalls = QStringLiteral("/tmp/cancel-calls");
} // namespace

/// Printers with names that a user's language, a joke or a fault gives them.
class tst_Names : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void anyNameIsFollowedAndAnnouncedOnTheScreen_data();
    void anyNameIsFollowedAndAnnouncedOnTheScreen();
};

void tst_Names::initTestCase()
{
    FakeProgram(QStringLiteral("cancel"), "printf '%s\\n' \"$@\" >> " + c_strCalls.toLocal8Bit() + "\n");
}

void tst_Names::anyNameIsFollowedAndAnnouncedOnTheScreen_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("file"); // short enough for a file
    QTest::newRow("emoji") << QStringLiteral("打印👩‍👩‍👧🖨️") << true;
    QTest::newRow("right to left") << QStringLiteral("مدپسة מדפסת 3") << true;
    QTest::newRow("override") << QStringLiteral("Lab\u202Etxt.eciffO") << true;
    QTest::newRow("127 narrow bytes") << QString(127, QLatin1Char('i')) << true;
    QTest::newRow("127 wide bytes") << QString(127, QLatin1Char('W')) << true;
    QTest::newRow("4000 characters") << QString(4000, QChar(0x5B9E)) << false;
}

void tst_Names::anyNameIsFollowedAndAnnouncedOnTheScreen()
{
    QFETCH(QString, name);
    QFETCH(bool, file);
    QFile::remove(c_strCalls);
    WritePrinters({{name, QString(), 1, QString(), QStringLiteral("usb://a")},
                   {QStringLiteral("Office"), QString(), 1, QString(), QStringLiteral("usb://b")}});
    WriteStatus(QStringLiteral("Office"), Reply());
    if (file) {
        WriteStatus(name, Reply());
    }
    StartWithTray();
    QTRY_COMPARE(m_tool->Cell(1, 3), QStringLiteral("就绪"));
    QCOMPARE(m_tool->Cell(0, 0), name);
    QTRY_COMPARE(m_tool->Cell(0, 3), file ? QStringLiteral("就绪") : QStringLiteral("脱机"));
    HideWindow();
    if (file) {
        WriteStatus(name, Reply(0x03, {0x6100}));
        QTRY_VERIFY(m_tool->Access().Find(m_tool->Class(), QStringLiteral("label"),
                                          QStringLiteral("进纸托盘处无纸,请放入纸张")));
        QTRY_VERIFY(!Desktop::Windows(m_tool->Class()).isEmpty());
        const QRect screen(0, 0, 1280, 800);
        for (const Desktop::Window& window : Desktop::Windows(m_tool->Class())) {
            QCOMPARE(window.geometry & screen, window.geometry);
        }
        QTRY_COMPARE(QString::fromUtf8(ReadFile(c_strCalls)), name + QLatin1Char('\n'));
    }
    QVERIFY(m_tray->ShowWindow(*m_tool));
    ExitByMenu();
}

QTEST_GUILESS_MAIN(tst_Names)

#include "tst_Names.moc"
