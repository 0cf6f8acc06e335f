// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QImage>
#include <QMessageBox>
#include <QScopeGuard>

#include <sys/stat.h>

namespace {

const QString c_strProgram = u"VoraPrinterTool"_s;
const QString c_strTitle = u"星原喷墨打印机助手"_s;

const QString c_strOpt = u"/opt/vora"_s;
const QString c_strToolFolder = u"" VORA_PACKAGE_PATH "tool"_s;
const QString c_strProcessList = c_strToolFolder + u"/pslist.tmp"_s;
const QByteArray c_ownLine = "    100 ?        00:00:00 VoraPrinterTool\n";

const QString c_strLines = u"/tmp/lines"_s; // what `ps` prints in place of the processes, when it is there
const QString c_strNowhere = u"/tmp/nowhere"_s;
const QString c_strVictim = u"/tmp/victim"_s;

/// The window with the main window's title that is smaller.
std::optional<Desktop::Window> MessageBox(const QString& strClass = c_strProgram)
{
    return Desktop::FindWindow(strClass, c_strTitle, {1, 1}, {859, 299});
}

bool MakeLinkOrFifo(const QString& strTarget, const QString& strPath)
{
    QDir().mkpath(QFileInfo(strPath).path());
    return strTarget.isEmpty() ? ::mkfifo(QFile::encodeName(strPath).constData(), 0666) == 0
                               : QFile::link(strTarget, strPath);
}

/// Whether the picture begins with all that is opaque of the icon.
bool ShowsIcon(const QImage& picture, QMessageBox::Icon enIcon)
{
    const QImage icon = QMessageBox(enIcon, QString(), QString()).iconPixmap().toImage();
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            if (qAlpha(icon.pixel(x, y)) == 255 && picture.pixel(x, y) != icon.pixel(x, y)) {
                return false;
            }
        }
    }
    return !icon.isNull();
}

} // namespace

/// What a second start of the program does, and what it takes for a copy of itself in the list that `ps` prints.
class tst_SecondCopy : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        FakeProgram(u"ps"_s, "echo \"$*\" > /tmp/arguments\n"
                             "if [ -e /tmp/lines ]; then cat /tmp/lines; else exec /bin/ps \"$@\"; fi\n");
    }

    void endsWithItsMessageBoxAndLeavesTheFirstCopyAlone()
    {
        QFile::remove(c_strLines);
        WriteReadyPrinters({u"Office"_s});
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        const QRect geometry = m_tool->MainWindow()->geometry;
        const QRect icon = m_tool->TrayIcon()->geometry;
        for (const QString& strEnd : {u"Return"_s, u"Escape"_s, u"close"_s, u"click"_s}) {
            Tool second;
            second.Start({u"-hide"_s}); // it says so just the same
            const auto button = [&] { return second.Access().Find(u"push button"_s); };
            QTRY_VERIFY(MessageBox() && button());
            const Desktop::Window box = *MessageBox();
            QTRY_COMPARE(Desktop::ActiveWindow(), box.strId);
            CheckLooks(second.Access());
            WriteStatus(u"Office"_s, Reply(0x10));
            QTRY_COMPARE(m_tool->Cell(0, 3), u"正在打印"_s);

            if (strEnd == QLatin1String("close")) {
                Desktop::CloseWindow(box);
            } else if (strEnd == QLatin1String("click")) {
                Desktop::Click(box, button().Extents().center() - box.geometry.topLeft());
            } else {
                Desktop::PressKey(strEnd);
            }
            QVERIFY(second.Process().waitForFinished(5000));
            QCOMPARE(second.Process().exitStatus(), QProcess::NormalExit);
            QCOMPARE(second.Process().exitCode(), 0);
            QVERIFY(!MessageBox());
            WriteStatus(u"Office"_s, Reply(0x11));
            QTRY_COMPARE(m_tool->Cell(0, 3), u"正在扫描"_s);
        }
        QCOMPARE(m_tool->MainWindow()->geometry, geometry);
        QCOMPARE(m_tool->TrayIcon()->geometry, icon);
        ExitByMenu();
    }

    void linesThatCount_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<bool>("running");
        const QByteArray megabyte = QByteArray("101 ? 00:00:00 myVoraPrinterTool\n").repeated(1024 * 1024 / 33 + 1);
        const auto row = [](const char* pName, const QByteArray& lines, bool bRunning) {
            QTest::newRow(pName) << lines << bRunning;
        };
        row("none", "", false);
        row("itself, longer names, and the name in another column",
            c_ownLine + "101 ? 00:00:00 VoraPrinterTool2\n101 ? 00:00:00 myVoraPrinterTool\n101 ? VoraPrinterTool\n"
                        "VoraPrinterTool VoraPrinterTool VoraPrinterTool grep VoraPrinterTool\n"
                        "101\t?\t00:00:00\tVoraPrinterTool\n",
            false);
        row("one other", c_ownLine + "    101 ?        00:00:00 VoraPrinterTool\n", true);
        row("two others", c_ownLine.repeated(3), true);
        row("other letter case", c_ownLine + "101 VoraPrinterTool 00:00:00 voraprinterTOOL\n", true);
        row("more columns after the name", c_ownLine + "101 ? 00:00:00 VoraPrinterTool <defunct>\n", true);
        row("trailing blanks", c_ownLine + "101 ? 00:00:00 VoraPrinterTool   \n", true);
        row("trailing tab and carriage return", c_ownLine + "101 ? 00:00:00 VoraPrinterTool\t\r\n", true);
        row("no line end", c_ownLine + "101 ? 00:00:00 VoraPrinterTool", true);
        row("behind nearly a megabyte of others", c_ownLine + megabyte.left(33 * 31000) + c_ownLine, true);
        row("behind a megabyte of others", c_ownLine + megabyte + "101 ? 00:00:00 VoraPrinterTool\n", false);
    }

    void linesThatCount()
    {
        QFETCH(const QByteArray, lines);
        QFETCH(const bool, running);
        QDir(u"/opt/vora"_s).removeRecursively(); // as before the driver package came
        StartBeside(lines);
        QCOMPARE(m_tool->MainWindow().has_value(), !running);
        QCOMPARE(ReadFile(u"/tmp/arguments"_s), QByteArray("-A\n"));
        QVERIFY(!QFile::exists(c_strProcessList));
    }

    /// All that the system shows of a name.
    void fifteenCharactersOfTheNameCount()
    {
        const QString strOther = u"/tmp/printer-assistance"_s;
        for (const QString& strCopy : {u"/tmp/printer-assistant-k507"_s, strOther}) {
            QVERIFY(QFile::copy(QStringLiteral(VORA_TOOL), strCopy));
        }
        m_tool = std::make_unique<Tool>(u"/tmp/printer-assistant-k507"_s);
        QFile::remove(c_strLines);
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        Tool other(strOther);
        other.Start();
        QTRY_VERIFY(MessageBox(other.Class()));
    }

    void startsWhenTheListCannotBeWritten_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<QString>("target"); // of a link, else the obstacle is a file
        QTest::newRow("a folder in the list's place") << c_strProcessList + u"/inside"_s << QString();
        QTest::newRow("a file for the package") << c_strOpt << QString();
        QTest::newRow("a link to nowhere for the tool folder") << c_strToolFolder << c_strNowhere;
        QTest::newRow("a link to itself for the package") << c_strOpt << c_strOpt;
    }

    void startsWhenTheListCannotBeWritten()
    {
        QFETCH(const QString, obstacle);
        QFETCH(const QString, target);
        const auto tidy = qScopeGuard([] { QFile::remove(c_strOpt); });
        QDir(c_strOpt).removeRecursively();
        QVERIFY(target.isEmpty() ? WriteFile(obstacle, "in the way") : MakeLinkOrFifo(target, obstacle));
        StartBeside(c_ownLine.repeated(2));
        QVERIFY(m_tool->MainWindow());
        QVERIFY(!QFile::exists(c_strNowhere));
        QCOMPARE(ReadFile(obstacle), target.isEmpty() ? QByteArray("in the way") : QByteArray());
    }

    void whatTakesTheListsPlaceIsLeftAlone_data()
    {
        QTest::addColumn<bool>("late");      // between the opening of the list and the command that writes it
        QTest::addColumn<QString>("target"); // of a link, else it is a FIFO
        QTest::newRow("link to a file") << false << c_strVictim;
        QTest::newRow("FIFO") << false << QString();
        QTest::newRow("link to a file, late") << true << c_strVictim;
        QTest::newRow("link to a device, late") << true << u"/dev/zero"_s;
        QTest::newRow("FIFO, late") << true << QString();
    }

    void whatTakesTheListsPlaceIsLeftAlone()
    {
        QFETCH(const bool, late);
        QFETCH(const QString, target);
        const QString strPlanted = late ? u"/opt/vora/planted"_s : c_strProcessList;
        QVERIFY(WriteFile(c_strVictim, "precious"));
        QVERIFY(MakeLinkOrFifo(target, strPlanted));
        Preload(VORA_PLANT_BEFORE_COMMAND);
        StartBeside(c_ownLine.repeated(2));
        qunsetenv("LD_PRELOAD");
        QVERIFY(!m_tool->MainWindow()); // the second copy's message: the list was read
        QCOMPARE(ReadFile(c_strVictim), QByteArray("precious"));
        QVERIFY(!QFileInfo::exists(strPlanted) && !QFileInfo(strPlanted).isSymLink());
    }

private:
    static void CheckLooks(const Accessibility& access)
    {
        QTRY_COMPARE(access.Names(u"alert message"_s), QStringList(c_strTitle));
        QCOMPARE(access.Names(u"push button"_s), QStringList(u"确  定"_s));
        QCOMPARE(access.Names(u"label"_s), QStringList(u"星原喷墨打印机助手已经处于运行中！"_s));
        const auto showsIcon = [&](QMessageBox::Icon enIcon) {
            return ShowsIcon(Desktop::Screen().copy(access.Find(u"graphic"_s).Extents()), enIcon);
        };
        QTRY_VERIFY(showsIcon(QMessageBox::Information));
        for (const QMessageBox::Icon enIcon : {QMessageBox::Warning, QMessageBox::Critical, QMessageBox::Question}) {
            QVERIFY(!showsIcon(enIcon));
        }
    }

    /// Starts the tool, while `ps` prints these lines, and waits for its window or its message box.
    void StartBeside(const QByteArray& lines)
    {
        QVERIFY(WriteFile(c_strLines, lines));
        m_tool->Start();
        QTRY_VERIFY(!Desktop::Windows(m_tool->Class()).isEmpty());
    }
};

QTEST_MAIN(tst_SecondCopy)

#include "tst_SecondCopy.moc"
