// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "WindowTest.h"

#include <QAction>
#include <QApplication>
#include <QtTest>

#include <sys/stat.h>

namespace {

const QString c_strTree = u"/tmp/tree/"_s;
const QString c_strNeighbour = u"neighbour"_s;
const QString c_strCalls = u"/tmp/update-calls"_s;

unsigned Mode(const QString& strName)
{
    struct stat status = {};
    return ::lstat(QFile::encodeName(c_strTree + strName).constData(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

/// Files, or folders when the name ends with a slash, that their owner alone may use.
void Make(const QStringList& listName)
{
    for (const QString& strName : listName) {
        const QString strPath = c_strTree + strName;
        const bool bFolder = strName.endsWith(QLatin1Char('/'));
        QVERIFY(bFolder ? QDir().mkpath(strPath) : WriteFile(strPath, "x"));
        QCOMPARE(::chmod(QFile::encodeName(strPath).constData(), bFolder ? 0700 : 0600), 0);
    }
}

} // namespace

/// What the window does in the driver package's folder: it starts the update tool and opens up permissions.
class tst_PermissionRepair : public WindowTest
{
    Q_OBJECT

private slots:
    void init()
    {
        MakeWindow();
        QDir(c_strTree).removeRecursively();
        QFile::remove(c_strCalls);
    }

    void cleanup() { m_pWindow.reset(); }

    /// Each time, without waiting for it.
    void updateEntryStartsTheTool()
    {
        QVERIFY(WriteScript(u"/opt/vora/vora-printer-k507/bin/voraK507FW"_s,
                            "echo \"$# $PWD\" >> /tmp/update-calls\n"
                            "while [ ! -e /tmp/update-go ]; do sleep 0.05; done\n"
                            "echo ended >> /tmp/update-calls\n"));
        const QByteArray started = "0 " + QDir::currentPath().toUtf8() + '\n';
        m_pWindow->m_pActionUpdateFW->trigger();
        m_pWindow->m_pActionUpdateFW->trigger();
        QTRY_COMPARE(ReadFile(c_strCalls), started + started);
        m_pWindow.reset(); // the tool outlives the program
        QVERIFY(WriteFile(u"/tmp/update-go"_s, "go"));
        QTRY_COMPARE(ReadFile(c_strCalls), started + started + "ended\nended\n");
    }

    void updateEntryWithoutToolHasNoEffect()
    {
        m_pWindow->show();
        m_pWindow->m_pActionUpdateFW->trigger();
        QCoreApplication::processEvents();
        QVERIFY(m_pWindow->isVisible());
        QVERIFY(m_pWindow->m_pTrayIcon->isVisible());
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    void chmodFileOpensOneFile()
    {
        for (const QString& strName : {u".hidden"_s, u"it's \"quoted\"; $(chmod 777 neighbour) 打印机"_s, u"*"_s}) {
            Make({strName, c_strNeighbour});
            m_pWindow->ChmodFile(c_strTree + strName);
            QCOMPARE(Mode(strName), 0777U);
            QCOMPARE(Mode(c_strNeighbour), 0600U);
        }
    }

    void chmodOfNothingLeavesNoTrace()
    {
        m_pWindow->ChmodFile(c_strTree + u"missing"_s);
        m_pWindow->ChmodVendorPath(c_strTree + u"missing"_s);
        QVERIFY(!QFile::exists(c_strTree));
        QVERIFY(m_pWindow->isHidden());
    }

    /// The shell's pattern does not name hidden entries; what a link leads to is changed, but no linked folder entered.
    void chmodVendorPathOpensTheTree()
    {
        const QString strOdd = u"root/it's \"two\" words/$(chmod 777 neighbour)/"_s;
        const QStringList listOpened = {
            u"root/"_s,     u"root/a"_s,        u"root/empty/"_s,         u"root/one/two/three/d"_s,
            u"root/one/"_s, u"root/one/two/"_s, u"root/one/two/three/"_s, strOdd + u"-R; *"_s,
            strOdd,         u"outside/"_s};
        const QStringList listClosed = {c_strNeighbour, u"root/.f"_s, u"root/.folder/g"_s, u"outside/inner"_s};
        Make(listOpened + listClosed);
        QVERIFY(QFile::link(c_strTree + u"outside"_s, c_strTree + u"root/link"_s));
        QVERIFY(QFile::link(c_strTree + u"root"_s, c_strTree + u"root/one/circle"_s));
        QCOMPARE(::chmod("/tmp/tree", 0700), 0);
        m_pWindow->ChmodVendorPath(c_strTree + u"root"_s);
        for (const QString& strName : listOpened) {
            QVERIFY2(Mode(strName) == 0777U, qPrintable(strName));
        }
        for (const QString& strName : listClosed) {
            QVERIFY2(Mode(strName) == 0600U, qPrintable(strName));
        }
        QCOMPARE(Mode(QString()), 0700U);
    }
};

QTEST_MAIN(tst_PermissionRepair)

#include "tst_PermissionRepair.moc"
