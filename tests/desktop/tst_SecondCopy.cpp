// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QImage>
#include <QMessageBox>
#include <QScopeGuard>

#include <functional>
#include <memory>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

using End = std::function<void(const Desktop::Window&)>;
using Plant = std::function<bool()>;
Q_DECLARE_METATYPE(End)
Q_DECLARE_METATYPE(Plant)

namespace {

const QString c_strProgram = u"VoraPrinterTool"_s;
const QString c_strTitle = u"星原喷墨打印机助手"_s;
const QString c_strText = u"星原喷墨打印机助手已经处于运行中！"_s;
const QString c_strButton = u"确  定"_s;

constexpr QSize c_mainWindow(860, 300);

const QString c_strOpt = u"/opt/vora"_s;
const QString c_strToolFolder = u"/opt/vora/vora-printer-k507/tool"_s;
const QString c_strProcessList = c_strToolFolder + u"/pslist.tmp"_s;

const QString c_strNowhere = u"/tmp/nowhere"_s;
const QString c_strVictim = u"/tmp/victim"_s;

const QString c_strOffice = u"Office"_s;

std::optional<Desktop::Window> MessageBox()
{
    return Desktop::FindWindow(c_strProgram, c_strTitle, {1, 1}, {c_mainWindow.width() - 1, c_mainWindow.height() - 1});
}

int MainWindows()
{
    int iCount = 0;
    for (const Desktop::Window& window : Desktop::Windows(u"VoraPrinter"_s)) {
        iCount += window.strTitle == c_strTitle && window.geometry.size() == c_mainWindow ? 1 : 0;
    }
    return iCount;
}

/// A process of any name that does nothing.
class IdleProcess
{
public:
    explicit IdleProcess(const QString& strName)
    {
        m_process.start(u"sh"_s, {u"-c"_s, u"printf %s \"$1\" > /proc/$$/comm; read -r line"_s, u"sh"_s, strName});
        m_process.waitForStarted();
    }
    ~IdleProcess()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// A copy of the program, of this user or of one without rights.
class RunningCopy
{
public:
    explicit RunningCopy(bool bAnotherUser)
    {
        // The build folder may be closed to others.
        const QString strCopy = u"/tmp/"_s + c_strProgram;
        QFile::copy(QStringLiteral(VORA_TOOL), strCopy);
        const QStringList listCommand = {u"env"_s, u"HOME=/nonexistent"_s, strCopy};
        const QString strOther = u"--reuid=65534 --regid=65534 --clear-groups"_s;
        m_process.start(bAnotherUser ? u"setpriv"_s : listCommand.first(),
                        bAnotherUser ? strOther.split(QLatin1Char(' ')) + listCommand : listCommand.mid(1));
    }
    ~RunningCopy()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

/// Whether all of picture that is not transparent can be found somewhere in screen.
bool Contains(const QImage& screen, const QImage& picture)
{
    const auto isAt = [&](int iX, int iY) {
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QRgb pixel = picture.pixel(x, y);
                if (qAlpha(pixel) == 255 && pixel != screen.pixel(iX + x, iY + y)) {
                    return false;
                }
            }
        }
        return true;
    };
    for (int iY = 0; iY + picture.height() <= screen.height(); ++iY) {
        for (int iX = 0; iX + picture.width() <= screen.width(); ++iX) {
            if (isAt(iX, iY)) {
                return true;
            }
        }
    }
    return false;
}

bool ShowsIcon(const Desktop::Window& window, QMessageBox::Icon icon)
{
    const QString strPath = u"/tmp/screen.png"_s;
    Desktop::SavePicture(strPath);
    return Contains(QImage(strPath).copy(window.geometry),
                    QMessageBox(icon, QString(), QString()).iconPixmap().toImage());
}

} // namespace

/// What a second start of the program does, and what it takes for a copy of itself.
class tst_SecondCopy : public DesktopTest
{
    Q_OBJECT

private slots:
    void messageBoxSaysThatACopyRuns()
    {
        StartFirstCopy();
        Tool second;
        second.Start();
        QTRY_VERIFY(MessageBox());
        QCOMPARE(MainWindows(), 1);

        std::optional<AccessibleNode> box;
        QTRY_VERIFY(box = second.Access().Find(c_strProgram, u"alert message"_s));
        QCOMPARE(second.Access().Name(*box), c_strTitle);
        QCOMPARE(second.Access().NamesWithin(*box, u"push button"_s), QStringList(c_strButton));
        QStringList listLabel = second.Access().NamesWithin(*box, u"label"_s);
        listLabel.removeAll(QString()); // the icon
        QCOMPARE(listLabel, QStringList(c_strText));

        QTRY_VERIFY(ShowsIcon(*MessageBox(), QMessageBox::Information));
        for (const QMessageBox::Icon icon : {QMessageBox::Warning, QMessageBox::Critical, QMessageBox::Question}) {
            QVERIFY(!ShowsIcon(*MessageBox(), icon));
        }
    }

    void endsWithItsMessageBox_data()
    {
        const auto pressing = [](const QString& strKey) {
            return [strKey](const Desktop::Window&) { Desktop::PressKey(strKey); };
        };
        QTest::addColumn<End>("end");
        QTest::newRow("Return") << End(pressing(u"Return"_s));
        QTest::newRow("Escape") << End(pressing(u"Escape"_s));
        QTest::newRow("closed by the window manager") << End(&Desktop::CloseWindow);
        QTest::newRow("click on the button") << End([](const Desktop::Window& window) {
            const Accessibility accessibility;
            const std::optional<AccessibleNode> button =
                accessibility.Find(c_strProgram, u"push button"_s, c_strButton);
            if (button) {
                Desktop::Click(window, accessibility.Extents(*button).center() - window.geometry.topLeft());
            }
        });
    }

    void endsWithItsMessageBox()
    {
        QFETCH(End, end);
        StartFirstCopy();
        Tool second;
        second.Start();
        std::optional<Desktop::Window> box;
        QTRY_VERIFY(box = MessageBox());
        QTRY_VERIFY(second.Access().Find(c_strProgram, u"push button"_s, c_strButton));
        QTRY_COMPARE(Desktop::ActiveWindow(), box->strId);
        end(*box);
        QVERIFY(second.Process().waitForFinished(5000));
        QCOMPARE(second.Process().exitStatus(), QProcess::NormalExit);
        QCOMPARE(second.Process().exitCode(), 0);
        QVERIFY(!MessageBox());
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void leavesTheFirstCopyAlone()
    {
        WriteReadyPrinters({c_strOffice});
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        const QRect geometry = m_tool->MainWindow()->geometry;
        const QRect icon = m_tool->TrayIcon()->geometry;

        Tool second;
        second.Start({u"-hide"_s}); // it says so just the same
        QTRY_VERIFY(MessageBox());
        WriteStatus(c_strOffice, Reply(0x10));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在打印"_s);
        QCOMPARE(m_tool->MainWindow()->geometry, geometry);
        QCOMPARE(m_tool->TrayIcon()->geometry, icon);

        Desktop::CloseWindow(*MessageBox());
        QVERIFY(second.Process().waitForFinished(5000));
        WriteStatus(c_strOffice, Reply(0x11));
        QTRY_COMPARE(m_tool->Cell(0, 3), u"正在扫描"_s);
        WriteReadyPrinters({c_strOffice, u"Study"_s});
        QTRY_COMPARE(m_tool->RowCount(), 2);
        QCOMPARE(m_tool->MainWindow()->geometry, geometry);
        QCOMPARE(m_tool->TrayIcon()->geometry, icon);
        ExitByMenu();
    }

    void toolFolderIsMadeAnew()
    {
        StartFirstCopy();
        QVERIFY(QDir(c_strOpt).removeRecursively());
        Tool second;
        second.Start();
        QTRY_VERIFY(MessageBox());
        QCOMPARE(MainWindows(), 1);
        QVERIFY(QFileInfo(c_strToolFolder).isDir());
        QVERIFY(QDir(c_strToolFolder).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot));
    }

    void startsWhenTheToolFolderCannotBeWritten_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::addColumn<QString>("target"); // of a link, else the obstacle is a file
        QTest::newRow("a file for the package") << c_strOpt << QString();
        QTest::newRow("a link to nowhere for the folder") << c_strToolFolder << c_strNowhere;
        QTest::newRow("a link to itself for the package") << c_strOpt << c_strOpt;
    }

    void startsWhenTheToolFolderCannotBeWritten()
    {
        QFETCH(QString, obstacle);
        QFETCH(QString, target);
        const auto tidy = qScopeGuard([] { QFile::remove(c_strOpt); });
        StartFirstCopy();
        QVERIFY(QDir(obstacle).removeRecursively());
        QVERIFY(target.isEmpty() ? WriteFile(obstacle, "in the way") : QFile::link(target, obstacle));
        Tool second;
        second.Start();
        QTRY_COMPARE(MainWindows(), 2);
        QVERIFY(!MessageBox());
        QVERIFY(!QFile::exists(c_strNowhere));
        QCOMPARE(ReadFile(obstacle), target.isEmpty() ? QByteArray("in the way") : QByteArray());
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void startsWhenTheToolFolderIsOfAnotherUser()
    {
        QVERIFY(QDir().mkpath(c_strToolFolder));
        StartFirstCopy();
        const bool bRoot = ::geteuid() == 0; // who can write to every folder, and can become another
        const auto tidy = qScopeGuard([] { ::chmod(c_strToolFolder.toLocal8Bit().constData(), 0755); });
        QCOMPARE(::chmod(c_strToolFolder.toLocal8Bit().constData(), bRoot ? 0755 : 0555), 0);
        RunningCopy second(bRoot);
        QTRY_COMPARE(MainWindows(), 2);
        QVERIFY(!MessageBox());
    }

    void whateverStandsInThePlaceOfTheProcessList_data()
    {
        QTest::addColumn<Plant>("plant");
        QTest::newRow("a list without the program")
            << Plant([] { return WriteFile(c_strProcessList, "1 ? 00:00:00 sh\n"); });
        QTest::newRow("a list of many copies") << Plant(
            [] { return WriteFile(c_strProcessList, QByteArray("100 ? 00:00:00 VoraPrinterTool\n").repeated(1000)); });
        QTest::newRow("a link") << Plant([] { return QFile::link(c_strVictim, c_strProcessList); });
        QTest::newRow("a link without target") << Plant([] { return QFile::link(c_strNowhere, c_strProcessList); });
        QTest::newRow("a FIFO") << Plant(
            [] { return ::mkfifo(c_strProcessList.toLocal8Bit().constData(), 0666) == 0; });
    }

    void whateverStandsInThePlaceOfTheProcessList()
    {
        QFETCH(Plant, plant);
        QVERIFY(WriteFile(c_strVictim, "precious"));
        const auto isClean = [&] {
            return ReadFile(c_strVictim) == "precious" && !QFile::exists(c_strNowhere) &&
                   !QFileInfo::exists(c_strProcessList) && !QFileInfo(c_strProcessList).isSymLink();
        };
        QVERIFY(QDir().mkpath(c_strToolFolder));
        QVERIFY(plant());
        StartFirstCopy();
        QVERIFY(isClean());

        QVERIFY(plant());
        Tool second;
        second.Start();
        QTRY_VERIFY(MessageBox());
        QCOMPARE(MainWindows(), 1);
        QVERIFY(isClean());
    }

    void otherNamesDoNotCount()
    {
        // Of another name, which is shorter than what the system shows of a name.
        const QString strCopy = u"/tmp/VoraPrinter"_s;
        QVERIFY(QFile::exists(strCopy) || QFile::copy(QStringLiteral(VORA_TOOL), strCopy));
        const QStringList listName = {u"xVoraPrinter"_s, u"VoraPrinterToo"_s, u"my VoraPrinter"_s, u"VoraPrinter."_s};
        std::vector<std::unique_ptr<IdleProcess>> listProcess;
        for (const QString& strName : listName) {
            listProcess.push_back(std::make_unique<IdleProcess>(strName));
            QTRY_VERIFY(Desktop::ProcessNames().contains(strName));
        }
        StartFirstCopy(); // its name begins with the other's
        Tool other(strCopy);
        other.Start();
        QTRY_COMPARE(MainWindows(), 2);
    }

    void nameIsAllThatCounts()
    {
        const IdleProcess process(c_strProgram);
        QTRY_VERIFY(Desktop::ProcessNames().contains(c_strProgram));
        m_tool->Start();
        QTRY_VERIFY(MessageBox());
        QCOMPARE(MainWindows(), 0);
    }

    void copyOfAnyUserCounts_data()
    {
        QTest::addColumn<bool>("anotherUser");
        QTest::newRow("the same user") << false;
        if (::geteuid() == 0) { // who alone can become another
            QTest::newRow("another user") << true;
        }
    }

    void copyOfAnyUserCounts()
    {
        QFETCH(bool, anotherUser);
        RunningCopy first(anotherUser);
        QTRY_COMPARE(MainWindows(), 1);
        m_tool->Start();
        QTRY_VERIFY(MessageBox());
        QCOMPARE(MainWindows(), 1);
    }

private:
    void StartFirstCopy()
    {
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
    }
};

QTEST_MAIN(tst_SecondCopy)

#include "tst_SecondCopy.moc"
