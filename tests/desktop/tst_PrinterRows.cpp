// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

namespace {

const QString c_strReady = u"就绪"_s;
const QString c_strNoPaper = u"进纸托盘处无纸,请放入纸张"_s;

constexpr int c_iTimeOutMSec = 15000;

} // namespace

/// What the table says about printers, from the driver package's files to what a screen reader finds.
class tst_PrinterRows : public DesktopTest
{
    Q_OBJECT

private slots:
    void rowsFollowTheList()
    {
        WriteStatus(u"A"_s, Reply(0x10));
        WriteStatus(u"B"_s, Reply(0x11));
        WriteStatus(u"C"_s, Reply(0x12));
        WritePrinters({});
        m_tool->Start();
        QTRY_COMPARE(m_tool->Access().ColumnHeaders().size(), 4);
        QCOMPARE(m_tool->RowCount(), 0);
        for (const char* pNames : {"AB", "ABC", "A", "ABC", "CBA"}) {
            QList<stPrinterInfo> listPrinter;
            QStringList listRow;
            for (const QChar name : QString::fromLatin1(pNames)) {
                const QStringList listState = {u"正在打印"_s, u"正在扫描"_s, u"正在复印"_s};
                listPrinter.append({name, QString(), 1, QString(), u"usb://"_s + name});
                listRow.append(name + u": "_s + listState.at(name.unicode() - 'A'));
            }
            WritePrinters(listPrinter);
            QTRY_COMPARE_WITH_TIMEOUT(Rows(), listRow, c_iTimeOutMSec);
        }

        // Rows that came, went and came again are followed still.
        WriteStatus(u"A"_s, Reply());
        WriteStatus(u"C"_s, Reply(0x02));
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({u"C: 忙碌"_s, u"B: 正在扫描"_s, u"A: 就绪"_s}), c_iTimeOutMSec);
        m_folder.RemovePrinterList();
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void stateFollowsTheReply()
    {
        struct stCase
        {
            stStatusReply reply;
            QString strState;
        };
        const QList<stCase> listCase = {
            {Reply(0x00), c_strReady},
            {Reply(0x10), u"正在打印"_s},
            {Reply(0xFF), u"未知"_s},
            // A warning stands in the table while printing alone, the first of them.
            {Reply(0x10, {}, {0x6160}), u"正在打印(墨水量低)"_s},
            {Reply(0x10, {}, {0x6161, 0x6160}), u"正在打印(COLOR_INK_LOW)"_s},
            {Reply(0x10, {}, {0x6163}), u"正在打印()"_s},
            {Reply(0x00, {}, {0x6160}), c_strReady},
            {Reply(0x13, {}, {0x6160}), u"正在打印报告"_s},
            // An error takes the place of every state and warning, the first of them.
            {Reply(0x00, {0x6100}), c_strNoPaper},
            {Reply(0x10, {0x6120, 0x6100}, {0x6160, 0x6161}), u"墨水仓门已打开,请关闭"_s},
            {Reply(0xFF, {0x5201}), u"故障#5201，请断电重启"_s},
            {Reply(0x00, {0x6165}), QString()}, // has no Chinese text
            // Codes that no printer is known to send.
            {Reply(0x00, {0x1234}), u"错误状态未知"_s},
            {Reply(0x10, {}, {0x1234}), u"正在打印(错误状态未知)"_s},
        };
        QStringList listName;
        for (int i = 0; i < listCase.size(); ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
        m_tool->Start();
        for (int i = 0; i < listCase.size(); ++i) {
            QTRY_COMPARE(State(i), c_strReady);
        }
        for (int i = 0; i < listCase.size(); ++i) {
            stStatusReply reply = listCase.at(i).reply;
            reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 100)}; // tells that the row is up to date
            WriteStatus(listName.at(i), reply);
        }
        for (int i = 0; i < listCase.size(); ++i) {
            QTRY_COMPARE(Ink(i), u"青色：无   红色：无   黄色：无   黑色：高"_s);
            QCOMPARE(State(i), listCase.at(i).strState);
        }
    }

private:
    QString Ink(int iRow) const { return m_tool->Cell(iRow, 2); }
    QString State(int iRow) const { return m_tool->Cell(iRow, 3); }

    QStringList ReadRows() const
    {
        QStringList listRow;
        for (int iRow = 0; iRow < m_tool->RowCount(); ++iRow) {
            listRow.append(m_tool->Cell(iRow, 0) + u": "_s + State(iRow));
        }
        return listRow;
    }

    /// "name: state" of each row; nothing when the table was rebuilt between one cell and the next.
    QStringList Rows() const
    {
        const QStringList listRow = ReadRows();
        return listRow == ReadRows() ? listRow : QStringList();
    }
};

QTEST_GUILESS_MAIN(tst_PrinterRows)

#include "tst_PrinterRows.moc"
