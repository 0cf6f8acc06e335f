// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "FaultTest.h"

#include <linux/capability.h>
#include <sys/prctl.h>

namespace {

const QString c_strReady = u"就绪"_s;
const QString c_strOffline = u"脱机"_s;

/// What is wrong with a status file and what the program shows of its printer after a while. A file that is there and
/// cannot be used is one failed read until its time changes; only one that is missing fails each time, which makes its
/// printer off-line.
struct stFault
{
    QString strName;
    QString strCommand; ///< makes $F, which then takes the place of the status file, $1
    QString strState = c_strReady;
    QString strInk = u"青色：高   红色：中   黄色：较低   黑色：低"_s;
};

const QList<stFault> c_listFault = {
    {u"Fifo"_s, u"mkfifo $F"_s},
    {u"Folder"_s, u"mkdir $F"_s},
    {u"Zeros"_s, u"ln -s /dev/zero $F"_s},
    {u"Terminal"_s, u"ln -s /dev/ptmx $F"_s},
    {u"Dangling"_s, u"ln -s /nowhere $F"_s, c_strOffline},
    {u"Loop"_s, u"ln -s $1 $F"_s, c_strOffline},
    {u"Forbidden"_s, u"cp /tmp/scanning $F; chmod 0 $F"_s},
    {u"Empty"_s, u": > $F"_s},
    {u"CutOff"_s, u"head -c -1 /tmp/scanning > $F"_s},
    {u"Missing"_s, u"exit"_s, c_strOffline},
    {u"Sparse"_s, u"cp /tmp/scanning $F; truncate -s 4G $F"_s, u"正在扫描"_s},
    // A reply of zeros is well-formed: ready, and no ink.
    {u"Nul"_s, u"head -c 512 /dev/zero > $F"_s, c_strReady, u"青色：无   红色：无   黄色：无   黑色：无"_s},
};

} // namespace

/// Status files in every wrong form, under the running program.
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
        QVERIFY(WriteFile(u"/tmp/scanning"_s, EncodeStatusReply(Reply(0x11))));
        QStringList listName;
        QList<QStringList> listExpected;
        for (const stFault& fault : c_listFault) {
            listName.append(fault.strName);
            listExpected.append({fault.strName, fault.strState, fault.strInk});
        }
        StartBeside(listName);
        PutFaults();
        CheckNeighbour();
        const auto shown = [&] {
            QList<QStringList> listShown;
            for (int iRow = 1; iRow <= listName.size(); ++iRow) {
                listShown.append({m_tool->Cell(iRow, 0), State(iRow), Ink(iRow)});
            }
            return listShown;
        };
        QTRY_COMPARE_WITH_TIMEOUT(shown(), listExpected, c_iTimeOutMSec);

        for (const QString& strName : std::as_const(listName)) { // all is well again
            std::remove(QFile::encodeName(m_folder.StatusPath(strName)).constData());
            WriteStatus(strName, Reply(0x12));
        }
        for (int iRow = 1; iRow <= listName.size(); ++iRow) {
            QTRY_COMPARE_WITH_TIMEOUT(State(iRow), u"正在复印"_s, c_iTimeOutMSec);
        }
        PutFaults();
        CheckNeighbour();
        CheckAnswersAndExit();
    }

private:
    void PutFaults() const
    {
        for (const stFault& fault : c_listFault) {
            const QString strScript = u"F=$1.new; rm $1 && "_s + fault.strCommand + u"; mv -T $F $1"_s;
            const QStringList listArgument = {u"-ec"_s, strScript, u"sh"_s, m_folder.StatusPath(fault.strName)};
            QCOMPARE(QProcess::execute(u"sh"_s, listArgument), 0);
        }
    }
};

QTEST_GUILESS_MAIN(tst_FileFaults)

#include "tst_FileFaults.moc"
