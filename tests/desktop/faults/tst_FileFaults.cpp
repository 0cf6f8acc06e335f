// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <QDir>

#include <cstdio>
#include <functional>

#include <linux/capability.h>
#include <sys/prctl.h>
#include <sys/stat.h>

namespace {

const QString c_strReady = u"就绪"_s;
const QString c_strOffline = u"脱机"_s;
const QString c_strToolFolder = u"" VORA_PACKAGE_PATH "tool"_s;

/// What is wrong with a status file and what the program shows of its printer after a while. A file that is there and
/// cannot be used is one failed read until its time changes; only one that is missing fails each time, which makes its
/// printer off-line.
struct stFault
{
    QString strName;
    std::function<bool(const QString& strPath)> put;
    QString strState;
    QString strInk = u"青色：高   红色：中   黄色：较低   黑色：低"_s;
};

QList<stFault> Faults(const QByteArray& scanning)
{
    const auto link = [](const QString& strTarget) {
        return [strTarget](const QString& strPath) { return QFile::link(strTarget, strPath); };
    };
    return {
        {u"Fifo"_s, [](const QString& strPath) { return ::mkfifo(QFile::encodeName(strPath).constData(), 0666) == 0; },
         c_strReady},
        {u"Folder"_s, [](const QString& strPath) { return QDir().mkdir(strPath); }, c_strReady},
        {u"Zeros"_s, link(u"/dev/zero"_s), c_strReady},
        {u"Terminal"_s, link(u"/dev/ptmx"_s), c_strReady},
        {u"Dangling"_s, link(u"/nowhere"_s), c_strOffline},
        {u"Loop"_s, [](const QString& strPath) { return QFile::link(strPath, strPath); }, c_strOffline},
        {u"Forbidden"_s,
         [scanning](const QString& strPath) {
             return WriteFile(strPath, scanning) && QFile::setPermissions(strPath, {});
         },
         c_strReady},
        {u"Empty"_s, [](const QString& strPath) { return WriteFile(strPath, {}); }, c_strReady},
        {u"CutOff"_s, [scanning](const QString& strPath) { return WriteFile(strPath, scanning.chopped(1)); },
         c_strReady},
        {u"Missing"_s, [](const QString&) { return true; }, c_strOffline},
        {u"Sparse"_s,
         [scanning](const QString& strPath) {
             return WriteFile(strPath, scanning) && QFile::resize(strPath, qint64(4) * 1024 * 1024 * 1024);
         },
         u"正在扫描"_s},
        // A reply of zeros is well-formed: ready, and no ink.
        {u"Nul"_s, [](const QString& strPath) { return WriteFile(strPath, QByteArray(512, '\0')); }, c_strReady,
         u"青色：无   红色：无   黄色：无   黑色：无"_s},
    };
}

} // namespace

/// Status files and folders in every wrong form, under the running program.
class tst_FileFaults : public FaultTest
{
    Q_OBJECT

private slots:
    /// What is forbidden by a file's mode is forbidden to the programs that this one starts, root's included.
    void initTestCase()
    {
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
        ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
        const QString strPath = u"/tmp/forbidden"_s;
        QVERIFY(WriteFile(strPath, "secret"));
        QCOMPARE(Desktop::Run(u"cat"_s, {strPath}), u"secret"_s);
        QVERIFY(QFile::setPermissions(strPath, {}));
        QCOMPARE(Desktop::Run(u"cat"_s, {strPath}), QString());
    }

    void faultStaysWithItsPrinter()
    {
        const QList<stFault> listFault = Faults(EncodeStatusReply(Reply(0x11)));
        QStringList listName;
        for (const stFault& fault : listFault) {
            listName.append(fault.strName);
        }
        StartBeside(listName);
        PutFaults(listFault);
        CheckNeighbour();
        QList<QStringList> listExpected;
        for (const stFault& fault : listFault) {
            listExpected.append({fault.strName, fault.strState, fault.strInk});
        }
        const auto shown = [&] {
            QList<QStringList> listShown;
            for (int iRow = 1; iRow <= listName.size(); ++iRow) {
                listShown.append({m_tool->Cell(iRow, 0), State(iRow), Ink(iRow)});
            }
            return listShown;
        };
        (void)QTest::qWaitFor([&] { return shown() == listExpected; }, c_iTimeOutMSec);
        QCOMPARE(shown(), listExpected);

        for (const QString& strName : std::as_const(listName)) { // all is well again
            std::remove(QFile::encodeName(m_folder.StatusPath(strName)).constData());
            WriteStatus(strName, Reply(0x12));
        }
        for (int iRow = 1; iRow <= listName.size(); ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"正在复印"_s, c_iTimeOutMSec);
        }
        PutFaults(listFault);
        CheckNeighbour();
        CheckAnswersAndExit();
    }

    void fileChangesBeforeItIsOpened_data()
    {
        QTest::addColumn<QString>("strSwitch");
        QTest::newRow("vanishes") << u"/tmp/vanish"_s;
        QTest::newRow("becomes a FIFO") << u"/tmp/become-fifo"_s;
    }

    void fileChangesBeforeItIsOpened()
    {
        QFETCH(QString, strSwitch);
        const QString strName = u"Changing"_s;
        Preload(VORA_CHANGE_BEFORE_OPEN);
        StartBeside({strName});
        qunsetenv("LD_PRELOAD");
        QVERIFY(WriteFile(strSwitch, {}));
        for (int i = 0; i < 2; ++i) {
            WriteStatus(strName, Reply(0x10));
            QTRY_VERIFY_WITH_TIMEOUT(!QFileInfo(StatusPath(1)).isFile(), c_iTimeOutMSec);
        }
        CheckNeighbour();
        QCOMPARE(State(1), c_strReady);
        QVERIFY(QFile::remove(strSwitch));
        WriteStatus(strName, Reply(0x11));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在扫描"_s, c_iTimeOutMSec);
        CheckAnswersAndExit();
    }

    void everyOtherTimeStampCounts()
    {
        const QString strName = u"Office"_s;
        const QDateTime dtNoon(QDate(2026, 3, 1), QTime(12, 0));
        // The time first, so that the program never sees the new reply with the time of its writing.
        const auto write = [&](quint8 byStatus, const QDateTime& dtModified) {
            const QString strNewPath = m_folder.StatusPath(u"new"_s);
            return WriteFile(strNewPath, EncodeStatusReply(Reply(byStatus))) &&
                   SetModificationTime(strNewPath, dtModified) &&
                   std::rename(QFile::encodeName(strNewPath).constData(),
                               QFile::encodeName(StatusPath(1)).constData()) == 0;
        };
        StartBeside({strName});
        QVERIFY(write(0x10, dtNoon));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在打印"_s, c_iTimeOutMSec);
        QVERIFY(write(0x11, dtNoon.addSecs(-3600))); // the clock was set back
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在扫描"_s, c_iTimeOutMSec);
        QVERIFY(write(0x12, QDateTime(QDate(1971, 1, 1), QTime(0, 0))));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在复印"_s, c_iTimeOutMSec);
        QVERIFY(write(0x02, dtNoon));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"忙碌"_s, c_iTimeOutMSec);

        QVERIFY(write(0x10, dtNoon)); // the same time: unchanged, as far as anybody can see
        CheckNeighbour();
        QCOMPARE(State(1), u"忙碌"_s);
        QVERIFY(SetModificationTime(StatusPath(1), dtNoon.addMSecs(1)));
        QTRY_COMPARE_WITH_TIMEOUT(State(1), u"正在打印"_s, c_iTimeOutMSec);
        CheckAnswersAndExit();
    }

    void folderIsRemovedAndMadeAgain()
    {
        const QString strName = u"Office"_s;
        StartBeside({strName});
        QVERIFY(QDir(m_folder.Path()).removeRecursively());
        QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
        QVERIFY(QDir().mkdir(m_folder.Path()));
        WriteReadyPrinters({u"Neighbour"_s, strName});
        QTRY_COMPARE_WITH_TIMEOUT(State(1), c_strReady, c_iTimeOutMSec);
        CheckNeighbour();
        QVERIFY(QDir(m_folder.Path()).removeRecursively());
        CheckAnswersAndExit();
    }

    void toolFolderWithoutRoom_data()
    {
        QTest::addColumn<QByteArray>("mount");
        QTest::addColumn<QByteArray>("fill");
        QTest::addColumn<bool>("running"); // whether the process list tells of the other copy
        const QByteArray path = c_strToolFolder.toLocal8Bit();
        QTest::newRow("room") << "--tmpfs " + path << QByteArray("true") << true;
        QTest::newRow("full") << "--size 4096 --tmpfs " + path << "cat /dev/zero > " + path + "/filler" << false;
        QTest::newRow("read-only") << "--tmpfs " + path + " --remount-ro " + path << QByteArray("true") << false;
    }

    void toolFolderWithoutRoom()
    {
        QFETCH(QByteArray, mount);
        QFETCH(QByteArray, fill);
        QFETCH(bool, running);
        QVERIFY(QDir().mkpath(c_strToolFolder));
        WriteReadyPrinters({u"Office"_s});
        FakeProgram(u"ps"_s, "echo '1 ? 00:00:00 VoraPrinterTool\n2 ? 00:00:00 VoraPrinterTool'\n");
        FakeProgram(u"VoraPrinterTool"_s, "exec bwrap --die-with-parent --dev-bind / / " + mount + " -- sh -c '" +
                                              fill + " 2> /dev/null; exec " VORA_TOOL "'\n");
        m_tool = std::make_unique<Tool>(u"VoraPrinterTool"_s);
        QTRY_VERIFY(Desktop::Windows(m_tool->Class()).isEmpty()); // the row before ends a moment after its bwrap
        m_tool->Start();
        QTRY_VERIFY_WITH_TIMEOUT(!Desktop::Windows(m_tool->Class()).isEmpty(), c_iTimeOutMSec);
        QCOMPARE(m_tool->MainWindow().has_value(), !running);
        if (!running) {
            QTRY_COMPARE_WITH_TIMEOUT(State(0), u"就绪"_s, c_iTimeOutMSec);
        }
        QFile::remove(u"/tmp/fake-programs/ps"_s); // `ps` is what the other tests need
    }

private:
    void PutFaults(const QList<stFault>& listFault)
    {
        for (const stFault& fault : listFault) {
            const QString strPath = m_folder.StatusPath(fault.strName);
            QCOMPARE(std::remove(QFile::encodeName(strPath).constData()), 0);
            QVERIFY2(fault.put(strPath), qPrintable(fault.strName));
        }
    }
};

QTEST_GUILESS_MAIN(tst_FileFaults)

#include "tst_FileFaults.moc"
