// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QElapsedTimer>
#include <QFileInfo>

namespace {

const QString c_strReady = u"就绪"_s;
const QString c_strOffline = u"脱机"_s;
const QString c_strNoPaper = u"进纸托盘处无纸,请放入纸张"_s;
const QString c_strInkLow = u"墨水量低"_s;

constexpr int c_iOfflineTimeOutMSec = 40000; // eleven reads

struct stCase
{
    quint8 byStatus;
    QList<quint16> listError;
    QList<quint16> listWarning;
    QString strState;
};

} // namespace

/// What the table and the balloons say about a printer, from its reply to what a screen reader finds.
class tst_StateTexts : public DesktopTest
{
    Q_OBJECT

private slots:
    void stateCellFollowsTheReply()
    {
        const QList<stCase> listCase = {
            {0x00, {}, {}, c_strReady},
            {0x10, {}, {}, u"正在打印"_s},
            // A warning stands in the table while printing alone, the first of them.
            {0x10, {}, {0x6160}, u"正在打印(墨水量低)"_s},
            {0x10, {}, {0x6161, 0x6160}, u"正在打印(COLOR_INK_LOW)"_s},
            {0x10, {}, {0x6163}, u"正在打印()"_s},
            {0x00, {}, {0x6160}, c_strReady},
            {0x02, {}, {0x6160}, u"忙碌"_s},
            {0x12, {}, {0x6160}, u"正在复印"_s},
            {0x13, {}, {0x6160}, u"正在打印报告"_s},
            {0x23, {}, {0x6160}, u"正在打印Debug报告"_s},
            // An error takes the place of every state and warning, the first of them.
            {0x00, {0x6100}, {}, c_strNoPaper},
            {0x10, {0x6100}, {0x6160}, c_strNoPaper},
            {0x10, {0x6120, 0x6100}, {0x6160, 0x6161}, u"墨水仓门已打开,请关闭"_s},
            {0xFF, {0x5201}, {}, u"故障#5201，请断电重启"_s},
            {0x00, {0x6165}, {}, QString()}, // has no Chinese text
            // Codes that no printer is known to send.
            {0x00, {0x1234}, {}, u"错误状态未知"_s},
            {0x10, {}, {0x1234}, u"正在打印(错误状态未知)"_s},
            {0xFF, {}, {}, u"未知"_s},
        };
        QStringList listName;
        for (int i = 0; i < listCase.size(); ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
        m_tool->Start();
        QTRY_COMPARE(m_tool->RowCount(), static_cast<int>(listCase.size()));
        for (int i = 0; i < listCase.size(); ++i) {
            QTRY_COMPARE(State(i), c_strReady);
        }
        for (int i = 0; i < listCase.size(); ++i) {
            stStatusReply reply = Reply(listCase.at(i).byStatus, listCase.at(i).listError, listCase.at(i).listWarning);
            reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 100)}; // tells that the row is up to date
            WriteStatus(listName.at(i), reply);
        }
        for (int i = 0; i < listCase.size(); ++i) {
            QTRY_COMPARE(Ink(i), u"青色：无   红色：无   黄色：无   黑色：高"_s);
            QCOMPARE(State(i), listCase.at(i).strState);
        }
    }

    void balloonNamesThePrinterAndTheTrouble_data()
    {
        QTest::addColumn<QList<quint16>>("errors");
        QTest::addColumn<QList<quint16>>("warnings");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("state");
        QTest::newRow("warning while ready") << QList<quint16>{} << QList<quint16>{0x6160} << c_strInkLow << c_strReady;
        QTest::newRow("error over warning")
            << QList<quint16>{0x6100} << QList<quint16>{0x6160} << c_strNoPaper << c_strNoPaper;
    }

    void balloonNamesThePrinterAndTheTrouble()
    {
        QFETCH(QList<quint16>, errors);
        QFETCH(QList<quint16>, warnings);
        QFETCH(QString, message);
        QFETCH(QString, state);
        const QString strName = u"书房打印机"_s;
        WriteReadyPrinters({strName});
        StartWithTray();
        QTRY_COMPARE(State(0), c_strReady);

        WriteStatus(strName, Reply(0x00, errors, warnings));
        QTRY_VERIFY(m_tool->Popup());
        const QStringList listLabel = m_tool->Access().Names(m_tool->Class(), u"label"_s);
        QVERIFY2(listLabel.contains(strName), qPrintable(listLabel.join(QLatin1Char('|'))));
        QVERIFY2(listLabel.contains(message), qPrintable(listLabel.join(QLatin1Char('|'))));
        QCOMPARE(State(0), state);
    }

    void noBalloonWithoutTrouble()
    {
        WriteReadyPrinters({u"Office"_s, u"Study"_s});
        StartWithTray();
        QTRY_COMPARE(State(0), c_strReady);
        WriteStatus(u"Office"_s, Reply(0x10));
        QTRY_COMPARE(State(0), u"正在打印"_s);
        QVERIFY(!m_tool->Popup());
        WriteStatus(u"Study"_s, Reply(0x10, {}, {0x6160})); // a later balloon is the only one
        QTRY_VERIFY(m_tool->Popup());
        const QStringList listLabel = m_tool->Access().Names(m_tool->Class(), u"label"_s);
        QVERIFY(listLabel.contains(u"Study"_s));
        QVERIFY(!listLabel.contains(u"Office"_s));
    }

    void failedReadsMakeOffline()
    {
        const QString strGone = u"Gone"_s;
        const QString strKept = u"Kept"_s;
        WriteReadyPrinters({strGone, strKept});
        WriteStatus(strGone, Reply(0x10, {0x6100}, {0x6160}));
        m_tool->Start();
        QTRY_COMPARE(State(0), c_strNoPaper);
        QTRY_COMPARE(State(1), c_strReady);
        const QString strInk = u"青色：高   红色：中   黄色：较低   黑色：低"_s;
        QTRY_COMPARE(Ink(0), strInk);

        QElapsedTimer timer;
        timer.start();
        m_folder.RemoveStatus(strGone);
        QTRY_COMPARE_WITH_TIMEOUT(State(0), c_strOffline, c_iOfflineTimeOutMSec);
        QVERIFY2(timer.elapsed() >= 10 * Tool::PauseMSec(), // between eleven reads
                 qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(Ink(0), strInk);
        QCOMPARE(State(1), c_strReady); // a file that stays as it is is no failure

        WriteStatus(strGone, Reply());
        QTRY_COMPARE(State(0), c_strReady);
    }

    void rejectedReplyLeavesTheRow()
    {
        const QString strName = u"Office"_s;
        WriteReadyPrinters({strName});
        m_tool->Start();
        QTRY_COMPARE(State(0), c_strReady);

        const QByteArray reply = EncodeStatusReply(Reply(0x10, {0x6100}));
        for (const QByteArray& rejected : {reply.left(reply.size() - 1), reply.left(7), QByteArray()}) {
            m_folder.WriteStatus(strName, rejected);
            QTRY_VERIFY(WasRead(strName));
        }
        m_folder.WriteStatus(strName, reply.left(8)); // when it is read, the one before has been dealt with
        QTRY_VERIFY(WasRead(strName));
        QCOMPARE(State(0), c_strReady);
        QCOMPARE(Ink(0), u"青色：高   红色：中   黄色：较低   黑色：低"_s);

        m_folder.WriteStatus(strName, reply);
        QTRY_COMPARE(State(0), c_strNoPaper);
    }

private:
    QString State(int iRow) const { return m_tool->Cell(iRow, 3); }
    QString Ink(int iRow) const { return m_tool->Cell(iRow, 2); }
    /// Whether the tool has read the printer's status file since it was written.
    bool WasRead(const QString& strName) const
    {
        const QFileInfo file(m_folder.StatusPath(strName));
        return file.lastRead() > file.lastModified();
    }
};

QTEST_GUILESS_MAIN(tst_StateTexts)

#include "tst_StateTexts.moc"
