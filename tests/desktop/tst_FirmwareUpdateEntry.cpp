// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

namespace {

const QString c_strUpdateTool = u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s;

/// The running update tools: number, parent's number and command line of each.
QStringList UpdateTools()
{
    const QString strList = Desktop::Run(u"ps"_s, {u"-A"_s, u"-o"_s, u"pid=,ppid=,args="_s});
    return strList.split(QLatin1Char('\n')).filter(u"voraK507FW"_s);
}

/// Children of any process that have ended and that nobody has asked about.
QStringList Zombies()
{
    const QString strList = Desktop::Run(u"ps"_s, {u"-A"_s, u"-o"_s, u"stat=,ppid=,comm="_s});
    return strList.split(QLatin1Char('\n')).filter(QRegularExpression(u"^Z"_s));
}

QString Field(const QString& strLine, int iField)
{
    return strLine.simplified().section(QLatin1Char(' '), iField, iField);
}

void EndProcess(const QString& strId)
{
    Desktop::Run(u"kill"_s, {strId});
}

} // namespace

/// The tray menu's entry that starts the firmware-update tool.
class tst_FirmwareUpdateEntry : public DesktopTest
{
    Q_OBJECT

private slots:
    void eachClickStartsOneMoreTool()
    {
        QVERIFY(WriteScript(c_strUpdateTool, "read line < /tmp/nobody-writes\n"));
        Desktop::Run(u"mkfifo"_s, {u"/tmp/nobody-writes"_s});

        StartWithTray();
        const QString strToolId = QString::number(m_tool->Process().processId());
        for (int iCount = 1; iCount <= 2; ++iCount) {
            QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
            QTRY_COMPARE(UpdateTools().size(), iCount);
        }
        for (const QString& strUpdateTool : UpdateTools()) {
            QVERIFY2(strUpdateTool.endsWith(QLatin1String("/bin/sh ") + c_strUpdateTool), qPrintable(strUpdateTool));
            QVERIFY(Field(strUpdateTool, 1) != strToolId); // the program would have to ask about its own children
        }

        EndProcess(Field(UpdateTools().first(), 0));
        QTRY_COMPARE(UpdateTools().size(), 1);
        QTRY_COMPARE(Zombies(), QStringList());

        ExitByMenu();
        QCOMPARE(UpdateTools().size(), 1);
        EndProcess(Field(UpdateTools().first(), 0));
        QTRY_COMPARE(UpdateTools(), QStringList());
    }

    void missingToolIsNoMatter()
    {
        StartWithTray();
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuUpdateTool));
        QTRY_VERIFY(!m_tray->Menu(*m_tool));
        QVERIFY(m_tray->OpenMenu(*m_tool)); // the choice is dealt with by then
        Desktop::PressKey(u"Escape"_s);
        QTRY_VERIFY(!m_tray->Menu(*m_tool));

        QCOMPARE(Desktop::Windows(m_tool->Class()).size(), 2); // the window and the icon
        QVERIFY(QFile::exists(m_tool->OutputPath()));
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
        QCOMPARE(Zombies(), QStringList());
        QCOMPARE(m_tool->Process().state(), QProcess::Running);
    }
};

QTEST_GUILESS_MAIN(tst_FirmwareUpdateEntry)

#include "tst_FirmwareUpdateEntry.moc"
