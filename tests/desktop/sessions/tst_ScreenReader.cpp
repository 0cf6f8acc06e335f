// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDBusMessage>

/// What a screen reader hears of the table.
class tst_ScreenReader : public DesktopTest
{
    Q_OBJECT

public slots:
    void Hear(const QDBusMessage& message)
    {
        m_listHeard.append(m_tool->Access().Name({message.service(), message.path()}));
    }

private slots:
    void hearsHeadersAndChangesOfCells()
    {
        m_tool->Access().HearNames(this,
                                   SLOT(Hear(QDBusMessage))); // before the start: Qt 5 asks for listeners but once
        WriteReadyPrinters({u"Office"_s});
        m_tool->Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QStringList listHeader;
        for (const AccessibleNode& header : m_tool->Access().ColumnHeaders(m_tool->Class())) {
            listHeader.append(m_tool->Access().Name(header));
        }
        QCOMPARE(listHeader, (QStringList{u"打印机名称"_s, u"连接方式"_s, u"剩余墨水量"_s, u"状态"_s}));

        QCoreApplication::processEvents(); // what came before the answer about the headers
        m_listHeard.clear();
        WriteStatus(u"Office"_s, Reply(0x11));
        QTRY_COMPARE(m_listHeard, QStringList{u"正在扫描"_s}); // not the ink, which is the same
        m_listHeard.clear();
        stStatusReply reply = Reply(0x10);
        reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, 30)};
        WriteStatus(u"Office"_s, reply);
        QTRY_COMPARE(m_listHeard, (QStringList{u"青色：较低   红色：无   黄色：无   黑色：无"_s, u"正在打印"_s}));
    }

private:
    QStringList m_listHeard;
};

QTEST_GUILESS_MAIN(tst_ScreenReader)

#include "tst_ScreenReader.moc"
