// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DesktopTest.h"
#include "PrintServer.h"

#include <QStandardPaths>

namespace {

constexpr int c_iStateColumn = 3;

const QString c_strReady = u"就绪"_s;
const QString c_strCanceling = u"正在取消任务"_s;

const QString c_strOffice = u"Office"_s;
const QString c_strOther = u"Other"_s;

const QString c_strCalls = u"/tmp/cancel-calls"_s;
const QString c_strExecuted = u"/tmp/part-of-a-name-was-executed"_s;

/// The arguments of all calls of "cancel", one to a line.
QStringList CancelCalls()
{
    return QString::fromUtf8(ReadFile(c_strCalls)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

} // namespace

/// What the program does to the jobs of a real print server.
class tst_PrintServer : public DesktopTest
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QByteArray realCancel = QStandardPaths::findExecutable(u"cancel"_s).toLocal8Bit();
        QVERIFY(!realCancel.isEmpty());
        FakeProgram(u"cancel"_s, "echo \"$@\" >> " + c_strCalls.toLocal8Bit() + "\nexec " + realCancel + " \"$@\"\n");
        FakeProgram(u"x"_s, "touch " + c_strExecuted.toLocal8Bit());
    }

    void cancelsTheFirstWaitingJobOfItsQueue()
    {
        PrintServer server;
        QVERIFY(server.Start());
        QVERIFY(server.AddQueue(c_strOther) && server.AddQueue(c_strOffice));
        for (const QString& strQueue : {c_strOther, c_strOffice, c_strOffice, c_strOffice, c_strOther}) {
            QVERIFY(server.AddJob(strQueue) > 0);
        }
        QCOMPARE(server.Jobs(), QList<int>({1, 2, 3, 4, 5}));
        StartWithPrinters({c_strOffice, c_strOther});
        QCOMPARE(CancelCalls(), QStringList());

        ShowState(0, c_strOffice, 0x03, c_strCanceling);
        QCOMPARE(server.Jobs(), QList<int>({1, 3, 4, 5}));
        ShowState(0, c_strOffice, 0x00, c_strReady);
        ShowState(0, c_strOffice, 0x03, c_strCanceling);
        QCOMPARE(server.Jobs(), QList<int>({1, 4, 5}));
        QCOMPARE(CancelCalls(), QStringList({c_strOffice, c_strOffice}));
        QCOMPARE(State(1), c_strReady);
    }

    void anyNameCancelsForItsOwnQueueOnly()
    {
        // Names of queues that "cancel" or the shell could take for something else.
        const QStringList listQueue = {u"a$(x);b"_s, u"a`x`|x&x"_s, u"Off,ice"_s, u"书房"_s,    u"*"_s,
                                       u"~"_s,       u"%s"_s,       u"1"_s,       u"Other-2"_s, u"Other-"_s};
        const QString strOption = u"-a"_s; // all jobs of all queues
        // The server has no queue of such a name.
        const QStringList listNoQueue = {u"Other'"_s, u"\"Other\""_s, u"'; x; cancel -a; '"_s, u"no queue"_s};

        PrintServer server;
        QVERIFY(server.Start());
        QVERIFY(server.AddQueue(c_strOther));
        QList<int> listStays = {server.AddJob(c_strOther), server.AddJob(c_strOther), server.AddJob(c_strOther)};
        for (const QString& strQueue : listQueue) {
            QVERIFY(server.AddQueue(strQueue));
            QVERIFY(server.AddJob(strQueue) > 0);
            listStays.append(server.AddJob(strQueue));
        }
        QVERIFY(server.AddQueue(strOption));
        listStays.append(server.AddJob(strOption));
        QVERIFY(!listStays.contains(0));
        QCOMPARE(server.Jobs().size(), listStays.size() + listQueue.size());

        const QStringList listName = listQueue + listNoQueue + QStringList{strOption};
        StartWithPrinters(listName);
        for (const QString& strName : listName) {
            WriteStatus(strName, Reply(0x03));
        }
        for (int iRow = 0; iRow < listName.size(); ++iRow) {
            QTRY_COMPARE(State(iRow), c_strCanceling);
        }
        QCOMPARE(server.Jobs(), listStays);
        QCOMPARE(CancelCalls().size(), listQueue.size() + listNoQueue.size());
        QVERIFY(!QFile::exists(c_strExecuted));
    }

    void haltedOrAbsentServerHangsNoWindow()
    {
        PrintServer server;
        QVERIFY(server.Start());
        QVERIFY(server.AddQueue(c_strOffice) && server.AddJob(c_strOffice) == 1);
        StartWithPrinters({c_strOffice, c_strOther});
        const QImage picture = m_tool->CellPicture(1, c_iStateColumn);
        server.Signal(SIGSTOP);
        WriteStatus(c_strOffice, Reply(0x03));
        QTRY_COMPARE(CancelCalls(), QStringList(c_strOffice));
        ShowState(1, c_strOther, 0x10, u"正在打印"_s);
        QTRY_VERIFY(m_tool->CellPicture(1, c_iStateColumn) != picture);
        QCOMPARE(State(0), c_strReady); // the new one is shown when its command has ended
        server.Signal(SIGCONT);
        QTRY_COMPARE(State(0), c_strCanceling);
        QCOMPARE(server.Jobs(), QList<int>());

        ShowState(0, c_strOffice, 0x00, c_strReady);
        server.Kill();
        ShowState(0, c_strOffice, 0x03, c_strCanceling);
        QCOMPARE(CancelCalls().size(), 2);
        ExitByMenu();
    }

private:
    void StartWithPrinters(const QStringList& listName)
    {
        QFile::remove(c_strCalls);
        WriteReadyPrinters(listName);
        StartWithTray();
        for (int iRow = 0; iRow < listName.size(); ++iRow) {
            QTRY_COMPARE(State(iRow), c_strReady);
        }
    }

    void ShowState(int iRow, const QString& strName, quint8 byStatus, const QString& strState) const
    {
        WriteStatus(strName, Reply(byStatus));
        QTRY_COMPARE(State(iRow), strState);
    }

    QString State(int iRow) const { return m_tool->Cell(iRow, c_iStateColumn); }
};

QTEST_GUILESS_MAIN(tst_PrintServer)

#include "tst_PrintServer.moc"
