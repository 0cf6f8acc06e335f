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

const QString c_strReady = QStringLiteral("就绪");
const QString c_strOffline = QStringLiteral("脱机");
const QString c_strToolFolder = QStringLiteral(VORA_PACKAGE_PATH "tool");

/// What is wrong with a status file and what the program shows of its printer after a while. A file that is there and
/// cannot be used is one failed read until its time changes; only one that is missing fails each time, which makes its
/// printer off-line.
struct stFault
{
    QString strName;
    std::function<bool(const QString& strPath)> put;
    QString strState;
    QString strInk = QStringLiteral("青色：高   红色：中   黄色：较低   黑色：低");
};

QList<stFault> Faults(const QByteArray& scanning)
{
    const auto link = [](const QString& strTarget) {
        return [strTarget](const QString& strPath) { return QFile::link(strTarget, strPath); };
    };
    return {
        {QStringLiteral("Fifo"),
         [](const QString& strPath) { return ::mkfifo(QFile::encodeName(strPath).constData(), 0666) == 0; },
         c_strReady},
        {QStringLiteral("Folder"), [](const QString& strPath) { return QDir().mkdir(strPath); }, c_strReady},
        {QStringLiteral("Zeros"), link(QStringLiteral("/dev/zero")), c_strReady},
        {QStringLiteral("Terminal"), link(QStringLiteral("/dev/ptmx")), c_strReady},
        {QStringLiteral("Dangling"), link(QStringLiteral("/nowhere")), c_strOffline},
        {QStringLiteral("Loop"), [](const QString& strPath) { return QFile::link(strPath, strPath); }, c_strOffline},
        {QStringLiteral("Forbidden"),
         [scanning](const QString& strPath) {
             return WriteFile(strPath, scanning) && QFile::setPermissions(strPath, {});
         },
         c_strReady},
        {QStringLiteral("Empty"), [](const QString& strPath) { return WriteFile(strPath, {}); }, c_strReady},
        {QStringLiteral("CutOff"),
         [scanning](const QString& strPath) { return WriteFile(strPath, scanning.chopped(1)); }, c_strReady},
        {QStringLiteral("Missing"), [](const QString&) { return true; }, c_strOffline},
        {QStringLiteral("Sparse"),
         [scanning](const QString& strPath) {
             return WriteFile(strPath, scanning) && QFile::resize(strPath, qint64(4) * 1024 * 1024 * 1024);
         },
         QStringLiteral("正在扫描")},
        // A reply of zeros is well-formed: ready, and no ink.
        {QStringLiteral("Nul"), [](const QString& strPath) { return WriteFile(strPath, QByteArray(512, '\0')); },
         c_strReady, QStringLiteral("青色：无   红色：无   黄色：无   黑色：无")},
    };
}

} // namespace

/// Status files and folders in every wrong form, under the running program.
class tst_FileFaults : public FaultTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void faultStaysWithItsPrinter();
    void fileChangesBeforeItIsOpened_data();
    void fileChangesBeforeItIsOpened();
    void everyOtherTimeStampCounts();
    void folderIsRemovedAndMadeAgain();
    void toolFolderWithoutRoom_data();
    void toolFolderWithoutRoom();

private:
    void PutFaults(const QList<stFault>& listFault);
};

/// What is forbidden by a file's mode is forbidden to the programs that this one starts, root's included.
void tst_FileFaults::initTestCase()
{
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_OVERRIDE);
    ::prctl(PR_CAPBSET_DROP, CAP_DAC_READ_SEARCH);
    const QString strPath = QStringLiteral("/tmp/forbidden");
    QVERIFY(WriteFile(strPath, "secret"));
    QCOMPARE(Desktop::Run(QStringLiteral("cat"), {strPath}), QStringLiteral("secret"));
    QVERIFY(QFile::setPermissions(strPath, {}));
    QCOMPARE(Desktop::Run(QStringLiteral("cat"), {strPath}), QString());
}

void tst_FileFaults::PutFaults(const QList<stFault>& listFault)
{
    for (const stFault& fault : listFault) {
        const QString strPath = m_folder.StatusPath(fault.strName);
        QCOMPARE(std::remove(QFile::encodeName(strPath).constData()), 0);
        QVERIFY2(fault.put(strPath), qPrintable(fault.strName));
    }
}

void tst_FileFaults::faultStaysWithItsPrinter()
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
        QTRY_COMPARE_WITH_TIMEOUT(State(iRow), QStringLiteral("正在复印"), c_iTimeOutMSec);
    }
    PutFaults(listFault);
    CheckNeighbour();
    CheckAnswersAndExit();
}

void tst_FileFaults::fileChangesBeforeItIsOpened_data()
{
    QTest::addColumn<QString>("strSwitch");
    QTest::newRow("vanishes") << QStringLiteral("/tmp/vanish");
    QTest::newRow("becomes a FIFO") << QStringLiteral("/tmp/become-fifo");
}

void tst_FileFaults::fileChangesBeforeItIsOpened()
{
    QFETCH(QString, strSwitch);
    const QString strName = QStringLiteral("Changing");
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
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("正在扫描"), c_iTimeOutMSec);
    CheckAnswersAndExit();
}

void tst_FileFaults::everyOtherTimeStampCounts()
{
    const QString strName = QStringLiteral("Office");
    const QDateTime dtNoon(QDate(2026, 3, 1), QTime(12, 0));
    // The time first, so that the program never sees the new reply with the time of its writing.
    const auto write = [&](quint8 byStatus, const QDateTime& dtModified) {
        const QString strNewPath = m_folder.StatusPath(QStringLiteral("new"));
        return WriteFile(strNewPath, EncodeStatusReply(Reply(byStatus))) &&
               SetModificationTime(strNewPath, dtModified) &&
               std::rename(QFile::encodeName(strNewPath).constData(), QFile::encodeName(StatusPath(1)).constData()) ==
                   0;
    };
    StartBeside({strName});
    QVERIFY(write(0x10, dtNoon));
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("正在打印"), c_iTimeOutMSec);
    QVERIFY(write(0x11, dtNoon.addSecs(-3600))); // the clock was set back
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("正在扫描"), c_iTimeOutMSec);
    QVERIFY(write(0x12, QDateTime(QDate(1971, 1, 1), QTime(0, 0))));
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("正在复印"), c_iTimeOutMSec);
    QVERIFY(write(0x02, dtNoon));
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("忙碌"), c_iTimeOutMSec);

    QVERIFY(write(0x10, dtNoon)); // the same time: unchanged, as far as anybody can see
    CheckNeighbour();
    QCOMPARE(State(1), QStringLiteral("忙碌"));
    QVERIFY(SetModificationTime(StatusPath(1), dtNoon.addMSecs(1)));
    QTRY_COMPARE_WITH_TIMEOUT(State(1), QStringLiteral("正在打印"), c_iTimeOutMSec);
    CheckAnswersAndExit();
}

void tst_FileFaults::folderIsRemovedAndMadeAgain()
{
    const QString strName = QStringLiteral("Office");
    StartBeside({strName});
    QVERIFY(QDir(m_folder.Path()).removeRecursively());
    QTRY_COMPARE_WITH_TIMEOUT(m_tool->RowCount(), 0, c_iTimeOutMSec);
    QVERIFY(QDir().mkdir(m_folder.Path()));
    WriteReadyPrinters({QStringLiteral("Neighbour"), strName});
    QTRY_COMPARE_WITH_TIMEOUT(State(1), c_strReady, c_iTimeOutMSec);
    CheckNeighbour();
    QVERIFY(QDir(m_folder.Path()).removeRecursively());
    CheckAnswersAndExit();
}

void tst_FileFaults::toolFolderWithoutRoom_data()
{
    QTest::addColumn<QByteArray>("mount");
    QTest::addColumn<QByteArray>("fill");
    QTest::addColumn<bool>("running"); // whether the process list tells of the other copy
    const QByteArray path = c_strToolFolder.toLocal8Bit();
    QTest::newRow("room") << "--tmpfs " + path << QByteArray("true") << true;
    QTest::newRow("full") << "--size 4096 --tmpfs " + path << "cat /dev/zero > " + path + "/filler" << false;
    QTest::newRow("read-only") << "--tmpfs " + path + " --remount-ro " + path << QByteArray("true") << false;
}

void tst_FileFaults::toolFolderWithoutRoom()
{
    QFETCH(QByteArray, mount);
    QFETCH(QByteArray, fill);
    QFETCH(bool, running);
    QVERIFY(QDir().mkpath(c_strToolFolder));
    WriteReadyPrinters({QStringLiteral("Office")});
    FakeProgram(QStringLiteral("ps"), "echo '1 ? 00:00:00 VoraPrinterTool\n2 ? 00:00:00 VoraPrinterTool'\n");
    FakeProgram(QStringLiteral("VoraPrinterTool"), "exec bwrap --die-with-parent --dev-bind / / " + mount +
                                                       " -- sh -c '" + fill + " 2> /dev/null; exec " VORA_TOOL "'\n");
    m_tool = std::make_unique<Tool>(QStringLiteral("VoraPrinterTool"));
    QTRY_VERIFY(Desktop::Windows(m_tool->Class()).isEmpty()); // the row before ends a moment after its bwrap
    m_tool->Start();
    QTRY_VERIFY_WITH_TIMEOUT(!Desktop::Windows(m_tool->Class()).isEmpty(), c_iTimeOutMSec);
    QCOMPARE(m_tool->MainWindow().has_value(), !running);
    if (!running) {
        QTRY_COMPARE_WITH_TIMEOUT(State(0), QStringLiteral("就绪"), c_iTimeOutMSec);
    }
    QFile::remove(QStringLiteral("/tmp/fake-programs/ps")); // `ps` is what the other tests need
}

QTEST_GUILESS_MAIN(tst_FileFaults)

#include "tst_FileFaults.moc"
