// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"

/// The end by the tray menu's last entry: soon, without failure, and with nothing left behind.
class tst_Exit : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("VORA_REAL_TIME", "1"); } // the workers end within their pauses
    void windowShown()
    {
        Start();
        Exit();
        QVERIFY(AreGlobalsDestroyed());
        QCOMPARE(Desktop::ProcessNames(), m_listBefore);
    }

    void windowHidden()
    {
        Start();
        HideWindow();
        Exit();
        QVERIFY(AreGlobalsDestroyed());
        QCOMPARE(Desktop::ProcessNames(), m_listBefore);
    }

    void settingsOpen()
    {
        Start();
        QVERIFY(m_tray->ChooseFromMenu(*m_tool, TrayHost::enMenuSettings));
        QTRY_VERIFY(m_tool->SettingsWindow());
        Exit();
        QVERIFY(AreGlobalsDestroyed());
        QCOMPARE(Desktop::ProcessNames(), m_listBefore);
    }

    void manyPrinters()
    {
        QStringList listName;
        for (int i = 0; i < 200; ++i) {
            listName.append(u"Printer%1"_s.arg(i));
        }
        WriteReadyPrinters(listName);
        Start();
        QTRY_COMPARE(m_tool->RowCount(), 200);
        QTRY_COMPARE(m_tool->Cell(199, 3), u"就绪"_s);
        Exit();
        QVERIFY(AreGlobalsDestroyed());
        QCOMPARE(Desktop::ProcessNames(), m_listBefore);
    }

    void commandHangs()
    {
        FakeHangingCancel();
        WriteReadyPrinters({u"Office"_s});
        Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        WriteStatus(u"Office"_s, Reply(0x03));
        QTRY_VERIFY(IsCancelRunning());
        Exit();
        QVERIFY(!AreGlobalsDestroyed());

        // The command is the print system's: it may still reach the server, and then ends by itself.
        EndHangingCancel();
        QTRY_COMPARE(Desktop::ProcessNames(), m_listBefore);
    }

private:
    void Start()
    {
        m_tray = std::make_unique<TrayHost>(TrayHost::enTint2);
        QVERIFY(m_tray->Start());
        QCOMPARE(m_tool->RowCount(), 0); // starts the accessibility service
        m_listBefore = Desktop::ProcessNames();
        QFile::remove(u"/tmp/globals-destroyed"_s);
        Preload(VORA_TELL_DESTRUCTION);
        m_tool->Start();
        qunsetenv("LD_PRELOAD");
        QTRY_VERIFY(m_tool->MainWindow());
        QVERIFY(WaitForTrayIcon());
    }

    void Exit()
    {
        ExitByMenu();
        QVERIFY(QFile::exists(m_tool->OutputPath()));
        QCOMPARE(ReadFile(m_tool->OutputPath()), QByteArray());
    }

    /// Whether the program destroyed its global objects, which a thread that it left behind may still use.
    static bool AreGlobalsDestroyed() { return QFile::exists(u"/tmp/globals-destroyed"_s); }

    QStringList m_listBefore; ///< the processes without the program
};

QTEST_GUILESS_MAIN(tst_Exit)

#include "tst_Exit.moc"
