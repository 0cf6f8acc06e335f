// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TestFiles.h"
#include "WindowTest.h"

#include <QAction>
#include <QApplication>
#include <QtTest>

#include <memory>

#include <sys/stat.h>

namespace {

const QString c_strTool = u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s;
const QString c_strCalls = u"/tmp/update-calls"_s;

unsigned Mode(const QString& strPath)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(strPath).constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

void SetMode(const QString& strPath, mode_t mode)
{
    QCOMPARE(::chmod(QFile::encodeName(strPath).constData(), mode), 0);
}

} // namespace

/// What the window does in the driver package's folder: it starts the update tool and opens up permissions.
class tst_PermissionRepair : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        QDir(u"/tmp/tree"_s).removeRecursively();
        QFile::remove(c_strCalls);
        m_pWindow = std::make_unique<VoraPrinterToolWidget>();
    }

    void cleanup() { m_pWindow.reset(); }

    void updateEntryStartsTheToolEachTime()
    {
        QVERIFY(WriteScript(c_strTool, "echo \"$# $PWD\" >> /tmp/update-calls\n"));
        m_pWindow->m_pActionUpdateFW->trigger();
        QTRY_COMPARE(ReadFile(c_strCalls), "0 " + QDir::currentPath().toUtf8() + '\n');
        m_pWindow->m_pActionUpdateFW->trigger();
        QTRY_COMPARE(ReadFile(c_strCalls).count('\n'), 2);
    }

    void updateEntryDoesNotWaitForTheTool()
    {
        QVERIFY(WriteScript(c_strTool, "echo started >> /tmp/update-calls\n"
                                       "while [ ! -e /tmp/update-go ]; do sleep 0.05; done\n"
                                       "echo ended >> /tmp/update-calls\n"));
        m_pWindow->SlotTrayActionUpdateFW();
        m_pWindow->SlotTrayActionUpdateFW();
        QTRY_COMPARE(ReadFile(c_strCalls), QByteArray("started\nstarted\n"));
        m_pWindow.reset(); // the tool outlives the program
        QVERIFY(WriteFile(u"/tmp/update-go"_s, "go"));
        QTRY_COMPARE(ReadFile(c_strCalls), QByteArray("started\nstarted\nended\nended\n"));
        QVERIFY(QFile::remove(u"/tmp/update-go"_s));
    }

    void updateEntryWithoutToolHasNoEffect()
    {
        m_pWindow->show();
        m_pWindow->m_pActionUpdateFW->trigger();
        QCoreApplication::processEvents();
        QVERIFY(m_pWindow->isVisible());
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QVERIFY(!QFile::exists(c_strCalls));
    }

    void chmodFileOpensOneFile_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << u"plain"_s;
        QTest::newRow("blank") << u"two words"_s;
        QTest::newRow("quotes") << u"it's \"quoted\""_s;
        QTest::newRow("command") << u"a; chmod 777 neighbour; $(chmod 777 neighbour)"_s;
        QTest::newRow("pattern") << u"*"_s;
        QTest::newRow("Chinese") << u"打印机"_s;
        QTest::newRow("hidden") << u".hidden"_s;
    }

    void chmodFileOpensOneFile()
    {
        QFETCH(QString, name);
        const QString strPath = u"/tmp/tree/"_s + name;
        const QString strNeighbour = u"/tmp/tree/neighbour"_s;
        QVERIFY(WriteFile(strPath, "x") && WriteFile(strNeighbour, "x"));
        SetMode(strPath, 0600);
        SetMode(strNeighbour, 0600);
        m_pWindow->ChmodFile(strPath);
        QCOMPARE(Mode(strPath), 0777U);
        QCOMPARE(Mode(strNeighbour), 0600U);
    }

    void chmodOfNothingLeavesNoTrace()
    {
        m_pWindow->ChmodFile(u"/tmp/tree/missing"_s);
        m_pWindow->ChmodVendorPath(u"/tmp/tree/missing"_s);
        QVERIFY(!QFile::exists(u"/tmp/tree"_s));
        QVERIFY(m_pWindow->isHidden());
    }

    void chmodVendorPathOpensTheTree()
    {
        const QStringList listFile = {u"/tmp/tree/root/a"_s, u"/tmp/tree/root/one/b"_s, u"/tmp/tree/root/one/two/c"_s,
                                      u"/tmp/tree/root/one/two/three/d"_s, u"/tmp/tree/root/other/e"_s};
        const QStringList listFolder = {u"/tmp/tree/root"_s,         u"/tmp/tree/root/one"_s,
                                        u"/tmp/tree/root/one/two"_s, u"/tmp/tree/root/one/two/three"_s,
                                        u"/tmp/tree/root/other"_s,   u"/tmp/tree/root/empty"_s};
        // The shell's pattern does not name hidden entries.
        const QStringList listHidden = {u"/tmp/tree/root/.f"_s, u"/tmp/tree/root/.folder/g"_s};
        QVERIFY(QDir().mkpath(u"/tmp/tree/root/empty"_s));
        for (const QString& strPath : listFile + listHidden) {
            QVERIFY(WriteFile(strPath, "x"));
            SetMode(strPath, 0600);
        }
        for (const QString& strPath : listFolder) {
            SetMode(strPath, 0700);
        }
        SetMode(u"/tmp/tree"_s, 0700);
        m_pWindow->ChmodVendorPath(u"/tmp/tree/root"_s);
        for (const QString& strPath : listFile + listFolder) {
            QVERIFY2(Mode(strPath) == 0777U, qPrintable(strPath));
        }
        for (const QString& strPath : listHidden) {
            QVERIFY2(Mode(strPath) == 0600U, qPrintable(strPath));
        }
        QCOMPARE(Mode(u"/tmp/tree"_s), 0700U);
    }

    void chmodVendorPathDoesNotFollowLinks()
    {
        const QString strOutside = u"/tmp/tree/outside/inner"_s;
        QVERIFY(WriteFile(strOutside, "x") && WriteFile(u"/tmp/tree/root/one/a"_s, "x"));
        SetMode(strOutside, 0600);
        QVERIFY(QFile::link(u"/tmp/tree/outside"_s, u"/tmp/tree/root/link"_s));
        QVERIFY(QFile::link(u"/tmp/tree/root"_s, u"/tmp/tree/root/one/circle"_s));
        m_pWindow->ChmodVendorPath(u"/tmp/tree/root"_s);
        QCOMPARE(Mode(u"/tmp/tree/root/one/a"_s), 0777U);
        QCOMPARE(Mode(strOutside), 0600U);
    }

    void chmodVendorPathTakesNamesLiterally()
    {
        const QString strInside = u"/tmp/tree/it's \"two\" words/$(chmod 777 neighbour)/-R; *"_s;
        const QString strNeighbour = u"/tmp/tree/neighbour"_s;
        QVERIFY(WriteFile(strInside, "x") && WriteFile(strNeighbour, "x"));
        SetMode(strInside, 0600);
        SetMode(strNeighbour, 0600);
        m_pWindow->ChmodVendorPath(u"/tmp/tree/it's \"two\" words"_s);
        QCOMPARE(Mode(strInside), 0777U);
        QCOMPARE(Mode(strNeighbour), 0600U);
    }

private:
    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

QTEST_MAIN(tst_PermissionRepair)

#include "tst_PermissionRepair.moc"
