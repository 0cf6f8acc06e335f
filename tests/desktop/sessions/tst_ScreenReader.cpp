// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// What a screen reader hears of the table.
class tst_ScreenReader : public DesktopTest
{
    Q_OBJECT

private slots:
    void hearsHeadersAndChangesOfCells()
    {
        m_tool->Access().HearNames();
        QStringList& listHeard = m_tool->Access().m_listHeard;
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QStringList listHeader;
        for (const AccessibleNode& header : m_tool->Access().ColumnHeaders()) {
            listHeader.append(header.Name());
        }
        QCOMPARE(listHeader, (QStringList{u"打印机名称"_s, u"连接方式"_s, u"剩余墨水量"_s, u"状态"_s}));

        QCoreApplication::processEvents(); // what came before the answer about the headers
        listHeard.clear();
        WriteStatus(u"Office"_s, Reply(0x11));
        QTRY_COMPARE(listHeard, QStringList{u"正在扫描"_s}); // not the ink, which is the same
        listHeard.clear();
        stStatusReply reply = Reply(0x10);
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, 30)};
        WriteStatus(u"Office"_s, reply);
        QTRY_COMPARE(listHeard, (QStringList{u"青色：较低   红色：无   黄色：无   黑色：无"_s, u"正在打印"_s}));
    }
};

QTEST_GUILESS_MAIN(tst_ScreenReader)

#include "tst_ScreenReader.moc"
