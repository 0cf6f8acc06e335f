// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The tool folder, where everybody may write: what one user plants there under the names that another user's copy will
// use. The process list's name is tried with the program itself.

#include "TestFiles.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QDateTime>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t c_uidAnna = 12001;
constexpr uid_t c_uidBert = 12002;

const QString c_strTool = u"/opt/vora/vora-printer-k507/tool/"_s;
const char* const c_pPrecious = "/opt/bert/precious"; // on the same file system, for the hard link
const char* const c_pNew = "/opt/bert/new";

const std::vector<std::pair<const char*, int (*)(const char* pPath)>> c_listPlant = {
    {"hard link", [](const char* pPath) { return ::link(c_pPrecious, pPath); }},
    {"link to a file", [](const char* pPath) { return ::symlink(c_pPrecious, pPath); }},
    {"link to nothing", [](const char* pPath) { return ::symlink(c_pNew, pPath); }},
    {"FIFO", [](const char* pPath) { return ::mkfifo(pPath, 0666); }},
    {"folder", [](const char* pPath) { return ::mkdir(pPath, 0777); }},
    {"file", [](const char* pPath) { return ::mknod(pPath, S_IFREG | 0644, 0); }},
};

/// Does it as that user where this may be done, in a process that ends after ten seconds at the latest.
bool DoAs(uid_t uid, const std::function<bool()>& work)
{
    const pid_t pid = ::fork();
    if (pid == 0) {
        ::alarm(10);
        const bool bUser = ::geteuid() != 0 || (::setgid(uid) == 0 && ::setuid(uid) == 0);
        ::_exit(bUser && work() ? 0 : 1);
    }
    int iStatus = -1;
    return ::waitpid(pid, &iStatus, 0) == pid && iStatus == 0;
}

/// A log's name tells when the copy was started: somebody who plants one takes those of the next seconds.
QByteArrayList NamesToCome()
{
    QByteArrayList listName{"printer_4.tmp"};
    for (int i = 0; i < 10; ++i) {
        const QDateTime start = QDateTime::currentDateTime().addSecs(i);
        listName.append(start.toString(u"'log_tool_'yyyyMMdd_hhmmss'_0.log'"_s).toLatin1());
    }
    return listName;
}

/// As a user's copy of the program does.
bool UseNames()
{
    SetLogEnable(true);
    WriteStringLog(__FILE__, __LINE__, __func__, u"a line"_s);

    qputenv("PATH", "/nonexistent"); // the shell opens the file, no matter what it finds to run
    TrdGetPrinterStatus worker;
    worker.Init(4, nullptr);
    worker.m_printerManager.printerInfo = {u"Office"_s, QString(), 2, QString(), QString()};
    worker.m_printerManager.printerState.enCurrentStatus = enStatusReady;
    int iInterval = 0;
    worker.CheckNeedStatus(iInterval);
    return true;
}

} // namespace

class tst_SharedFolder : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(QDir(u"/opt/vora"_s).removeRecursively() && QDir(u"/opt/bert"_s).removeRecursively());
        QVERIFY(QDir().mkpath(c_strTool) && QDir().mkpath(u"/opt/bert"_s));
        QCOMPARE(::chmod(qPrintable(c_strTool), 01777), 0);
        QVERIFY(::geteuid() != 0 || ::chown("/opt/bert", c_uidBert, c_uidBert) == 0);
        QVERIFY(DoAs(c_uidBert, [] { return WriteFile(QString::fromLatin1(c_pPrecious), "precious"); }));
    }

    void nothingPlantedIsWrittenThrough_data()
    {
        QTest::addColumn<int>("plant");
        QTest::addColumn<uid_t>("planter");
        // The kernel may refuse to follow what a stranger planted; what belongs to the folder's owner it always
        // follows.
        for (int i = 0; i < static_cast<int>(c_listPlant.size()); ++i) {
            QTest::addRow("root's %s", c_listPlant[i].first) << i << uid_t(0);
            if (i > 0) { // not every system lets anna link to a file of bert's
                QTest::addRow("anna's %s", c_listPlant[i].first) << i << c_uidAnna;
            }
        }
    }

    void nothingPlantedIsWrittenThrough()
    {
        QFETCH(const int, plant);
        QFETCH(const uid_t, planter);
        QVERIFY(QDir::setCurrent(c_strTool));
        QVERIFY(DoAs(planter, [plant] {
            ::umask(0);
            const QByteArrayList listName = NamesToCome();
            return std::all_of(listName.begin(), listName.end(),
                               [plant](const QByteArray& name) { return c_listPlant[plant].second(name) == 0; });
        }));
        QDir logs(c_strTool, u"log_*"_s, QDir::Name, QDir::AllEntries | QDir::System);
        const QStringList before = logs.entryList();
        QVERIFY(DoAs(c_uidBert, UseNames));
        QCOMPARE(ReadFile(QString::fromLatin1(c_pPrecious)), QByteArray("precious"));
        QVERIFY(!QFileInfo::exists(QString::fromLatin1(c_pNew)));
        QCOMPARE(before.size(), 10);
        logs.refresh();
        QCOMPARE(logs.entryList(), before); // it was one of these names
    }
};

QTEST_APPLESS_MAIN(tst_SharedFolder)

#include "tst_SharedFolder.moc"
