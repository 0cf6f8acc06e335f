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

const QString c_strTool = QStringLiteral("/opt/vora/vora-printer-k507/bin/voraK507FW");
const QString c_strCalls = QStringLiteral("/tmp/update-calls");

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
    void init();
    void cleanup();
    void updateEntryStartsTheToolEachTime();
    void updateEntryDoesNotWaitForTheTool();
    void updateEntryWithoutToolHasNoEffect();
    void chmodFileOpensOneFile_data();
    void chmodFileOpensOneFile();
    void chmodOfNothingLeavesNoTrace();
    void chmodVendorPathOpensTheTree();
    void chmodVendorPathDoesNotFollowLinks();
    void chmodVendorPathTakesNamesLiterally();

private:
    std::unique_ptr<VoraPrinterToolWidget> m_pWindow;
};

void tst_PermissionRepair::init()
{
    QDir(QStringLiteral("/opt/vora")).removeRecursively();
    QDir(QStringLiteral("/tmp/tree")).removeRecursively();
    QFile::remove(c_strCalls);
    m_pWindow = std::make_unique<VoraPrinterToolWidget>();
}

void tst_PermissionRepair::cleanup()
{
    m_pWindow.reset();
}

void tst_PermissionRepair::updateEntryStartsTheToolEachTime()
{
    QVERIFY(WriteScript(c_strTool, "echo \"$# $PWD\" >> /tmp/update-calls\n"));
    m_pWindow->m_pActionUpdateFW->trigger();
    QTRY_COMPARE(ReadFile(c_strCalls), "0 " + QDir::currentPath().toUtf8() + '\n');
    m_pWindow->m_pActionUpdateFW->trigger();
    QTRY_COMPARE(ReadFile(c_strCalls).count('\n'), 2);
}

void tst_PermissionRepair::updateEntryDoesNotWaitForTheTool()
{
    QVERIFY(WriteScript(c_strTool, "echo started >> /tmp/update-calls\n"
                                   "while [ ! -e /tmp/update-go ]; do sleep 0.05; done\n"
                                   "echo ended >> /tmp/update-calls\n"));
    m_pWindow->SlotTrayActionUpdateFW();
    m_pWindow->SlotTrayActionUpdateFW();
    QTRY_COMPARE(ReadFile(c_strCalls), QByteArray("started\nstarted\n"));
    m_pWindow.reset(); // the tool outlives the program
    QVERIFY(WriteFile(QStringLiteral("/tmp/update-go"), "go"));
    QTRY_COMPARE(ReadFile(c_strCalls), QByteArray("started\nstarted\nended\nended\n"));
    QVERIFY(QFile::remove(QStringLiteral("/tmp/update-go")));
}

void tst_PermissionRepair::updateEntryWithoutToolHasNoEffect()
{
    m_pWindow->show();
    m_pWindow->m_pActionUpdateFW->trigger();
    QCoreApplication::processEvents();
    QVERIFY(m_pWindow->isVisible());
    QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(!QFile::exists(c_strCalls));
}

void tst_PermissionRepair::chmodFileOpensOneFile_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << QStringLiteral("plain");
    QTest::newRow("blank") << QStringLiteral("two words");
    QTest::newRow("quotes") << QStringLiteral("it's \"quoted\"");
    QTest::newRow("command") << QStringLiteral("a; chmod 777 neighbour; $(chmod 777 neighbour)");
    QTest::newRow("pattern") << QStringLiteral("*");
    QTest::newRow("Chinese") << QStringLiteral("打印机");
    QTest::newRow("hidden") << QStringLiteral(".hidden");
}

void tst_PermissionRepair::chmodFileOpensOneFile()
{
    QFETCH(QString, name);
    const QString strPath = QStringLiteral("/tmp/tree/") + name;
    const QString strNeighbour = QStringLiteral("/tmp/tree/neighbour");
    QVERIFY(WriteFile(strPath, "x") && WriteFile(strNeighbour, "x"));
    SetMode(strPath, 0600);
    SetMode(strNeighbour, 0600);
    m_pWindow->ChmodFile(strPath);
    QCOMPARE(Mode(strPath), 0777U);
    QCOMPARE(Mode(strNeighbour), 0600U);
}

void tst_PermissionRepair::chmodOfNothingLeavesNoTrace()
{
    m_pWindow->ChmodFile(QStringLiteral("/tmp/tree/missing"));
    m_pWindow->ChmodVendorPath(QStringLiteral("/tmp/tree/missing"));
    QVERIFY(!QFile::exists(QStringLiteral("/tmp/tree")));
    QVERIFY(m_pWindow->isHidden());
}

void tst_PermissionRepair::chmodVendorPathOpensTheTree()
{
    const QStringList listFile = {QStringLiteral("/tmp/tree/root/a"), QStringLiteral("/tmp/tree/root/one/b"),
                                  QStringLiteral("/tmp/tree/root/one/two/c"),
                                  QStringLiteral("/tmp/tree/root/one/two/three/d"),
                                  QStringLiteral("/tmp/tree/root/other/e")};
    const QStringList listFolder = {
        QStringLiteral("/tmp/tree/root"),         QStringLiteral("/tmp/tree/root/one"),
        QStringLiteral("/tmp/tree/root/one/two"), QStringLiteral("/tmp/tree/root/one/two/three"),
        QStringLiteral("/tmp/tree/root/other"),   QStringLiteral("/tmp/tree/root/empty")};
    // The shell's pattern does not name hidden entries.
    const QStringList listHidden = {QStringLiteral("/tmp/tree/root/.f"), QStringLiteral("/tmp/tree/root/.folder/g")};
    QVERIFY(QDir().mkpath(QStringLiteral("/tmp/tree/root/empty")));
    for (const QString& strPath : listFile + listHidden) {
        QVERIFY(WriteFile(strPath, "x"));
        SetMode(strPath, 0600);
    }
    for (const QString& strPath : listFolder) {
        SetMode(strPath, 0700);
    }
    SetMode(QStringLiteral("/tmp/tree"), 0700);
    m_pWindow->ChmodVendorPath(QStringLiteral("/tmp/tree/root"));
    for (const QString& strPath : listFile + listFolder) {
        QVERIFY2(Mode(strPath) == 0777U, qPrintable(strPath));
    }
    for (const QString& strPath : listHidden) {
        QVERIFY2(Mode(strPath) == 0600U, qPrintable(strPath));
    }
    QCOMPARE(Mode(QStringLiteral("/tmp/tree")), 0700U);
}

void tst_PermissionRepair::chmodVendorPathDoesNotFollowLinks()
{
    const QString strOutside = QStringLiteral("/tmp/tree/outside/inner");
    QVERIFY(WriteFile(strOutside, "x") && WriteFile(QStringLiteral("/tmp/tree/root/one/a"), "x"));
    SetMode(strOutside, 0600);
    QVERIFY(QFile::link(QStringLiteral("/tmp/tree/outside"), QStringLiteral("/tmp/tree/root/link")));
    QVERIFY(QFile::link(QStringLiteral("/tmp/tree/root"), QStringLiteral("/tmp/tree/root/one/circle")));
    m_pWindow->ChmodVendorPath(QStringLiteral("/tmp/tree/root"));
    QCOMPARE(Mode(QStringLiteral("/tmp/tree/root/one/a")), 0777U);
    QCOMPARE(Mode(strOutside), 0600U);
}

void tst_PermissionRepair::chmodVendorPathTakesNamesLiterally()
{
    const QString strInside = QStringLiteral("/tmp/tree/it's \"two\" words/$(chmod 777 neighbour)/-R; *");
    const QString strNeighbour = QStringLiteral("/tmp/tree/neighbour");
    QVERIFY(WriteFile(strInside, "x") && WriteFile(strNeighbour, "x"));
    SetMode(strInside, 0600);
    SetMode(strNeighbour, 0600);
    m_pWindow->ChmodVendorPath(QStringLiteral("/tmp/tree/it's \"two\" words"));
    QCOMPARE(Mode(strInside), 0777U);
    QCOMPARE(Mode(strNeighbour), 0600U);
}

QTEST_MAIN(tst_PermissionRepair)

#include "tst_PermissionRepair.moc"
