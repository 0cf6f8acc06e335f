// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "StatusFolder.h"

/// The program built with the option for support engineers, beside the one that users get.
class tst_SupportBuild : public DesktopTest
{
    Q_OBJECT

private slots:
    /// In a folder that knows of no earlier choice.
    void isMadeOnDemandAlone()
    {
        QProcess cmake;
        cmake.start(u"cmake"_s, {u"-S"_s, QStringLiteral(VORA_SOURCE), u"-B"_s, u"/tmp/fresh"_s, u"-G"_s, u"Ninja"_s,
                                 u"-DBUILD_TESTING=OFF"_s});
        QVERIFY(cmake.waitForFinished(60000));
        QCOMPARE(cmake.exitCode(), 0);
        QVERIFY(ReadFile(u"/tmp/fresh/CMakeCache.txt"_s).contains("\nVORA_DIAGNOSTIC_LOG:BOOL=OFF\n"));
        QVERIFY(ReadFile(u"/tmp/fresh/build.ninja"_s).contains(" -O2 ")); // what README has users build
    }

    void writesItsLog_data()
    {
        QTest::addColumn<QString>("program");
        QTest::addColumn<bool>("log");
        QTest::newRow("support build") << QStringLiteral(VORA_SUPPORT_BUILD) << true;
        QTest::newRow("users' build") << QStringLiteral(VORA_TOOL) << false;
    }

    void writesItsLog()
    {
        QFETCH(const QString, program);
        QFETCH(const bool, log);
        WriteReadyPrinters({u"Office"_s});
        m_tool = std::make_unique<Tool>(program);
        m_tool->Start();
        QTRY_COMPARE(m_tool->Cell(0, 3), u"就绪"_s);
        QCOMPARE(LogText().contains(" InitDeviceTable) InitDeviceTable start\n"), log); // the first line
        if (log) {
            QTRY_VERIFY(LogText().contains(" DebugOutputPrinterStatus) printer[0]=Office\n"));
        } else {
            QCOMPARE(LogText(), QByteArray());
        }
    }
};

QTEST_GUILESS_MAIN(tst_SupportBuild)

#include "tst_SupportBuild.moc"
