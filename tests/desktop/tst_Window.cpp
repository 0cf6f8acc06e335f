// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "GoldenColumns.h"

#include <QImage>
#include <QScopeGuard>

#include <algorithm>
#include <functional>

namespace {

const QString c_strTitle = u"星原喷墨打印机助手"_s;
const QString c_strLongError = u"纸张尺寸不匹配，请选择匹配的纸张，按OK键取消任务"_s;

// Of _MOTIF_WM_HINTS: "... = flags, functions, decorations, ...".
constexpr int c_iMaximiseFunction = 0x10;
constexpr int c_iMaximiseDecoration = 0x40;

enum enColumn
{
    enColumnName = 0,
    enColumnConnection = 1,
    enColumnInk = 2,
    enColumnState = 3
};

/// A display of two screens, of 1280 x 800 and 1920 x 600 pixels, which the server puts one over the other: 1920 x 800
/// together. In place of the test's own as long as this object lives. The server's RandR knows the first screen alone.
class TwoScreens
{
public:
    TwoScreens()
    {
        m_server.start(u"Xvfb"_s, u":99 -extension RANDR -screen 0 1280x800x24 "
                                  "-screen 1 1920x600x24 +xinerama -nolisten tcp -noreset"_s.split(QLatin1Char(' ')));
        qputenv("DISPLAY", ":99");
    }

    bool StartWindowManager()
    {
        const auto isServerReady = [] { return !Desktop::Run(u"xdpyinfo"_s, {}).isEmpty(); };
        if (!QTest::qWaitFor(isServerReady)) {
            return false;
        }
        m_windowManager.start(u"openbox"_s, QStringList());
        return QTest::qWaitFor(Desktop::HasWindowManager);
    }

    ~TwoScreens()
    {
        m_windowManager.kill();
        m_windowManager.waitForFinished();
        m_server.kill();
        m_server.waitForFinished();
        qputenv("DISPLAY", m_oldDisplay);
    }

    TwoScreens(const TwoScreens&) = delete;
    TwoScreens& operator=(const TwoScreens&) = delete;

private:
    QByteArray m_oldDisplay = qgetenv("DISPLAY");
    QProcess m_server;
    QProcess m_windowManager;
};

bool IsOfOneColour(const QImage& image)
{
    QImage plain = image;
    plain.fill(image.pixel(0, 0));
    return plain == image;
}

QImage Screen()
{
    const QString strPath = u"/tmp/screen.png"_s;
    Desktop::SavePicture(strPath);
    return QImage(strPath).convertToFormat(QImage::Format_RGB32);
}

QImage RightEnd(const QImage& picture)
{
    return picture.copy(picture.rect().adjusted(picture.width() - 20, 0, 0, 0));
}

/// Whether a text is painted in a cell and ends 20 pixels or more before it does.
bool IsWhole(const QImage& cell)
{
    return !IsOfOneColour(cell) && IsOfOneColour(RightEnd(cell));
}

} // namespace

/// The main window as the window manager and the user's eye find it.
class tst_Window : public DesktopTest
{
    Q_OBJECT

private slots:
    void hasTitleAndFixedSize()
    {
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow()); // with the title, of 860 x 300
        const Desktop::Window window = *m_tool->MainWindow();
        QVERIFY(Desktop::Property(window, u"_NET_WM_NAME"_s).contains(c_strTitle));
        const QString strHints = Desktop::Property(window, u"WM_NORMAL_HINTS"_s);
        QVERIFY(strHints.contains(QLatin1String("minimum size: 860 by 300")));
        QVERIFY(strHints.contains(QLatin1String("maximum size: 860 by 300")));
        TryToResize();
    }

    void isInTheMiddleOfTheScreen()
    {
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->MainWindow()),
                     QPoint(210, 250)); // (1280 - 860) / 2, (800 - 300) / 2
    }

    void isInTheMiddleOfTwoScreens()
    {
        TwoScreens screens;
        QVERIFY(screens.StartWindowManager());
        m_tool = std::make_unique<Tool>();
        const auto endBeforeTheDisplay = qScopeGuard([this] { m_tool = std::make_unique<Tool>(); });
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        QTRY_COMPARE(Desktop::FramePosition(*m_tool->MainWindow()),
                     QPoint(530, 250)); // (1920 - 860) / 2, (800 - 300) / 2
    }

    void maximiseButtonIsGoneUntilShownFromTheTray()
    {
        StartWithTray();
        QVERIFY(m_tool->MainWindow());
        QCOMPARE(MotifHint(1) & c_iMaximiseFunction, 0);
        QCOMPARE(MotifHint(2) & c_iMaximiseDecoration, 0);

        Desktop::CloseWindow(*m_tool->MainWindow());
        QTRY_VERIFY(!m_tool->MainWindow());
        QVERIFY(m_tray->ShowWindow(*m_tool));
        QCOMPARE(MotifHint(1) & c_iMaximiseFunction, c_iMaximiseFunction);
        QCOMPARE(MotifHint(2) & c_iMaximiseDecoration, c_iMaximiseDecoration);
        TryToResize();
    }

    void closeButtonHidesIt()
    {
        WriteReadyPrinters({u"Office"_s});
        StartWithTray();
        QTRY_COMPARE(m_tool->Cell(0, enColumnState), u"就绪"_s);
        Desktop::CloseWindow(*m_tool->MainWindow());
        QTRY_VERIFY(!m_tool->MainWindow());

        WriteStatus(u"Office"_s, Reply(0x11));
        QVERIFY(m_tray->ShowWindow(*m_tool));
        QTRY_COMPARE(m_tool->Cell(0, enColumnState), u"正在扫描"_s);
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void hideSwitch_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<bool>("shown");
        QTest::newRow("-hide") << QStringList{u"-hide"_s} << false;
        QTest::newRow("-HIDE") << QStringList{u"-HIDE"_s} << false;
        QTest::newRow("x -Hide") << QStringList{u"x"_s, u"-Hide"_s} << false;
        QTest::newRow("-hide x y") << QStringList{u"-hide"_s, u"x"_s, u"y"_s} << false;
        QTest::newRow("--hide") << QStringList{u"--hide"_s} << true;
        QTest::newRow("-hidden") << QStringList{u"-hidden"_s} << true;
        QTest::newRow("-hid") << QStringList{u"-hid"_s} << true;
        QTest::newRow("hide") << QStringList{u"hide"_s} << true;
        QTest::newRow("blank before") << QStringList{u" -hide"_s} << true;
    }

    void hideSwitch()
    {
        QFETCH(QStringList, arguments);
        QFETCH(bool, shown);
        if (shown) {
            m_tool->Start(arguments);
            QTRY_VERIFY(m_tool->MainWindow());
            return;
        }
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        m_tool->Start(arguments);
        QVERIFY(WaitForTrayIcon());
        QVERIFY(m_tray->ChooseFromMenu(*m_tool,
                                       TrayHost::enMenuSettings)); // a main window would be shown before the settings
        QTRY_VERIFY(m_tool->SettingsWindow());
        QVERIFY(!m_tool->MainWindow());
        QVERIFY(m_tray->ShowWindow(*m_tool));
    }

    void columnsHaveTheirHeadersAndWidths()
    {
        m_tool->Start();
        const Accessibility& access = m_tool->Access();
        QTRY_COMPARE(access.ColumnHeaders(m_tool->Class()).size(), GoldenColumns().size());
        const QList<AccessibleNode> listHeader = access.ColumnHeaders(m_tool->Class());
        for (int i = 0; i < listHeader.size(); ++i) {
            const stGoldenColumn column = GoldenColumns().at(i);
            QCOMPARE(access.Name(listHeader.at(i)), column.strHeader);
            const int iWidth = access.Extents(listHeader.at(i)).width();
            QVERIFY2(i + 1 < listHeader.size() ? iWidth == column.iWidth : iWidth >= column.iWidth,
                     qPrintable(QString::number(iWidth)));
        }

        // The last column reaches the table's right edge but for its frame.
        const QRect table = access.Extents(*access.Find(m_tool->Class(), u"table"_s));
        QCOMPARE(table.topLeft(), m_tool->MainWindow()->geometry.topLeft() + QPoint(20, 20));
        QCOMPARE(table.size(), QSize(820, 260));
        QVERIFY(table.right() - access.Extents(listHeader.last()).right() <= 2);
    }

    void textsFitTheirCells_data()
    {
        using List = QList<int>;
        QTest::addColumn<QList<int>>("rawStates");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("first six") << List{0x00, 0x01, 0x02, 0x03, 0x10, 0x11}
                                   << QStringList{u"就绪"_s,         u"初始化"_s,   u"忙碌"_s,
                                                  u"正在取消任务"_s, u"正在打印"_s, u"正在扫描"_s};
        QTest::newRow("last seven") << List{0x12, 0x13, 0x20, 0x21, 0x22, 0x23, 0xFF}
                                    << QStringList{u"正在复印"_s, u"正在打印报告"_s, u"清洁模式"_s,
                                                   u"校准模式"_s, u"打印机任务中"_s, u"正在打印Debug报告"_s,
                                                   u"未知"_s};
    }

    /// The printers are off-line at first, so that every cell gets another text than it had.
    void textsFitTheirCells()
    {
        QFETCH(QList<int>, rawStates);
        QFETCH(QStringList, texts);
        FakeProgram(u"cancel"_s, "");
        QList<stPrinterInfo> listPrinter;
        for (int i = 0; i < texts.size(); ++i) {
            listPrinter.append({u"Printer%1"_s.arg(i), QString(), 1, QString(), QString()});
        }
        WritePrinters(listPrinter);
        Desktop::MoveMouse({0, 0});
        m_tool->Start();
        QTRY_COMPARE(m_tool->RowCount(), static_cast<int>(texts.size()));
        for (int iRow = 0; iRow < texts.size(); ++iRow) {
            QCOMPARE(m_tool->Cell(iRow, enColumnState), u"脱机"_s);
        }
        QList<QImage> listBefore;
        const auto areWhole = [](const QList<QImage>& listCell) {
            return std::all_of(listCell.begin(), listCell.end(), IsWhole);
        };
        QTRY_VERIFY(areWhole(listBefore = InkAndStatePictures()));

        for (int iRow = 0; iRow < texts.size(); ++iRow) {
            stStatusReply reply = Reply(static_cast<quint8>(rawStates.at(iRow)));
            reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, 39), MakeSuppliesRecord(enSuppliesRedInk, 30),
                                  MakeSuppliesRecord(enSuppliesYellowInk, 20),
                                  MakeSuppliesRecord(enSuppliesBlackInk, 16)};
            WriteStatus(listPrinter.at(iRow).strPrinterName, reply);
        }
        for (int iRow = 0; iRow < texts.size(); ++iRow) {
            QTRY_COMPARE(m_tool->Cell(iRow, enColumnState), texts.at(iRow));
            QCOMPARE(m_tool->Cell(iRow, enColumnInk), u"青色：较低   红色：较低   黄色：较低   黑色：较低"_s);
        }
        QList<QImage> listAfter;
        QTRY_VERIFY(std::equal(listBefore.begin(), listBefore.end(), (listAfter = InkAndStatePictures()).begin(),
                               std::not_equal_to<>())); // all painted anew
        QVERIFY(areWhole(listAfter));
    }

    void toolTipsCarryWholeTexts()
    {
        const QString strLongName = QString(u"彩色打印机Office"_s).repeated(6).left(60);
        const QString strLongPort = u"printserver.east-wing.example.org"_s;
        const QString strTagName = u"<b>Office"_s;
        WritePrinters({{strLongName, QString(), 0, strLongPort, QString()},
                       {u"Office"_s, QString(), 1, QString(), QString()},
                       {strTagName, QString(), 1, QString(), QString()}});
        WriteStatus(strLongName, Reply(0x10, {0x6105}));
        WriteStatus(u"Office"_s, Reply(0x10, {}, {0x6105}));
        m_tool->Start();
        const QString strWarning = u"正在打印("_s + c_strLongError + QLatin1Char(')');
        QTRY_COMPARE(m_tool->Cell(0, enColumnState), c_strLongError);
        QTRY_COMPARE(m_tool->Cell(1, enColumnState), strWarning);
        for (const QPoint cell : {QPoint(0, enColumnName), QPoint(0, enColumnConnection), QPoint(0, enColumnState),
                                  QPoint(1, enColumnState)}) {
            QTRY_VERIFY(!IsOfOneColour(RightEnd(CellPicture(cell.x(), cell.y())))); // cut
        }
        QVERIFY(IsWhole(CellPicture(1, enColumnName)));

        QTRY_COMPARE(ToolTipAt(0, enColumnState), QStringList{c_strLongError});
        QTRY_COMPARE(ToolTipAt(1, enColumnState), QStringList{strWarning});
        QTRY_COMPARE(ToolTipAt(0, enColumnName), QStringList{strLongName});
        QTRY_COMPARE(ToolTipAt(0, enColumnConnection), QStringList{u"网络("_s + strLongPort + QLatin1Char(')')});
        QTRY_COMPARE(ToolTipAt(1, enColumnName), QStringList{u"Office"_s}); // a text that fits has one too
        QTRY_COMPARE(ToolTipAt(2, enColumnName), QStringList{strTagName});
    }

private:
    /// A move after the resize tells when the window manager is through with both.
    void TryToResize() const
    {
        const Desktop::Window window = *m_tool->MainWindow();
        for (const QSize size : {QSize(1000, 500), QSize(400, 200)}) {
            Desktop::Run(u"xdotool"_s, {u"windowsize"_s, window.strId, QString::number(size.width()),
                                        QString::number(size.height())});
        }
        Desktop::Run(u"wmctrl"_s, {u"-i"_s, u"-r"_s, window.strId, u"-b"_s, u"add,maximized_vert,maximized_horz"_s});
        Desktop::Run(u"xdotool"_s, {u"windowmove"_s, window.strId, u"30"_s, u"40"_s});
        const auto isMoved = [&] {
            const QList<Desktop::Window> listWindow = Desktop::Windows(m_tool->Class());
            return std::any_of(listWindow.begin(), listWindow.end(), [&](const Desktop::Window& other) {
                return other.strId == window.strId && Desktop::FramePosition(other) == QPoint(30, 40);
            });
        };
        QTRY_VERIFY(isMoved());
        QVERIFY(m_tool->MainWindow()); // of 860 x 300
    }

    int MotifHint(int iField) const
    {
        const QString strHints = Desktop::Property(*m_tool->MainWindow(), u"_MOTIF_WM_HINTS"_s);
        return strHints.section(QLatin1Char('='), 1)
            .section(QLatin1Char(','), iField, iField)
            .trimmed()
            .toInt(nullptr, 16);
    }

    QRect CellRect(int iRow, int iColumn) const
    {
        const std::optional<AccessibleNode> cell = m_tool->Access().CellNode(m_tool->Class(), iRow, iColumn);
        return cell ? m_tool->Access().Extents(*cell) : QRect();
    }

    /// What is painted in a cell, without the lines and the focus frame at its border.
    QImage CellPicture(int iRow, int iColumn) const
    {
        return Screen().copy(CellRect(iRow, iColumn).adjusted(2, 2, -2, -2));
    }

    QList<QImage> InkAndStatePictures() const
    {
        QList<QImage> listPicture;
        const QImage screen = Screen();
        for (int iRow = 0; iRow < m_tool->RowCount(); ++iRow) {
            for (const int iColumn : {enColumnInk, enColumnState}) {
                listPicture.append(screen.copy(CellRect(iRow, iColumn).adjusted(2, 2, -2, -2)));
            }
        }
        return listPicture;
    }

    QStringList ToolTipAt(int iRow, int iColumn) const
    {
        Desktop::MoveMouse(CellRect(iRow, iColumn).center());
        return m_tool->Access().Names(m_tool->Class(), u"tool tip"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Window)

#include "tst_Window.moc"
