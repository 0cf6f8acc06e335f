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
    void rowsFollowTheList();
    void namesAreShownAsTheyAre();
    void emptyListHasNoRows();

private:
    QStringList ReadRows() const;
    QStringList Rows() const;
};

QStringList tst_PrinterRows::ReadRows() const
{
    QStringList listRow;
    for (int iRow = 0; iRow < m_tool->RowCount(); ++iRow) {
        listRow.append(m_tool->Cell(iRow, 0) + QStringLiteral(": ") + m_tool->Cell(iRow, 3));
    }
    return listRow;
}

/// "name: state" of each row; nothing when the table was rebuilt between one cell and the next.
QStringList tst_PrinterRows::Rows() const
{
    const QStringList listRow = ReadRows();
    return listRow == ReadRows() ? listRow : QStringList();
}

void tst_PrinterRows::rowsFollowTheList()
{
    const QString strA = QStringLiteral("A");
    const QString strB = QStringLiteral("B");
    const QString strC = QStringLiteral("C");
    const QString strRowA = QStringLiteral("A: 正在打印");
    const QString strRowB = QStringLiteral("B: 正在扫描");
    const QString strRowC = QStringLiteral("C: 正在复印");
    const auto write = [this](const QStringList& listName) {
        QList<stPrinterInfo> listPrinter;
        for (const QString& strName : listName) {
            listPrinter.append({strName, QString(), 1, QString(), QStringLiteral("usb://") + strName});
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
    QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList({QStringLiteral("C: 忙碌"), strRowB, QStringLiteral("A: 就绪")}),
                              c_iTimeOutMSec);

    m_folder.RemovePrinterList();
    QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
    QCOMPARE(m_tool->Process().state(), QProcess::Running);
}

void tst_PrinterRows::namesAreShownAsTheyAre()
{
    const QStringList listName = {QStringLiteral("书房打印机"), QStringLiteral("Off,ice"), QStringLiteral("a$(x);b"),
                                  QStringLiteral("a b"),        QStringLiteral("100%s"),   QStringLiteral("<b>A&B"),
                                  QStringLiteral("\"q'"),       QStringLiteral("-a"),      QStringLiteral("a\\b")};
    WriteReadyPrinters(listName);
    QStringList listRow;
    for (const QString& strName : listName) {
        listRow.append(strName + QStringLiteral(": 就绪"));
    }
    m_tool->Start();
    QTRY_COMPARE_WITH_TIMEOUT(Rows(), listRow, c_iTimeOutMSec);
}

void tst_PrinterRows::emptyListHasNoRows()
{
    WritePrinters({});
    m_tool->Start();
    QTRY_VERIFY(m_tool->MainWindow());
    QTRY_COMPARE(m_tool->Access().ColumnHeaders(m_tool->Class()).size(), 4);
    QCOMPARE(m_tool->RowCount(), 0);
    WriteReadyPrinters({QStringLiteral("Office")});
    QTRY_COMPARE_WITH_TIMEOUT(Rows(), QStringList{QStringLiteral("Office: 就绪")}, c_iTimeOutMSec);
    WritePrinters({});
    QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
}

QTEST_GUILESS_MAIN(tst_PrinterRows)

#include "tst_PrinterRows.moc"
