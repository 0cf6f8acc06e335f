// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

#include <QDir>

stStatusReply DesktopTest::Reply(quint8 byStatus, const QList<quint16>& listError, const QList<quint16>& listWarning)
{
    stStatusReply reply;
    reply.byStatus = byStatus;
    reply.listErrorCode = listError;
    reply.listWarningCode = listWarning;
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlueInk, 80), MakeSuppliesRecord(enSuppliesRedInk, 50),
                          MakeSuppliesRecord(enSuppliesYellowInk, 20), MakeSuppliesRecord(enSuppliesBlackInk, 5)};
    return reply;
}

void DesktopTest::init()
{
    QDir(QStringLiteral(VORA_PACKAGE_PATH)).removeRecursively();
    m_folder = DriverFolder(c_strCfgPath);
    m_tool = std::make_unique<Tool>();
    QTRY_VERIFY(Desktop::HasWindowManager());
}

void DesktopTest::cleanup()
{
    if (QTest::currentTestFailed()) {
        const char* pTag = QTest::currentDataTag();
        const QString strFolder = u"" VORA_FAILURES "/%1-%2%3"_s.arg(
            QLatin1String(metaObject()->className()), QLatin1String(QTest::currentTestFunction()),
            pTag == nullptr ? QString() : QLatin1Char('-') + QLatin1String(pTag));
        QDir().mkpath(strFolder);
        Desktop::Screen().save(strFolder + u"/screen.png"_s);
        QFile::remove(strFolder + u"/output.txt"_s);
        QFile::copy(m_tool->OutputPath(), strFolder + u"/output.txt"_s);
        Desktop::Run(u"cp"_s, {u"-r"_s, QStringLiteral(VORA_PACKAGE_PATH), strFolder});
    }
    m_tool.reset();
    m_tray.reset();
}

void DesktopTest::WritePrinters(const QList<stPrinterInfo>& listPrinter) const
{
    m_folder.WritePrinterList(listPrinter);
}

void DesktopTest::WriteReadyPrinters(const QStringList& listName) const
{
    QList<stPrinterInfo> listPrinter;
    for (const QString& strName : listName) {
        WriteStatus(strName, Reply());
        listPrinter.append({strName, u"RA7Q"_s, 0, u"192.168.1.20"_s, u"ipp://"_s + strName});
    }
    WritePrinters(listPrinter);
}

void DesktopTest::WriteStatus(const QString& strName, const stStatusReply& reply) const
{
    m_folder.WriteStatus(strName, EncodeStatusReply(reply));
}

void DesktopTest::StartWithTray(TrayHost::enKind enKind)
{
    m_tray = std::make_unique<TrayHost>(enKind);
    QVERIFY(m_tray->Start());
    m_tool->Start();
    QTRY_VERIFY(m_tool->MainWindow());
    QVERIFY(WaitForTrayIcon());
}

bool DesktopTest::WaitForTrayIcon() const
{
    QRect last(-1, -1, 0, 0);
    return QTest::qWaitFor([&] {
        const std::optional<Desktop::Window> icon = m_tool->TrayIcon(); // no window with StatusNotifier
        const QRect geometry = icon ? icon->geometry : QRect();
        const bool bSettled = m_tray->HasIcon(*m_tool) && geometry == last;
        last = geometry;
        return bSettled;
    });
}

void DesktopTest::HideWindow() const
{
    QVERIFY(m_tool->MainWindow());
    Desktop::CloseWindow(*m_tool->MainWindow());
    QTRY_VERIFY(!m_tool->MainWindow());
}

void DesktopTest::CheckEnd(int iTimeOutMSec) const
{
    QVERIFY(m_tool->Process().waitForFinished(iTimeOutMSec));
    QCOMPARE(m_tool->Process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_tool->Process().exitCode(), 0);
}

void DesktopTest::ExitByMenu(int iTimeOutMSec) const
{
    QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuExit));
    CheckEnd(iTimeOutMSec);
}

void DesktopTest::FakeProgram(const QString& strName, const QByteArray& script)
{
    const QString strFolder = u"/tmp/fake-programs"_s;
    QVERIFY(WriteScript(strFolder + QLatin1Char('/') + strName, script));
    const QByteArray path = qgetenv("PATH");
    if (!path.startsWith(strFolder.toLocal8Bit())) {
        qputenv("PATH", strFolder.toLocal8Bit() + ':' + path);
    }
}

void DesktopTest::Preload(const char* pModule)
{
    AddSanitizerOption("verify_asan_link_order=0"); // which wants to come before all other libraries
    qputenv("LD_PRELOAD", pModule);
}

void DesktopTest::AddSanitizerOption(const QByteArray& option)
{
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ':' + option);
}
