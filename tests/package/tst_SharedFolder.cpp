// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The tool folder, where everybody may write: what one user plants there under the names that another user's copy will
// use. The process list's name is tried with the program itself.

#include "TestFiles.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QDateTime>
#include <QDir>
#include <QtTest>

#include <algorithm>
#include <functional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

enum enPlant
{
    enLinkToFile,
    enLinkToNothing,
    enHardLink,
    enFifo,
    enFolder,
    enFile
};

enum enName
{
    enLog,
    enPrinter
};

constexpr uid_t c_uidAnna = 12001;
constexpr uid_t c_uidBert = 12002;

const QString c_strTool = u"/opt/vora/vora-printer-k507/tool/"_s;
const QString c_strHome = u"/opt/bert/"_s; // on the same file system, for the hard link
const QString c_strPrecious = c_strHome + u"precious"_s;
const QString c_strNew = c_strHome + u"new"_s;

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

bool Plant(enPlant plant, const QByteArray& path)
{
    const QByteArray precious = c_strPrecious.toLocal8Bit();
    switch (plant) {
    case enLinkToFile: return ::symlink(precious.constData(), path.constData()) == 0;
    case enLinkToNothing: return ::symlink(c_strNew.toLocal8Bit().constData(), path.constData()) == 0;
    case enHardLink: return ::link(precious.constData(), path.constData()) == 0;
    case enFifo: return ::mkfifo(path.constData(), 0666) == 0;
    case enFolder: return ::mkdir(path.constData(), 0777) == 0;
    case enFile: return ::mknod(path.constData(), S_IFREG | 0644, 0) == 0;
    }
    return false;
}

/// A log's name tells when the copy was started: somebody who plants one takes those of the next seconds.
QList<QByteArray> NamesToCome(enName name)
{
    if (name == enPrinter) {
        return {c_strTool.toLocal8Bit() + "printer_4.tmp"};
    }
    QList<QByteArray> listName;
    const QDateTime now = QDateTime::currentDateTime();
    for (int i = 0; i < 10; ++i) {
        listName.append(now.addSecs(i)
                            .toString(u"'/opt/vora/vora-printer-k507/tool/log_tool_'yyyyMMdd_hhmmss'_0.log'"_s)
                            .toLocal8Bit());
    }
    return listName;
}

void UseName(enName name)
{
    if (name == enLog) {
        SetLogEnable(true);
        WriteStringLog(__FILE__, __LINE__, __func__, u"a line"_s);
        return;
    }
    qputenv("PATH", "/nonexistent"); // the shell opens the file, no matter what it finds to run
    TrdGetPrinterStatus worker;
    worker.Init(4, nullptr);
    worker.m_printerManager.printerInfo.strPrinterName = u"Office"_s;
    worker.m_printerManager.printerInfo.iConnectType = 2;
    worker.m_printerManager.printerState.enCurrentStatus = enStatusReady;
    int iInterval = 0;
    worker.CheckNeedStatus(iInterval);
}

QStringList ToolFolder()
{
    return QDir(c_strTool).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

Q_DECLARE_METATYPE(enPlant)
Q_DECLARE_METATYPE(enName)

class tst_SharedFolder : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(QDir(c_strTool).removeRecursively() && QDir(c_strHome).removeRecursively());
        QVERIFY(QDir().mkpath(c_strTool) && QDir().mkpath(c_strHome));
        QCOMPARE(::chmod(c_strTool.toLocal8Bit().constData(), 01777), 0);
        QVERIFY(::geteuid() != 0 || ::chown(c_strHome.toLocal8Bit().constData(), c_uidBert, c_uidBert) == 0);
        QVERIFY(DoAs(c_uidBert, [] { return WriteFile(c_strPrecious, "precious"); }));
    }

    void nothingPlantedIsWrittenThrough_data()
    {
        QTest::addColumn<enName>("name");
        QTest::addColumn<enPlant>("plant");
        QTest::addColumn<uid_t>("planter");
        const QList<QPair<QByteArray, enName>> listName = {{"log", enLog}, {"printer", enPrinter}};
        const QList<QPair<QByteArray, enPlant>> listPlant = {{"link to a file", enLinkToFile},
                                                             {"link to nothing", enLinkToNothing},
                                                             {"FIFO", enFifo},
                                                             {"folder", enFolder},
                                                             {"file", enFile}};
        for (const auto& name : listName) {
            // The kernel may refuse to follow what a stranger planted; what belongs to the folder's owner it always
            // follows.
            for (const auto& plant : listPlant) {
                QTest::newRow((name.first + ", anna's " + plant.first).constData())
                    << name.second << plant.second << c_uidAnna;
                QTest::newRow((name.first + ", root's " + plant.first).constData())
                    << name.second << plant.second << uid_t(0);
            }
            // Not every system lets anna link to a file of bert's.
            QTest::newRow((name.first + ", hard link").constData()) << name.second << enHardLink << uid_t(0);
        }
    }

    void nothingPlantedIsWrittenThrough()
    {
        QFETCH(const enName, name);
        QFETCH(const enPlant, plant);
        QFETCH(const uid_t, planter);
        const QList<QByteArray> listName = NamesToCome(name);
        QVERIFY(DoAs(planter, [&] {
            ::umask(0);
            return std::all_of(listName.begin(), listName.end(),
                               [&](const QByteArray& path) { return Plant(plant, path); });
        }));
        const QStringList before = ToolFolder();
        QVERIFY(DoAs(c_uidBert, [&] {
            UseName(name);
            return true;
        }));
        QCOMPARE(ReadFile(c_strPrecious), QByteArray("precious"));
        QVERIFY(!QFileInfo::exists(c_strNew));
        if (name == enLog) {
            QCOMPARE(ToolFolder(), before); // it was one of these names
        }
    }
};

QTEST_APPLESS_MAIN(tst_SharedFolder)

#include "tst_SharedFolder.moc"
