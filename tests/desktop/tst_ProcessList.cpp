// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDir>

#include <sys/stat.h>

namespace {

const QString c_strToolFolder = u"" VORA_PACKAGE_PATH "tool"_s;
const QString c_strProcessList = c_strToolFolder + u"/pslist.tmp"_s;
const QByteArray c_ownLine = "    100 ?        00:00:00 VoraPrinterTool\n";

} // namespace

/// What the program takes for a running copy in the process list that `ps` prints.
class tst_ProcessList : public DesktopTest
{
    Q_OBJECT

private slots:
    void linesThatCount_data()
    {
        QTest::addColumn<QByteArray>("lines");
        QTest::addColumn<bool>("running");
        QTest::newRow("none") << QByteArray() << false;
        QTest::newRow("itself") << c_ownLine << false;
        QTest::newRow("one other") << c_ownLine + "    101 ?        00:00:00 VoraPrinterTool\n" << true;
        QTest::newRow("two others") << c_ownLine.repeated(3) << true;
        QTest::newRow("other letter case") << c_ownLine + "101 VoraPrinterTool 00:00:00 voraprinterTOOL\n" << true;
        QTest::newRow("longer name") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool2\n" << false;
        QTest::newRow("name within a name") << c_ownLine + "101 ? 00:00:00 myVoraPrinterTool\n" << false;
        QTest::newRow("three columns") << c_ownLine + "101 ? VoraPrinterTool\n" << false;
        QTest::newRow("name in the first column") << c_ownLine + "VoraPrinterTool ? 00:00:00 bash\n" << false;
        QTest::newRow("name in the second column") << c_ownLine + "101 VoraPrinterTool 00:00:00 bash\n" << false;
        QTest::newRow("name in the third column") << c_ownLine + "101 ? VoraPrinterTool bash\n" << false;
        QTest::newRow("name in the fifth column") << c_ownLine + "101 ? 00:00:00 grep VoraPrinterTool\n" << false;
        QTest::newRow("more columns after the name") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool <defunct>\n"
                                                     << true;
        QTest::newRow("trailing blanks") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool   \n" << true;
        QTest::newRow("trailing tab") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool\t\n" << true;
        QTest::newRow("carriage return") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool\r\n" << true;
        QTest::newRow("no line end") << c_ownLine + "101 ? 00:00:00 VoraPrinterTool" << true;
        const QByteArray megabyte = QByteArray("101 ? 00:00:00 myVoraPrinterTool\n").repeated(1024 * 1024 / 33 + 1);
        QTest::newRow("behind a megabyte of others") << c_ownLine + megabyte + "101 ? 00:00:00 VoraPrinterTool\n"
                                                     << false;
        QTest::newRow("tabs are no separators") << c_ownLine + "101\t?\t00:00:00\tVoraPrinterTool\n" << false;
    }

    void linesThatCount()
    {
        QFETCH(QByteArray, lines);
        QFETCH(bool, running);
        FakeProcessList(lines);
        m_tool->Start();
        QTRY_VERIFY(IsUp());
        QCOMPARE(m_tool->MainWindow().has_value(), !running);
        QCOMPARE(ReadFile(u"/tmp/arguments"_s), QByteArray("-A\n"));
        QVERIFY(!QFile::exists(c_strProcessList));
    }

    void longNameIsCutToFifteenCharacters_data()
    {
        QTest::addColumn<QString>("second");
        QTest::newRow("same name") << u"/tmp/copies/printer-assistant-k507"_s;
        QTest::newRow("name with the same fifteen characters") << u"/tmp/copies/printer-assistance"_s;
    }

    void longNameIsCutToFifteenCharacters()
    {
        QFETCH(QString, second);
        FakeProgram(u"ps"_s, "exec /bin/ps \"$@\"\n");
        const QString strFirst = u"/tmp/copies/printer-assistant-k507"_s;
        QDir().mkpath(u"/tmp/copies"_s);
        for (const QString& strCopy : {strFirst, second}) {
            QVERIFY(QFile::exists(strCopy) || QFile::copy(QStringLiteral(VORA_TOOL), strCopy));
        }
        m_tool = std::make_unique<Tool>(strFirst);
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        Tool other(second);
        other.Start();
        const auto box = [&] {
            return Desktop::FindWindow(other.Class(), m_tool->MainWindow()->strTitle, {1, 1}, {859, 299});
        };
        QTRY_VERIFY(box());
    }

    void listThatCannotBeWrittenCountsNothing_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("a folder in the list's place") << c_strProcessList + u"/inside"_s;
        QTest::newRow("a file in the tool folder's place") << c_strToolFolder;
    }

    void listThatCannotBeWrittenCountsNothing()
    {
        QFETCH(QString, obstacle);
        FakeProcessList(c_ownLine.repeated(2));
        QVERIFY(WriteFile(obstacle, "in the way"));
        m_tool->Start();
        QTRY_VERIFY(IsUp());
        QVERIFY(m_tool->MainWindow());
        QCOMPARE(ReadFile(obstacle), QByteArray("in the way"));
    }

    void whatTakesTheListsPlaceIsLeftAlone_data()
    {
        QTest::addColumn<QString>("target"); // of a link, else it is a FIFO
        QTest::newRow("link to a file") << u"/tmp/victim"_s;
        QTest::newRow("link to a device") << u"/dev/zero"_s;
        QTest::newRow("FIFO") << QString();
    }

    void whatTakesTheListsPlaceIsLeftAlone()
    {
        QFETCH(QString, target);
        const QString strPlanted = u"/opt/vora/planted"_s;
        FakeProcessList(c_ownLine.repeated(2));
        QVERIFY(WriteFile(u"/tmp/victim"_s, "precious"));
        QVERIFY(QDir().mkpath(u"/opt/vora"_s));
        QVERIFY(target.isEmpty() ? ::mkfifo(QFile::encodeName(strPlanted).constData(), 0666) == 0
                                 : QFile::link(target, strPlanted));
        Preload(VORA_PLANT_BEFORE_COMMAND);
        m_tool->Start();
        qunsetenv("LD_PRELOAD");
        QTRY_VERIFY(IsUp());
        QVERIFY(!m_tool->MainWindow()); // the second copy's message: the list was read
        QCOMPARE(ReadFile(u"/tmp/victim"_s), QByteArray("precious"));
        QVERIFY(!QFileInfo(strPlanted).isSymLink() && !QFileInfo::exists(strPlanted));
        QFile::remove(c_strProcessList);
    }

private:
    static void FakeProcessList(const QByteArray& lines)
    {
        QVERIFY(WriteFile(u"/tmp/lines"_s, lines));
        FakeProgram(u"ps"_s, "echo \"$*\" > /tmp/arguments\ncat /tmp/lines\n");
    }

    /// Whether the program shows its window or the message box.
    bool IsUp() const { return !Desktop::Windows(m_tool->Class()).isEmpty(); }
};

QTEST_GUILESS_MAIN(tst_ProcessList)

#include "tst_ProcessList.moc"
