// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

namespace {
constexpr int c_iTimeOutMSec = 15000;
} // namespace

/// The table's rows and the driver package's list of printers.
class tst_PrinterRows : public DesktopTest
{
    Q_OBJECT

private slots:
    void rowsFollowTheList()
    {
        const QString strA = u"A"_s;
        const QString strB = u"B"_s;
        const QString strC = u"C"_s;
        const QString strRowA = u"A: 正在打印"_s;
        const QString strRowB = u"B: 正在扫描"_s;
        const QString strRowC = u"C: 正在复印"_s;
        const auto write = [this](const QStringList& listName) {
            QList<stPrinterInfo> listPrinter;
            for (const QString& strName : listName) {
                listPrinter.append({strName, QString(), 1, QString(), u"usb://"_s + strName});
            }
            WritePrinters(listPrinter);
        };
        WriteStatus(strA, Reply(0x10));
        WriteStatus(strB, Reply(0x11));
        WriteStatus(strC, Reply(0x12));
        write({strA, strB});
        m_tool->Start();
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({strRowA, strRowB}), c_iTimeOutMSec);
        write({strA, strB, strC});
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({strRowA, strRowB, strRowC}), c_iTimeOutMSec);
        write({strA});
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList{strRowA}, c_iTimeOutMSec);
        write({strA, strB, strC});
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({strRowA, strRowB, strRowC}), c_iTimeOutMSec);
        write({strC, strB, strA});
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({strRowC, strRowB, strRowA}), c_iTimeOutMSec);

        // Rows that came, went and came again are followed still.
        WriteStatus(strA, Reply(0x00));
        WriteStatus(strC, Reply(0x02));
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({u"C: 忙碌"_s, strRowB, u"A: 就绪"_s}), c_iTimeOutMSec);

        m_folder.RemovePrinterList();
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }

    void namesAreShownAsTheyAre()
    {
        const QStringList listName = {u"书房打印机"_s, u"Off,ice"_s, u"a$(x);b"_s, u"a b"_s, u"100%s"_s,
                                      u"<b>A&B"_s,     u"\"q'"_s,    u"-a"_s,      u"a\\b"_s};
        WriteReadyPrinters(listName);
        QStringList listRow;
        for (const QString& strName : listName) {
            listRow.append(strName + u": 就绪"_s);
        }
        m_tool->Start();
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), listRow, c_iTimeOutMSec);
    }

    void emptyListHasNoRows()
    {
        WritePrinters({});
        m_tool->Start();
        QTRY_VERIFY(m_tool->MainWindow());
        QTRY_COMPARE(m_tool->Access().ColumnHeaders(m_tool->Class()).size(), 4);
        QCOMPARE(m_tool->RowCount(), 0);
        WriteReadyPrinters({u"Office"_s});
        QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList{u"Office: 就绪"_s}, c_iTimeOutMSec);
        WritePrinters({});
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
    }

private:
    QStringList ReadRows() const
    {
        QStringList listRow;
        for (int iRow = 0; iRow < m_tool->RowCount(); ++iRow) {
            listRow.append(m_tool->Cell(iRow, 0) + u": "_s + m_tool->Cell(iRow, 3));
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
