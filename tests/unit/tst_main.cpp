// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AccessibleTexts.h"
#include "TestFiles.h"

#include <QPoint>
#include <QProcess>
#include <QRegularExpression>
#include <QSize>
#include <QtTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

const QString c_strProgram = QStringLiteral(VORA_PROGRAM);
const QString c_strToolFolder = QStringLiteral("/opt/vora/vora-printer-k507/tool");
const QString c_strProcessList = c_strToolFolder + QStringLiteral("/pslist.tmp");
constexpr QSize c_mainWindow(860, 300);

struct stWindow
{
    QString strId;
    QSize size;
};

QString Output(const QString& strProgram, const QStringList& listArgument)
{
    QProcess process;
    process.start(strProgram, listArgument);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString Desktop(const QStringList& listArgument)
{
    return Output(QStringLiteral("xdotool"), listArgument);
}

QList<stWindow> VisibleWindows(const QString& strBy, const QString& strPattern)
{
    QList<stWindow> listWindow;
    const QString strIds = Desktop({QStringLiteral("search"), QStringLiteral("--onlyvisible"), strBy, strPattern});
    for (const QString& strId : strIds.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        static const QRegularExpression c_size(QStringLiteral("WIDTH=(\\d+)\nHEIGHT=(\\d+)"));
        const QRegularExpressionMatch match =
            c_size.match(Desktop({QStringLiteral("getwindowgeometry"), QStringLiteral("--shell"), strId}));
        listWindow.append({strId, QSize(match.captured(1).toInt(), match.captured(2).toInt())});
    }
    return listWindow;
}

QList<stWindow> TitledWindows()
{
    return VisibleWindows(QStringLiteral("--name"), QStringLiteral("^星原喷墨打印机助手$"));
}

int MainWindows()
{
    const QList<stWindow> listWindow = TitledWindows();
    return static_cast<int>(std::count_if(listWindow.begin(), listWindow.end(),
                                          [](const stWindow& window) { return window.size == c_mainWindow; }));
}

/// The id of the window that has the main window's title but another size; empty while there is none.
QString MessageBox()
{
    for (const stWindow& window : TitledWindows()) {
        if (window.size != c_mainWindow) {
            return window.strId;
        }
    }
    return QString();
}

/// Where the tray has put the icons of the program.
QList<QPoint> TrayIcons()
{
    static const QRegularExpression c_icon(
        QStringLiteral("\\(\"VoraPrinterTool\" \"VoraPrinterTool\"\\)  22x22\\S+  \\+(\\d+)\\+([1-9]\\d*)\n"));
    QList<QPoint> listPosition;
    const QString strTree = Output(QStringLiteral("xwininfo"), {QStringLiteral("-root"), QStringLiteral("-tree")});
    QRegularExpressionMatchIterator iterator = c_icon.globalMatch(strTree);
    while (iterator.hasNext()) {
        const QRegularExpressionMatch match = iterator.next();
        listPosition.append(QPoint(match.captured(1).toInt(), match.captured(2).toInt()));
    }
    return listPosition;
}

bool TrayMenuIsOpen()
{
    const QList<stWindow> listWindow = VisibleWindows(QStringLiteral("--class"), QStringLiteral("^VoraPrinterTool$"));
    return std::any_of(listWindow.begin(), listWindow.end(),
                       [](const stWindow& window) { return window.size != c_mainWindow && window.size.height() > 60; });
}

} // namespace

class tst_main : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void hideSwitch_data();
    void hideSwitch();
    void programPathIsNoHideSwitch();
    void exitEntryEndsTheProgram();
    void secondCopyShowsTheMessageAndEnds();
    void secondCopyHasItsTexts();
    void hiddenCopyCountsToo();
    void linesOfTheProcessListThatCount_data();
    void linesOfTheProcessListThatCount();
    void longNameIsCutToFifteenCharacters_data();
    void longNameIsCutToFifteenCharacters();
    void copiesUnderOtherNamesDoNotCount();
    void toolFolderIsCreatedAndLeftEmpty();
    void unwritableToolFolderLetsTheProgramStart_data();
    void unwritableToolFolderLetsTheProgramStart();
    void staleProcessListDoesNotCount();
    void plantedLinkIsNotWrittenThrough();

private:
    QProcess& Start(const QStringList& listArgument = {}, const QString& strProgram = c_strProgram);
    static void FakeProcessList(const QByteArray& lines);

    std::vector<std::unique_ptr<QProcess>> m_listProcess;
    QProcessEnvironment m_environment;
};

void tst_main::init()
{
    QDir(QStringLiteral("/opt/vora")).removeRecursively();
    m_environment = QProcessEnvironment::systemEnvironment();
    QDir(QStringLiteral("/tmp/fake")).removeRecursively();
    m_environment.insert(QStringLiteral("PATH"), QStringLiteral("/tmp/fake:") + qEnvironmentVariable("PATH"));
}

void tst_main::cleanup()
{
    for (const auto& pProcess : m_listProcess) {
        pProcess->terminate();
    }
    for (const auto& pProcess : m_listProcess) {
        pProcess->waitForFinished();
    }
    m_listProcess.clear();
    QTRY_VERIFY(TitledWindows().isEmpty());
    QTRY_VERIFY(TrayIcons().isEmpty());
}

QProcess& tst_main::Start(const QStringList& listArgument, const QString& strProgram)
{
    m_listProcess.push_back(std::make_unique<QProcess>());
    QProcess& process = *m_listProcess.back();
    process.setProcessEnvironment(m_environment);
    process.start(strProgram, listArgument);
    return process;
}

/// Makes "ps" print these lines.
void tst_main::FakeProcessList(const QByteArray& lines)
{
    QVERIFY(WriteFile(QStringLiteral("/tmp/fake/lines"), lines));
    QVERIFY(WriteScript(QStringLiteral("/tmp/fake/ps"), "echo \"$*\" > /tmp/fake/arguments\ncat /tmp/fake/lines\n"));
}

void tst_main::hideSwitch_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("no argument") << QStringList() << false;
    QTest::newRow("lower case") << QStringList{QStringLiteral("-hide")} << true;
    QTest::newRow("mixed case") << QStringList{QStringLiteral("-Hide")} << true;
    QTest::newRow("upper case after another") << QStringList{QStringLiteral("x"), QStringLiteral("-HIDE")} << true;
    QTest::newRow("before others") << QStringList{QStringLiteral("-hide"), QStringLiteral("x"), QStringLiteral("y")}
                                   << true;
    QTest::newRow("two dashes") << QStringList{QStringLiteral("--hide")} << false;
    QTest::newRow("longer") << QStringList{QStringLiteral("-hidden")} << false;
    QTest::newRow("shorter") << QStringList{QStringLiteral("-hid")} << false;
    QTest::newRow("no dash") << QStringList{QStringLiteral("hide")} << false;
    QTest::newRow("blank before") << QStringList{QStringLiteral(" -hide")} << false;
}

void tst_main::hideSwitch()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, hidden);
    Start(arguments);
    if (!hidden) {
        QTRY_COMPARE(MainWindows(), 1);
        return;
    }
    // The menu opens in the event loop, which runs after the window would have been shown.
    QTRY_COMPARE(TrayIcons().size(), 1);
    const QPoint icon = TrayIcons().first();
    Desktop({QStringLiteral("mousemove"), QString::number(icon.x() + 11), QString::number(icon.y() + 11),
             QStringLiteral("click"), QStringLiteral("3")});
    QTRY_VERIFY(TrayMenuIsOpen());
    QVERIFY(TitledWindows().isEmpty());
}

void tst_main::programPathIsNoHideSwitch()
{
    Start({QStringLiteral("-c"), QStringLiteral("exec -a -hide '%1'").arg(c_strProgram)}, QStringLiteral("bash"));
    QTRY_COMPARE(MainWindows(), 1);
}

void tst_main::exitEntryEndsTheProgram()
{
    QProcess& process = Start();
    QTRY_COMPARE(MainWindows(), 1);
    QTRY_COMPARE(TrayIcons().size(), 1);
    const QPoint icon = TrayIcons().first();
    Desktop({QStringLiteral("mousemove"), QString::number(icon.x() + 11), QString::number(icon.y() + 11),
             QStringLiteral("click"), QStringLiteral("3")});
    QTRY_VERIFY(TrayMenuIsOpen());
    Desktop({QStringLiteral("key"), QStringLiteral("Up"), QStringLiteral("Return")}); // the last entry
    QTRY_COMPARE(process.state(), QProcess::NotRunning);
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

void tst_main::secondCopyShowsTheMessageAndEnds()
{
    const QProcess& first = Start();
    QTRY_COMPARE(MainWindows(), 1);
    QTRY_COMPARE(TrayIcons().size(), 1);
    const QProcess& second = Start({QStringLiteral("-hide")}); // a hidden start is told just the same
    QTRY_VERIFY(!MessageBox().isEmpty());
    const QString strId = MessageBox();
    const QString strState = Output(QStringLiteral("xprop"), {QStringLiteral("-id"), strId});
    QVERIFY(strState.contains(QStringLiteral("_NET_WM_WINDOW_TYPE_DIALOG")));
    QVERIFY(strState.contains(QStringLiteral("_NET_WM_STATE_MODAL")));
    QCOMPARE(TrayIcons().size(), 1);
    QCOMPARE(MainWindows(), 1);
    QCOMPARE(second.state(), QProcess::Running);

    Desktop({QStringLiteral("windowactivate"), QStringLiteral("--sync"), strId, QStringLiteral("key"),
             QStringLiteral("Return")});
    QTRY_COMPARE(second.state(), QProcess::NotRunning);
    QCOMPARE(second.exitStatus(), QProcess::NormalExit);
    QCOMPARE(second.exitCode(), 0);
    QCOMPARE(first.state(), QProcess::Running);
    QCOMPARE(MainWindows(), 1);
    QCOMPARE(TrayIcons().size(), 1);
}

void tst_main::secondCopyHasItsTexts()
{
    Start();
    QTRY_COMPARE(MainWindows(), 1);
    m_environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
    Start();
    QTRY_VERIFY(!MessageBox().isEmpty());
    QTRY_COMPARE(AccessibleTexts().filter(QRegularExpression(QStringLiteral("^(label|push button|button): "))),
                 QStringList({QStringLiteral("label: 星原喷墨打印机助手已经处于运行中！"),
                              QStringLiteral("push button: 确  定")}));
}

void tst_main::hiddenCopyCountsToo()
{
    Start({QStringLiteral("-hide")});
    QTRY_COMPARE(TrayIcons().size(), 1);
    Start();
    QTRY_VERIFY(!MessageBox().isEmpty());
    QCOMPARE(MainWindows(), 0);
}

void tst_main::linesOfTheProcessListThatCount_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("running");
    const QByteArray own = "    100 ?        00:00:00 VoraPrinterTool\n";
    QTest::newRow("none") << QByteArray() << false;
    QTest::newRow("itself") << own << false;
    QTest::newRow("one other") << own + "    101 ?        00:00:00 VoraPrinterTool\n" << true;
    QTest::newRow("two others") << own + own + own << true;
    QTest::newRow("other letter case") << own + "101 VoraPrinterTool 00:00:00 voraprinterTOOL\n" << true;
    QTest::newRow("longer name") << own + "101 ? 00:00:00 VoraPrinterTool2\n" << false;
    QTest::newRow("name within a name") << own + "101 ? 00:00:00 myVoraPrinterTool\n" << false;
    QTest::newRow("three columns") << own + "101 ? VoraPrinterTool\n" << false;
    QTest::newRow("name in the second column") << own + "101 VoraPrinterTool 00:00:00 bash\n" << false;
    QTest::newRow("name in the third column") << own + "101 ? VoraPrinterTool bash\n" << false;
    QTest::newRow("name in the fifth column") << own + "101 ? 00:00:00 grep VoraPrinterTool\n" << false;
    QTest::newRow("name in the first column") << own + "VoraPrinterTool ? 00:00:00 bash\n" << false;
    QTest::newRow("more columns after the name") << own + "101 ? 00:00:00 VoraPrinterTool <defunct>\n" << true;
    QTest::newRow("trailing blanks") << own + "101 ? 00:00:00 VoraPrinterTool   \n" << true;
    QTest::newRow("trailing tab") << own + "101 ? 00:00:00 VoraPrinterTool\t\n" << true;
    QTest::newRow("carriage return") << own + "101 ? 00:00:00 VoraPrinterTool\r\n" << true;
    QTest::newRow("no line end") << own + "101 ? 00:00:00 VoraPrinterTool" << true;
    QTest::newRow("tabs are no separators") << own + "101\t?\t00:00:00\tVoraPrinterTool\n" << false;
}

void tst_main::linesOfTheProcessListThatCount()
{
    QFETCH(QByteArray, lines);
    QFETCH(bool, running);
    FakeProcessList(lines);
    Start();
    QTRY_VERIFY(!TitledWindows().isEmpty());
    QCOMPARE(MainWindows(), running ? 0 : 1);
    QCOMPARE(ReadFile(QStringLiteral("/tmp/fake/arguments")), QByteArray("-A\n"));
    QVERIFY(!QFile::exists(c_strProcessList));
}

void tst_main::longNameIsCutToFifteenCharacters_data()
{
    QTest::addColumn<QString>("second");
    QTest::newRow("same name") << QStringLiteral("/tmp/copies/printer-assistant-k507");
    QTest::newRow("name with the same fifteen characters") << QStringLiteral("/tmp/copies/printer-assistance");
}

void tst_main::longNameIsCutToFifteenCharacters()
{
    QFETCH(QString, second);
    const QString strFirst = QStringLiteral("/tmp/copies/printer-assistant-k507");
    QDir().mkpath(QStringLiteral("/tmp/copies"));
    QVERIFY(QFile::exists(strFirst) || QFile::copy(c_strProgram, strFirst));
    QVERIFY(QFile::exists(second) || QFile::copy(c_strProgram, second));
    Start({}, strFirst);
    QTRY_COMPARE(MainWindows(), 1);
    Start({}, second);
    QTRY_VERIFY(!MessageBox().isEmpty());
    QCOMPARE(MainWindows(), 1);
}

void tst_main::copiesUnderOtherNamesDoNotCount()
{
    const QString strOther = QStringLiteral("/tmp/copies/VoraPrinterTo");
    QDir().mkpath(QStringLiteral("/tmp/copies"));
    QVERIFY(QFile::copy(c_strProgram, strOther));
    Start();
    QTRY_COMPARE(MainWindows(), 1);
    Start({}, strOther); // its name finds the first copy's line too
    QTRY_COMPARE(TitledWindows().size(), 2);
    QCOMPARE(MainWindows(), 2);
}

void tst_main::toolFolderIsCreatedAndLeftEmpty()
{
    QVERIFY(!QFile::exists(QStringLiteral("/opt/vora")));
    Start();
    QTRY_COMPARE(MainWindows(), 1);
    const QDir folder(c_strToolFolder);
    QVERIFY(folder.exists());
    QCOMPARE(folder.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot), QStringList());
}

void tst_main::unwritableToolFolderLetsTheProgramStart_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::newRow("a folder in the list's place") << c_strProcessList + QStringLiteral("/inside");
    QTest::newRow("a file in the tool folder's place") << c_strToolFolder;
    QTest::newRow("a file in the package's place") << QStringLiteral("/opt/vora");
}

void tst_main::unwritableToolFolderLetsTheProgramStart()
{
    QFETCH(QString, obstacle);
    FakeProcessList("100 ? 00:00:00 VoraPrinterTool\n101 ? 00:00:00 VoraPrinterTool\n");
    QVERIFY(WriteFile(obstacle, "in the way"));
    Start();
    QTRY_VERIFY(!TitledWindows().isEmpty());
    QCOMPARE(MainWindows(), 1);
    QCOMPARE(ReadFile(obstacle), QByteArray("in the way"));
    QFile::remove(QStringLiteral("/opt/vora"));
}

void tst_main::staleProcessListDoesNotCount()
{
    FakeProcessList(QByteArray());
    QVERIFY(WriteFile(c_strProcessList, "100 ? 00:00:00 VoraPrinterTool\n101 ? 00:00:00 VoraPrinterTool\n"));
    Start();
    QTRY_VERIFY(!TitledWindows().isEmpty());
    QCOMPARE(MainWindows(), 1);
    QVERIFY(!QFile::exists(c_strProcessList));
}

void tst_main::plantedLinkIsNotWrittenThrough()
{
    const QString strVictim = QStringLiteral("/tmp/fake/victim");
    QVERIFY(WriteFile(strVictim, "precious"));
    QVERIFY(QDir().mkpath(c_strToolFolder));
    QVERIFY(QFile::link(strVictim, c_strProcessList));
    Start();
    QTRY_COMPARE(MainWindows(), 1);
    QCOMPARE(ReadFile(strVictim), QByteArray("precious"));
    QVERIFY(!QFileInfo(c_strProcessList).isSymLink());
}

QTEST_GUILESS_MAIN(tst_main)

#include "tst_main.moc"
