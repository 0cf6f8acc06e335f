// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "WindowTest.h"

#include <QApplication>
#include <QLabel>
#include <QStyle>
#include <QtTest>

namespace {

/// Qt's own balloon on trays that embed a window; null while none is open.
QWidget* Balloon()
{
    for (QWidget* pWidget : QApplication::topLevelWidgets()) {
        if (pWidget->inherits("QBalloonTip") && pWidget->isVisible()) {
            return pWidget;
        }
    }
    return nullptr;
}

/// The title and the text of the open balloon, without those that have none.
QStringList BalloonTexts()
{
    QStringList listText;
    if (const QWidget* pBalloon = Balloon()) {
        for (const QLabel* pLabel : pBalloon->findChildren<QLabel*>()) {
            if (!pLabel->text().isEmpty()) {
                listText.append(pLabel->text());
            }
        }
    }
    return listText;
}

bool BalloonShows(QStyle::StandardPixmap enIcon)
{
    for (const QLabel* pLabel : Balloon()->findChildren<QLabel*>()) {
        const auto pixmap = pLabel->property("pixmap").value<QPixmap>();
        if (!pixmap.isNull()) {
            return pixmap.toImage() == QApplication::style()->standardIcon(enIcon).pixmap(pixmap.size()).toImage();
        }
    }
    return false;
}

} // namespace

/// A printer's report: its state in the table and its balloon.
class tst_StatusSlot : public WindowTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QTRY_VERIFY(QSystemTrayIcon::isSystemTrayAvailable()); }

    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
        StopListWorker(*m_pWindow);
        QTRY_VERIFY(m_pWindow->m_pTrayIcon->geometry().top() > 0); // the tray has given the icon its place
    }

    void cleanup()
    {
        CloseBalloon();
        m_pWindow.reset();
    }

    void stateHasItsText_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("text");
        for (const stGoldenCode& code : GoldenStates()) {
            QTest::newRow(QByteArray::number(code.iValue).constData()) << code.iValue << code.strChinese;
        }
        QTest::newRow("beyond the table") << c_iNoValue << QString();
        QTest::newRow("negative") << -1 << QString();
        QTest::newRow("far beyond") << 2147483647 << QString();
    }

    void stateHasItsText()
    {
        QFETCH(int, state);
        QFETCH(QString, text);
        stPrinterState printerState;
        printerState.enCurrentStatus = state;
        ReportState(*m_pWindow, printerState);
        QCOMPARE(Cell(0, 3), text);
        QVERIFY(Balloon() == nullptr);
    }

    void errorHasItsTextAndBalloon_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("0") << 0 << u"错误状态未知"_s;
        QTest::newRow("6") << 6 << u"进纸托盘处卡纸，请取出纸张"_s;
        QTest::newRow("13") << 13 << u"进纸托盘处卡纸,请取出纸张"_s;
        QTest::newRow("35") << 35 << u"青色墨水空，请及时更换墨水瓶"_s;
        QTest::newRow("45") << 45 << u"故障#5201，请断电重启"_s;
        QTest::newRow("42, a code without text") << 42 << QString();
        QTest::newRow("beyond the table") << c_iNoValue << QString();
        QTest::newRow("negative") << -1 << QString();
    }

    void errorHasItsTextAndBalloon()
    {
        QFETCH(int, code);
        QFETCH(QString, text);
        stPrinterState state;
        state.enCurrentStatus = enStatusPrinting;
        state.listErrorStatus = {static_cast<enErrorStatus>(code), enErrorMemoryFull};
        ReportState(*m_pWindow, state);
        QCOMPARE(Cell(0, 3), text);
        QStringList listBalloon = {u"Office"_s, text};
        listBalloon.removeAll(QString());
        QTRY_COMPARE(BalloonTexts(), listBalloon);
        QVERIFY(BalloonShows(QStyle::SP_MessageBoxCritical));
    }

    void warningShowsInTheTableWhilePrintingOnly_data()
    {
        QTest::addColumn<int>("state");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("balloon");
        const QString strLow = u"墨水量低"_s;
        QTest::newRow("printing") << 8 << 25 << u"正在打印(墨水量低)"_s << strLow;
        QTest::newRow("ready") << 3 << 25 << u"就绪"_s << strLow;
        QTest::newRow("off-line") << 2 << 25 << u"脱机"_s << strLow;
        QTest::newRow("error state") << 7 << 25 << u"错误"_s << strLow;
        QTest::newRow("scanning") << 9 << 25 << u"正在扫描"_s << strLow;
        QTest::newRow("copying") << 10 << 25 << u"正在复印"_s << strLow;
        QTest::newRow("reporting") << 11 << 25 << u"正在打印报告"_s << strLow;
        QTest::newRow("printing, cyan low has no Chinese text") << 8 << 28 << u"正在打印()"_s << QString();
        QTest::newRow("ready, magenta low has no Chinese text") << 3 << 29 << u"就绪"_s << QString();
        QTest::newRow("ready, yellow low has no Chinese text") << 3 << 30 << u"就绪"_s << QString();
        QTest::newRow("printing, code beyond the table") << 8 << c_iNoValue << u"正在打印()"_s << QString();
    }

    void warningShowsInTheTableWhilePrintingOnly()
    {
        QFETCH(int, state);
        QFETCH(int, code);
        QFETCH(QString, cell);
        QFETCH(QString, balloon);
        stPrinterState printerState;
        printerState.enCurrentStatus = state;
        printerState.listWarningStatus = {static_cast<enErrorStatus>(code), enErrorMemoryFull};
        ReportState(*m_pWindow, printerState);
        QCOMPARE(Cell(0, 3), cell);
        QStringList listBalloon = {u"Office"_s, balloon};
        listBalloon.removeAll(QString());
        QTRY_COMPARE(BalloonTexts(), listBalloon);
        QVERIFY(BalloonShows(QStyle::SP_MessageBoxWarning));
    }

    void errorComesBeforeWarning()
    {
        stPrinterState state;
        state.enCurrentStatus = enStatusPrinting;
        state.listErrorStatus = {enErrorNoPaper, enErrorPaperJam};
        state.listWarningStatus = {enErrorBlackInkLow};
        ReportState(*m_pWindow, state);
        QCOMPARE(Cell(0, 3), u"进纸托盘处无纸,请放入纸张"_s);
        QTRY_COMPARE(BalloonTexts(), QStringList({u"Office"_s, u"进纸托盘处无纸,请放入纸张"_s}));
        QVERIFY(BalloonShows(QStyle::SP_MessageBoxCritical));
    }

    void everyReportShowsABalloon()
    {
        stPrinterState state;
        state.listWarningStatus = {enErrorBlackInkLow};
        for (int i = 0; i < 3; ++i) {
            ReportState(*m_pWindow, state);
            QTRY_VERIFY(Balloon() != nullptr);
            CloseBalloon();
            QVERIFY(Balloon() == nullptr);
        }
    }

    void noErrorNorWarningShowsNoBalloon()
    {
        stPrinterState state;
        state.enCurrentStatus = enStatusPrinting;
        ReportState(*m_pWindow, state);
        QCoreApplication::processEvents();
        QVERIFY(Balloon() == nullptr);
        QCOMPARE(Cell(0, 3), u"正在打印"_s);
    }

    void balloonEndsAfterThreeSeconds()
    {
        stPrinterState state;
        state.listErrorStatus = {enErrorNoPaper};
        QElapsedTimer timer;
        timer.start();
        ReportState(*m_pWindow, state);
        QTRY_VERIFY(Balloon() != nullptr);
        const auto listTimer = QAbstractEventDispatcher::instance()->registeredTimers(Balloon());
        QCOMPARE(listTimer.size(), 1);
        QCOMPARE(listTimer.first().interval, 3000);
        QTRY_VERIFY_WITH_TIMEOUT(Balloon() == nullptr, 8000);
        QVERIFY2(timer.elapsed() >= 2700, QByteArray::number(timer.elapsed()).constData());
        QVERIFY2(timer.elapsed() < 4500, QByteArray::number(timer.elapsed()).constData());
    }

    void rowOutsideTableOrListIsIgnored_data()
    {
        QTest::addColumn<int>("listSize");
        QTest::addColumn<int>("row");
        QTest::newRow("negative") << 2 << -1;
        QTest::newRow("lowest") << 2 << -2147483647 - 1;
        QTest::newRow("one beyond both") << 2 << 2;
        QTest::newRow("far beyond both") << 2 << 2147483647;
        QTest::newRow("in the table, beyond the list that has shrunk") << 1 << 1;
        QTest::newRow("in the table, list empty") << 0 << 0;
        QTest::newRow("in the list that has grown, beyond the table") << 3 << 2;
    }

    void rowOutsideTableOrListIsIgnored()
    {
        QFETCH(int, listSize);
        QFETCH(int, row);
        stPrinterManager printer = MakePrinter(u"Office"_s);
        printer.printerState.enCurrentStatus = enStatusReady;
        printer.printerState.listErrorStatus = {enErrorNoPaper};
        ShowPrinters(*m_pWindow, {printer, printer});
        SetPrinterList(*m_pWindow, Repeat(printer, listSize));
        m_pWindow->SlotUpdatePrinterStatus(row);
        QCOMPARE(Table()->rowCount(), 2);
        for (int i = 0; i < 2; ++i) {
            QCOMPARE(Cell(i, 2), c_strNoInk);
            QCOMPARE(Cell(i, 3), u"脱机"_s);
        }
        QVERIFY(Balloon() == nullptr);
    }

private:
    static void CloseBalloon()
    {
        if (QWidget* pBalloon = Balloon()) {
            pBalloon->close();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
    }
};

QTEST_MAIN(tst_StatusSlot)

#include "tst_StatusSlot.moc"
