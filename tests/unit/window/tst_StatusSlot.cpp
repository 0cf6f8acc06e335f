// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "WindowTest.h"

#include <QApplication>
#include <QLabel>
#include <QStyle>
#include <QToolTip>
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

/// What its labels show: the kind of its mark and the texts that are not empty.
QStringList BalloonParts()
{
    QStringList listPart;
    for (const QLabel* pLabel : Balloon() != nullptr ? Balloon()->findChildren<QLabel*>() : QList<QLabel*>()) {
        const auto mark = pLabel->property("pixmap").value<QPixmap>();
        const auto is = [&](QStyle::StandardPixmap enMark) {
            return mark.toImage() == QApplication::style()->standardIcon(enMark).pixmap(mark.size()).toImage();
        };
        listPart.append(mark.isNull()                       ? pLabel->text()
                        : is(QStyle::SP_MessageBoxCritical) ? u"error"_s
                        : is(QStyle::SP_MessageBoxWarning)  ? u"warning"_s
                                                            : u"?"_s);
    }
    listPart.removeAll(QString());
    return listPart;
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
        MakeWindow();
        QTRY_VERIFY(m_pWindow->m_pTrayIcon->geometry().top() > 0); // the tray has given the icon its place
    }

    void cleanup()
    {
        CloseBalloon();
        m_pWindow.reset();
    }

    void reportShowsInTableAndBalloon_data()
    {
        using List = QList<int>;
        QTest::addColumn<int>("state");
        QTest::addColumn<List>("errors");
        QTest::addColumn<List>("warnings");
        QTest::addColumn<QString>("cell");
        QTest::addColumn<QString>("balloon"); // when there is an error or a warning
        const QString strNone;
        QVERIFY(!GoldenStates().isEmpty());
        for (const stGoldenCode& code : GoldenStates()) {
            QTest::newRow(qPrintable(code.strEnglish)) << code.iValue << List() << List() << code.strChinese << strNone;
        }
        for (const int iState : {c_iNoValue, -1, 2147483647}) {
            QTest::addRow("state %d", iState) << iState << List() << List() << strNone << strNone;
        }

        // The first error, whatever the state, the other errors and the warnings are.
        const QString strCyan = u"青色墨水空，请及时更换墨水瓶"_s;
        QTest::newRow("error") << 8 << List{35, 12} << List() << strCyan << strCyan;
        QTest::newRow("error and warning") << 8 << List{35, 12} << List{25} << strCyan << strCyan;
        for (const int iCode : {42, c_iNoValue, -1}) { // without a text
            QTest::addRow("error %d", iCode) << 8 << List{iCode, 12} << List() << strNone << strNone;
        }

        // The first warning, which the table shows while printing only.
        const QString strLow = u"墨水量低"_s;
        QTest::newRow("warning, printing") << 8 << List() << List{25, 12} << u"正在打印(墨水量低)"_s << strLow;
        for (const stGoldenCode& code : GoldenStates()) {
            if (code.iValue != 8) {
                QTest::addRow("warning, state %d", code.iValue)
                    << code.iValue << List() << List{25, 12} << code.strChinese << strLow;
            }
        }
        for (const int iCode : {28, 29, 30, c_iNoValue}) { // without a Chinese text
            QTest::addRow("warning %d", iCode) << 8 << List() << List{iCode} << u"正在打印()"_s << strNone;
        }
    }

    void reportShowsInTableAndBalloon()
    {
        QFETCH(int, state);
        QFETCH(QList<int>, errors);
        QFETCH(QList<int>, warnings);
        QFETCH(QString, cell);
        QFETCH(QString, balloon);
        stPrinterState printerState;
        printerState.enCurrentStatus = state;
        for (const int iCode : errors) {
            printerState.listErrorStatus.append(static_cast<enErrorStatus>(iCode));
        }
        for (const int iCode : warnings) {
            printerState.listWarningStatus.append(static_cast<enErrorStatus>(iCode));
        }
        ReportState(*m_pWindow, printerState);
        QCOMPARE(Cell(0, 3), cell);
        if (errors.isEmpty() && warnings.isEmpty()) {
            QCoreApplication::processEvents();
            QVERIFY(Balloon() == nullptr);
            return;
        }
        QStringList listPart = {errors.isEmpty() ? u"warning"_s : u"error"_s, u"Office"_s, balloon};
        listPart.removeAll(QString());
        QTRY_COMPARE(BalloonParts(), listPart);
    }

    /// To what leaves the balloon on half of the screen, two characters at most less.
    void longTitleIsShortenedInTheMiddle()
    {
        stPrinterManager printer = MakePrinter(QString(200, QChar(0x4E66)) + u"end"_s);
        printer.printerState.listErrorStatus = {enErrorNoPaper};
        ShowPrinters(*m_pWindow, {printer});
        m_pWindow->SlotUpdatePrinterStatus(0);
        QTRY_COMPARE(BalloonParts().size(), 3);
        const QString strTitle = BalloonParts().at(1);
        QVERIFY2(strTitle.contains(QChar(0x2026)) && strTitle.endsWith(u"end"_s), qPrintable(strTitle));
        QFont font = QToolTip::font();
        font.setBold(true);
        const QFontMetrics metrics(font);
        const int iSpare = m_pWindow->screen()->availableSize().width() / 2 - 100 - metrics.horizontalAdvance(strTitle);
        QVERIFY2(iSpare >= 0 && iSpare < 2 * metrics.horizontalAdvance(QChar(0x4E66)), QByteArray::number(iSpare));
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

    void balloonEndsAfterThreeSeconds()
    {
        stPrinterState state;
        state.listErrorStatus = {enErrorNoPaper};
        ReportState(*m_pWindow, state);
        QTRY_VERIFY(Balloon() != nullptr);
        const auto listTimer = QAbstractEventDispatcher::instance()->registeredTimers(Balloon());
        QCOMPARE(listTimer.size(), 1);
        QCOMPARE(listTimer.first().interval, 3000);
        QTRY_VERIFY_WITH_TIMEOUT(Balloon() == nullptr, 8000);
    }

    void rowOutsideTableOrListIsIgnored_data()
    {
        QTest::addColumn<int>("listSize");
        QTest::addColumn<int>("row");
        QTest::newRow("negative") << 2 << -1;
        QTest::newRow("one beyond both") << 2 << 2;
        QTest::newRow("far beyond both") << 2 << 2147483647;
        QTest::newRow("in the table, beyond the list that has shrunk") << 1 << 1;
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
        SetPrinterList(*m_pWindow, QList<stPrinterManager>{printer, printer, printer}.mid(0, listSize));
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
