// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "TestFiles.h"
#include "TrdDeviceManage.h"
#include "TrdGetPrinterStatus.h"

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <set>
#include <thread>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

namespace {

const QString c_strRoot = u"/opt/vora/vora-printer-k507"_s;
const QString c_strCfg = c_strRoot + u"/cfg"_s;
const QString c_strProgram = QStringLiteral(VORA_PRINTER_SIM);
const QByteArray c_foreignList = "[Main]\nCount=1\n\n[printer_0]\nName=Real\n";

/// The simulator in a process of its own, killed at the latest with this object.
class Simulator
{
public:
    explicit Simulator(const QStringList& listArgument) { m_process.start(c_strProgram, listArgument); }
    ~Simulator()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Simulator(const Simulator&) = delete;
    Simulator& operator=(const Simulator&) = delete;

    /// The folder that it tells about when it has written the first files; empty when it ended instead.
    QString Root()
    {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(10000)) {
        }
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    bool IsRunning() const { return m_process.state() == QProcess::Running; }
    void Kill(int iSignal) { ::kill(static_cast<pid_t>(m_process.processId()), iSignal); }

    /// Exit status, or -1 when it was ended by a signal or not at all.
    int ExitStatus()
    {
        const bool bFinished = m_process.state() == QProcess::NotRunning || m_process.waitForFinished(10000);
        return bFinished && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }
    QByteArray Output() { return m_process.readAllStandardOutput(); }
    QString ErrorText() { return QString::fromUtf8(m_process.readAllStandardError()); }

private:
    QProcess m_process;
};

QStringList FilesIn(const QString& strPath)
{
    return QDir(strPath).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

/// A scenario file that lives as long as the test program.
QString ScenarioFile(const QByteArray& json)
{
    static const QTemporaryDir folder;
    static int iCount = 0;
    const QString strPath = folder.filePath(u"%1.json"_s.arg(++iCount));
    WriteFile(strPath, json);
    return strPath;
}

QStringList PlayHere(const QString& strScenario, const QStringList& listOption = {})
{
    return QStringList({u"--root"_s, c_strRoot, strScenario}) + listOption;
}

/// What the printer tool makes of the status file; the result of the read in iResult.
stPrinterState StateOf(const QString& strName, int* pResult = nullptr)
{
    TrdGetPrinterStatus worker;
    const int iResult = worker.GetPrinterStatusFile(strName, true);
    if (pResult != nullptr) {
        *pResult = iResult;
    }
    return worker.m_printerManager.printerState;
}

/// The file, or what stands in its place, is refused as the list is.
QString Refusal(const QString& strPath)
{
    return u"vora-printer-sim: "_s + strPath +
           u" was not written by this program and stays as it is; --force replaces it\n"_s;
}

const QString c_strLab = c_strCfg + u"/Lab.dat"_s;
const QString c_strTarget = u"/opt/target"_s;

bool Link(const QString& strTarget, const QString& strPath)
{
    QDir().mkpath(QFileInfo(strPath).path());
    return QFile::link(strTarget, strPath);
}

const QByteArray c_stillScenario = R"({"description": "d", "printers": [{"name": "Lab", "state": "printing"},
    {"name": "Office", "model": "RB9Q", "black": 42}]})";

} // namespace

class tst_vora_printer_sim : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QDir(u"/opt/vora"_s).removeRecursively();
        QFile::remove(c_strTarget);
    }

    void everydayIsReadByThePrinterTool()
    {
        Simulator simulator({u"--root"_s, c_strRoot, u"--speed"_s, u"2"_s});
        QCOMPARE(simulator.Root(), c_strRoot);
        TrdDeviceManage deviceManage;
        const QList<stPrinterInfo> listInfo = deviceManage.GetPrinterInfo(true);
        QCOMPARE(listInfo.size(), 3);
        QCOMPARE(listInfo.at(0).strPrinterName, u"演示-前台"_s);
        QCOMPARE(listInfo.at(0).enType, u"RA7QX"_s);
        QVERIFY(listInfo.at(0).iConnectType != 1);
        QCOMPARE(listInfo.at(0).strPort, u"192.168.10.21"_s);
        QCOMPARE(listInfo.at(0).strURI, u"socket://192.168.10.21:9100"_s);
        QCOMPARE(listInfo.at(1).strPrinterName, u"Demo-Office"_s);
        QVERIFY(listInfo.at(1).iConnectType != 1);
        QCOMPARE(listInfo.at(2).strPrinterName, u"Demo-USB"_s);
        QCOMPARE(listInfo.at(2).iConnectType, 1);
        for (const stPrinterInfo& info : listInfo) {
            int iResult = -1;
            const stPrinterState state = StateOf(info.strPrinterName, &iResult);
            QCOMPARE(iResult, 0);
            QCOMPARE(state.enCurrentStatus, 3);
            QVERIFY(state.dwBlackInkRemainer >= 42UL && state.dwBlackInkRemainer <= 60UL);
        }
        // Something happens, and the tool can see it.
        QTRY_COMPARE_WITH_TIMEOUT(StateOf(listInfo.at(0).strPrinterName).enCurrentStatus, 8, 5000);
    }

    void aNewFolderIsMadeAndRemoved()
    {
        Simulator simulator({ScenarioFile(c_stillScenario)});
        const QString strRoot = simulator.Root();
        QVERIFY(strRoot.startsWith(u"/tmp/vora-printer-sim-"_s));
        QCOMPARE(FilesIn(strRoot + u"/cfg"_s).join(QLatin1Char(' ')), u"Lab.dat Office.dat printerlist.ini"_s);
        simulator.Kill(SIGTERM);
        QCOMPARE(simulator.ExitStatus(), 0);
        QVERIFY(!QFileInfo::exists(strRoot));
        QVERIFY(!QFileInfo::exists(c_strRoot));
    }

    void signalEndsItAndRemovesItsFiles_data()
    {
        QTest::addColumn<int>("iSignal");
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void signalEndsItAndRemovesItsFiles()
    {
        QFETCH(int, iSignal);
        Simulator simulator(PlayHere(u"everyday"_s));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(FilesIn(c_strCfg).size(), 4);
        simulator.Kill(iSignal);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
        QCOMPARE(simulator.ErrorText(), QString());
    }

    void filesOfOthersStay()
    {
        const QByteArray json =
            R"({"description": "d", "printers": [{"name": "Lab"}, {"name": "Real", "present": false}],
            "timeline": [{"at": 0.1, "present": false}, {"at": 0.2, "printer": "Lab", "present": true}]})";
        QVERIFY(WriteFile(c_strCfg + u"/Real.dat"_s, "real"));
        QVERIFY(WriteFile(c_strCfg + u"/notes.txt"_s, "notes"));
        Simulator simulator(PlayHere(ScenarioFile(json)));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg).join(QLatin1Char(' ')), u"Real.dat notes.txt"_s);
        QCOMPARE(ReadFile(c_strCfg + u"/Real.dat"_s), QByteArray("real"));
    }

    void listThatSomebodyElseWroteMeanwhileStays()
    {
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario)));
        QCOMPARE(simulator.Root(), c_strRoot);
        QVERIFY(WriteFile(c_strCfg + u"/printerlist.ini"_s, c_foreignList));
        simulator.Kill(SIGINT);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList(u"printerlist.ini"_s));
    }

    void foreignListIsRefused_data()
    {
        QTest::addColumn<QByteArray>("list");
        QTest::newRow("printers") << c_foreignList;
        QTest::newRow("no printer") << QByteArray("[Main]\nCount=0\n");
        QTest::newRow("empty") << QByteArray("");
        QTest::newRow("written by another") << QByteArray("[Main]\nCount=0\nWrittenBy=driver\n");
    }

    void foreignListIsRefused()
    {
        QFETCH(QByteArray, list);
        const QString strList = c_strCfg + u"/printerlist.ini"_s;
        QVERIFY(WriteFile(strList, list));
        Simulator simulator(PlayHere(u"everyday"_s));
        QCOMPARE(simulator.ExitStatus(), 73);
        QCOMPARE(simulator.ErrorText(), u"vora-printer-sim: "_s + strList +
                                            u" was not written by this program and stays as it is; "
                                            "--force replaces it\n"_s);
        QCOMPARE(simulator.Output(), QByteArray());
        QCOMPARE(ReadFile(strList), list);
        QCOMPARE(FilesIn(c_strCfg), QStringList(u"printerlist.ini"_s));
    }

    void forceReplacesAForeignList()
    {
        QVERIFY(WriteFile(c_strCfg + u"/printerlist.ini"_s, c_foreignList));
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario), {u"--force"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        TrdDeviceManage deviceManage;
        QCOMPARE(deviceManage.GetPrinterInfo(true).size(), 2);
        simulator.Kill(SIGTERM);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void ownListOfAKilledRunIsReplaced()
    {
        {
            Simulator killed(PlayHere(u"everyday"_s));
            QCOMPARE(killed.Root(), c_strRoot);
            killed.Kill(SIGKILL);
            QCOMPARE(killed.ExitStatus(), -1);
        }
        QCOMPARE(FilesIn(c_strCfg).size(), 4);
        Simulator simulator(PlayHere(u"everyday"_s));
        QCOMPARE(simulator.Root(), c_strRoot);
        simulator.Kill(SIGTERM);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void linkAmongTheFilesOfAKilledRunIsRefused()
    {
        {
            Simulator killed(PlayHere(ScenarioFile(c_stillScenario)));
            QCOMPARE(killed.Root(), c_strRoot);
            killed.Kill(SIGKILL);
            QCOMPARE(killed.ExitStatus(), -1);
        }
        QVERIFY(WriteFile(c_strTarget, "target"));
        QVERIFY(QFile::remove(c_strLab));
        QVERIFY(Link(c_strTarget, c_strLab));
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario)));
        QCOMPARE(simulator.ExitStatus(), 73);
        QCOMPARE(simulator.ErrorText(), Refusal(c_strLab));
        QCOMPARE(ReadFile(c_strTarget), QByteArray("target"));
    }

    void foreignStatusFileIsRefused_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<QByteArray>("steps");
        for (const char* pKind : {"file", "link", "dangling link", "folder", "pipe"}) {
            QTest::newRow(pKind) << QByteArray(pKind) << QByteArray();
        }
        QTest::newRow("of a printer that comes later")
            << QByteArray("file") << QByteArray(R"("present": false}], "timeline": [{"at": 9, "present": true)");
        QTest::newRow("of a file that comes later")
            << QByteArray("file") << QByteArray(R"("file": "missing"}], "timeline": [{"at": 9)");
    }

    void foreignStatusFileIsRefused()
    {
        QFETCH(const QByteArray, kind);
        QFETCH(const QByteArray, steps);
        QVERIFY(QDir().mkpath(c_strCfg));
        if (kind == "file") {
            QVERIFY(WriteFile(c_strLab, "real"));
        } else if (kind == "folder") {
            QVERIFY(QDir().mkpath(c_strLab));
        } else if (kind == "pipe") {
            QCOMPARE(::mkfifo(qPrintable(c_strLab), 0600), 0);
        } else {
            QVERIFY(Link(c_strTarget, c_strLab));
            QVERIFY(kind != "link" || WriteFile(c_strTarget, "target"));
        }
        const QByteArray json = R"({"description": "d", "printers": [{"name": "Lab")" +
                                (steps.isEmpty() ? QByteArray("}]") : ", " + steps + "}]") + "}";
        Simulator simulator(PlayHere(ScenarioFile(json)));
        QCOMPARE(simulator.ExitStatus(), 73);
        QCOMPARE(simulator.ErrorText(), Refusal(c_strLab));
        QCOMPARE(simulator.Output(), QByteArray());
        QCOMPARE(QDir(c_strCfg).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot),
                 QStringList(u"Lab.dat"_s));
        if (kind == "file") {
            QCOMPARE(ReadFile(c_strLab), QByteArray("real"));
        }
        QCOMPARE(ReadFile(c_strTarget), kind == "link" ? QByteArray("target") : QByteArray());
    }

    void forceReplacesALinkAndNotItsTarget_data()
    {
        QTest::addColumn<QString>("strName");
        QTest::addColumn<bool>("bDangling");
        for (const char* pName : {"Lab.dat", "printerlist.ini"}) {
            QTest::addRow("%s", pName) << QString::fromLatin1(pName) << false;
            QTest::addRow("%s, dangling", pName) << QString::fromLatin1(pName) << true;
        }
    }

    void forceReplacesALinkAndNotItsTarget()
    {
        QFETCH(const QString, strName);
        QFETCH(const bool, bDangling);
        const QString strPath = c_strCfg + QLatin1Char('/') + strName;
        const QByteArray target = bDangling ? QByteArray() : c_foreignList;
        QVERIFY(bDangling || WriteFile(c_strTarget, target));
        QVERIFY(Link(c_strTarget, strPath));
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario), {u"--force"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QVERIFY(QFileInfo(strPath).isFile() && !QFileInfo(strPath).isSymLink());
        QCOMPARE(QFileInfo::exists(c_strTarget), !bDangling);
        simulator.Kill(SIGTERM);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
        QCOMPARE(ReadFile(c_strTarget), target);
    }

    void linkPutThereMeanwhileStays_data()
    {
        QTest::addColumn<QByteArray>("step");
        QTest::newRow("written") << QByteArray(R"("state": "printing")");
        QTest::newRow("removed") << QByteArray(R"("file": "missing")");
    }

    void linkPutThereMeanwhileStays()
    {
        QFETCH(const QByteArray, step);
        const QByteArray json =
            R"({"description": "d", "printers": [{"name": "Lab"}], "timeline": [{"at": 10, )" + step + "}]}";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"10"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QVERIFY(WriteFile(c_strTarget, "target"));
        QVERIFY(QFile::remove(c_strLab));
        QVERIFY(Link(c_strTarget, c_strLab));
        const bool bWritten = step.contains("state");
        QCOMPARE(simulator.ExitStatus(), bWritten ? 74 : 0);
        QCOMPARE(simulator.ErrorText(), bWritten ? Refusal(c_strLab) : QString());
        QCOMPARE(FilesIn(c_strCfg), QStringList(u"Lab.dat"_s));
        QVERIFY(QFileInfo(c_strLab).isSymLink());
        QCOMPARE(ReadFile(c_strTarget), QByteArray("target"));
    }

    void listThatIsALinkIsRefused()
    {
        const QString strList = c_strCfg + u"/printerlist.ini"_s;
        const QByteArray signedList = "[Main]\nCount=0\nWrittenBy=vora-printer-sim\n";
        QVERIFY(WriteFile(c_strTarget, signedList));
        QVERIFY(Link(c_strTarget, strList));
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario)));
        QCOMPARE(simulator.ExitStatus(), 73);
        QCOMPARE(simulator.ErrorText(), Refusal(strList));
        QCOMPARE(ReadFile(c_strTarget), signedList);
        QCOMPARE(FilesIn(c_strCfg), QStringList(u"printerlist.ini"_s));
    }

    void readerNeverSeesHalfAStatusFile()
    {
        const QByteArray json = R"({"description": "d", "loop": true, "duration": 0.2,
            "printers": [{"name": "Lab", "fifth-string": ")" +
                                QByteArray(1900, 'a') + R"("}],
            "timeline": [{"at": 0.1, "printer": "Lab", "fifth-string": ")" +
                                QByteArray(1000, 'b') + R"("}]})";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"100"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        std::set<int> setSize;
        QElapsedTimer clock;
        clock.start();
        for (int iReads = 0; clock.elapsed() < 700 || iReads < 1000; ++iReads) {
            int iResult = -1;
            StateOf(u"Lab"_s, &iResult);
            QCOMPARE(iResult, 0);
            const QByteArray bytes = ReadFile(c_strCfg + u"/Lab.dat"_s);
            QVERIFY(bytes.count('a') == 2 + 1900 || bytes.count('b') == 1000);
            setSize.insert(static_cast<int>(bytes.size()));
        }
        QCOMPARE(setSize.size(), std::size_t(2));
    }

    void readerNeverSeesHalfAList()
    {
        const QByteArray json = R"({"description": "d", "loop": true, "duration": 0.2,
            "printers": [{"name": "Lab"}, {"name": "Desk %1", "count": 30}],
            "timeline": [{"at": 0.1, "printer": "Desk %1", "present": false}]})";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"10"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        std::set<int> setCount;
        QElapsedTimer clock;
        clock.start();
        for (int iReads = 0; clock.elapsed() < 700 || iReads < 1000; ++iReads) {
            const QByteArray list = ReadFile(c_strCfg + u"/printerlist.ini"_s);
            const int iCount = static_cast<int>(list.count("[printer_"));
            QVERIFY(list.contains("Count=" + QByteArray::number(iCount) + '\n'));
            QCOMPARE(static_cast<int>(list.count("Name=")), iCount);
            QVERIFY(list.endsWith('\n'));
            setCount.insert(iCount);
        }
        QVERIFY(setCount == std::set<int>({1, 31}));
    }

    /// A million files at one time.
    void signalEndsALongMoment()
    {
        const QByteArray json =
            R"({"description": "d", "printers": [{"name": "Desk %1", "count": 1000}], "timeline": [)" +
            QByteArray(R"({"at": 0}, )").repeated(999) + R"({"at": 0}]})";
        Simulator simulator(PlayHere(ScenarioFile(json)));
        QCOMPARE(simulator.Root(), c_strRoot);
        simulator.Kill(SIGTERM);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void endsWithItsScenario()
    {
        const QByteArray json = R"({"description": "d", "printers": [{"name": "Lab"}], "timeline": [{"at": 3}]})";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"50"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(simulator.ErrorText(), QString());
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void onceEndsALoop()
    {
        Simulator simulator(PlayHere(u"everyday"_s, {u"--once"_s, u"--speed"_s, u"100"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void loopBeginsAnew()
    {
        const QByteArray json = R"({"description": "d", "loop": true, "duration": 10, "printers": [{"name": "Lab"}],
            "timeline": [{"at": 5, "state": "printing", "file": "missing"}]})";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"20"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        const QString strFile = c_strCfg + u"/Lab.dat"_s;
        for (int iRound = 0; iRound < 3; ++iRound) {
            QTRY_VERIFY(!QFileInfo::exists(strFile));
            QTRY_VERIFY(QFileInfo::exists(strFile));
            QCOMPARE(StateOf(u"Lab"_s).enCurrentStatus, 3);
        }
        QVERIFY(simulator.IsRunning());
    }

    void speedIsHowFastItIs()
    {
        const QString strScenario =
            ScenarioFile(R"({"description": "d", "duration": 10, "printers": [{"name": "Lab"}]})");
        Simulator simulator(PlayHere(strScenario, {u"--speed"_s, u"10"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(simulator.ExitStatus(), 0);
        QVERIFY2(clock.elapsed() > 700 && clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    }

    void printersAreAsManyAsAskedFor()
    {
        TrdDeviceManage deviceManage;
        {
            Simulator simulator(PlayHere(u"many"_s));
            QCOMPARE(simulator.Root(), c_strRoot);
            QCOMPARE(deviceManage.GetPrinterInfo(true).size(), 50);
            QCOMPARE(FilesIn(c_strCfg).size(), 51);
            simulator.Kill(SIGTERM);
            QCOMPARE(simulator.ExitStatus(), 0);
            QVERIFY(QRegularExpression(u"\\Avora-printer-sim: --seed [0-9]+ plays this again\n\\z"_s)
                        .match(simulator.ErrorText())
                        .hasMatch());
        }
        Simulator simulator(PlayHere(u"many"_s, {u"--printers"_s, u"7"_s, u"--seed"_s, u"1"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(deviceManage.GetPrinterInfo(true).size(), 7);
        QCOMPARE(FilesIn(c_strCfg).size(), 8);
        QCOMPARE(simulator.ErrorText(), QString());
    }

    void seedDecidesWhatChanceDoes()
    {
        const QString strScenario =
            ScenarioFile(R"({"description": "d", "printers": [{"name": "Lab", "file": "random"}]})");
        const auto content = [&strScenario](const QString& strSeed) {
            Simulator simulator(PlayHere(strScenario, {u"--seed"_s, strSeed}));
            simulator.Root();
            return ReadFile(c_strCfg + u"/Lab.dat"_s);
        };
        const QByteArray first = content(u"7"_s);
        QVERIFY(!first.isEmpty());
        QCOMPARE(content(u"7"_s), first);
        QVERIFY(content(u"8"_s) != first);
    }

    void udpAnswersThePrinterTool()
    {
        const QString strScenario = ScenarioFile(c_stillScenario);
        TrdGetPrinterStatus worker;
        const stPrinterState& state = worker.m_printerManager.printerState;
        {
            Simulator simulator(PlayHere(strScenario, {u"--udp"_s, QString()}));
            QCOMPARE(simulator.Root(), c_strRoot);
            QCOMPARE(worker.GetPrinterStatusUDP(u"127.0.0.1"_s), 0);
            QCOMPARE(state.enCurrentStatus, 8);
            QCOMPARE(state.strProductName, u"Vora RA7QX"_s);
        }
        Simulator simulator(PlayHere(strScenario, {u"--udp"_s, u"127.0.0.2"_s, u"--udp-printer"_s, u"Office"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QCOMPARE(worker.GetPrinterStatusUDP(u"127.0.0.2"_s), 0);
        QCOMPARE(state.enCurrentStatus, 3);
        QCOMPARE(state.strProductName, u"Vora RB9Q"_s);
        QCOMPARE(state.dwBlackInkRemainer, 42UL);
    }

    void udpKeepsSilentAboutAnythingElse()
    {
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario), {u"--udp"_s, u"127.0.0.1"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        const int iSocket = ::socket(AF_INET, SOCK_DGRAM, 0);
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(9300);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        QCOMPARE(::connect(iSocket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
        const QByteArray query = QByteArray::fromHex("a5000c50e074080300000000000000");
        for (const QByteArray& other : {QByteArray(), QByteArray("status?"), query.left(14), query + '\0'}) {
            ::send(iSocket, other.constData(), static_cast<std::size_t>(other.size()), 0);
        }
        // Only the last of them is answered.
        ::send(iSocket, query.constData(), static_cast<std::size_t>(query.size()), 0);
        const QByteArray expected = ReadFile(c_strCfg + u"/Lab.dat"_s);
        QByteArray reply(4096, '\0');
        reply.truncate(static_cast<int>(std::max<ssize_t>(::recv(iSocket, reply.data(), 4096, 0), 0)));
        QCOMPARE(reply, expected);
        char cMore = '\0';
        const timeval timeOut{0, 300000};
        QCOMPARE(::setsockopt(iSocket, SOL_SOCKET, SO_RCVTIMEO, &timeOut, sizeof(timeOut)), 0);
        QCOMPARE(::recv(iSocket, &cMore, 1, 0), ssize_t(-1));
        ::close(iSocket);
    }

    void udpMisbehavesInTurn()
    {
        Simulator simulator(PlayHere(ScenarioFile(c_stillScenario), {u"--udp"_s, u"127.0.0.1"_s, u"--misbehave"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        TrdGetPrinterStatus worker;
        QElapsedTimer clock;
        const auto query = [&worker, &clock] {
            clock.start();
            return worker.GetPrinterStatusUDP(u"127.0.0.1"_s);
        };
        QCOMPARE(query(), -5); // silent
        QVERIFY(clock.elapsed() >= 900);
        QCOMPARE(query(), -5); // short
        QVERIFY(clock.elapsed() < 900);
        QCOMPARE(query(), -5); // late
        QVERIFY(clock.elapsed() >= 900);
        QCOMPARE(query(), 0);
        QCOMPARE(worker.m_printerManager.printerState.enCurrentStatus, 8);
        QVERIFY(clock.elapsed() < 900);
    }

    void wrongOptionsAreRefused_data()
    {
        QTest::addColumn<QStringList>("listArgument");
        QTest::addColumn<QString>("strMessage");
        const auto row = [](const char* pstrArguments, const QString& strMessage) {
            QTest::newRow(pstrArguments) << QString::fromLatin1(pstrArguments).split(QLatin1Char(' ')) << strMessage;
        };
        row("--colour", u"Unknown option 'colour'."_s);
        row("--root", u"Missing value after '--root'."_s);
        row("everyday many", u"unexpected argument \"many\""_s);
        row("--speed fast", u"--speed: expected a number from 0.1 to 1000, found \"fast\""_s);
        row("--speed 0", u"--speed: expected a number from 0.1 to 1000, found \"0\""_s);
        row("--speed 1001", u"--speed: expected a number from 0.1 to 1000, found \"1001\""_s);
        row("--speed nan", u"--speed: expected a number from 0.1 to 1000, found \"nan\""_s);
        row("--seed -1", u"--seed: expected a whole number from 0 to 4294967295, found \"-1\""_s);
        row("--seed 1.5", u"--seed: expected a whole number from 0 to 4294967295, found \"1.5\""_s);
        row("--printers 0 many", u"--printers: expected a whole number from 1 to 1000, found \"0\""_s);
        row("--printers 1001 many", u"--printers: expected a whole number from 1 to 1000, found \"1001\""_s);
        row("--udp printer", u"--udp: expected an IPv4 address, found \"printer\""_s);
        row("--udp ::1", u"--udp: expected an IPv4 address, found \"::1\""_s);
        row("--udp 127.0.0.1 --udp-printer Nobody", u"--udp-printer: the scenario has no printer \"Nobody\""_s);
        row("--misbehave", u"--misbehave and --udp-printer: expected --udp beside them"_s);
        row("--udp-printer Demo-USB", u"--misbehave and --udp-printer: expected --udp beside them"_s);
    }

    void wrongOptionsAreRefused()
    {
        QFETCH(QStringList, listArgument);
        QFETCH(QString, strMessage);
        Simulator simulator(QStringList({u"--root"_s, c_strRoot}) + listArgument);
        QCOMPARE(simulator.ExitStatus(), 64);
        QCOMPARE(simulator.ErrorText(), u"vora-printer-sim: "_s + strMessage + QLatin1Char('\n'));
        QCOMPARE(simulator.Output(), QByteArray());
        QVERIFY(!QFileInfo::exists(c_strRoot));
    }

    void wrongFilesAreRefused()
    {
        Simulator missing(PlayHere(u"nowhere.json"_s));
        QCOMPARE(missing.ExitStatus(), 66);
        QCOMPARE(missing.ErrorText(), u"vora-printer-sim: nowhere.json: expected a file or a name of --list\n"_s);

        Simulator folder(PlayHere(u"/tmp"_s));
        QCOMPARE(folder.ExitStatus(), 66);
        QVERIFY(folder.ErrorText().startsWith(u"vora-printer-sim: cannot read /tmp: "_s));

        const QString strWrong =
            ScenarioFile(R"({"description": "d", "printers": [{"name": "Lab", "state": "asleep"}]})");
        Simulator wrong(PlayHere(strWrong));
        QCOMPARE(wrong.ExitStatus(), 65);
        QVERIFY(wrong.ErrorText().startsWith(u"vora-printer-sim: "_s + strWrong +
                                             u": printers[0].state: expected a code from 0x00 to 0xFF or "_s));

        const QString strBroken = ScenarioFile("{\n\"description\": \"d\",\n");
        Simulator broken(PlayHere(strBroken));
        QCOMPARE(broken.ExitStatus(), 65);
        QVERIFY(broken.ErrorText().startsWith(u"vora-printer-sim: "_s + strBroken + u":3: expected JSON: "_s));

        const QString strLarge = ScenarioFile(QByteArray((16 << 20) + 1, ' '));
        Simulator large(PlayHere(strLarge));
        QCOMPARE(large.ExitStatus(), 65);
        QCOMPARE(large.ErrorText(), u"vora-printer-sim: "_s + strLarge + u": expected at most 16 MiB\n"_s);
        QVERIFY(!QFileInfo::exists(c_strRoot));
    }

    void messagesObeyNoTerminal_data()
    {
        QTest::addColumn<QStringList>("listArgument");
        QTest::addColumn<QString>("strMessage");
        // ESC, CSI, DEL, right-to-left override, and a format character outside the first plane.
        const QString strEvil = u"a\u001b\u009b\u007f\u202e"_s + QString::fromUcs4(U"\U000E0001", 1);
        const QString strSafe = u"a\\x1B\\x9B\\x7F\\u202E\\U000E0001"_s;
        const QByteArray key = strEvil.mid(2).toUtf8(); // JSON has no raw control characters below 0x20
        const QString strSafeKey = strSafe.mid(5);
        const QString strScenario = ScenarioFile("{\"" + key + "\": 1}");
        const QString strName =
            ScenarioFile(R"({"description": "d", "printers": [{"name": "Lab", "model": "\u001b)" + key + "\"}]}");
        QTest::newRow("option") << QStringList{u"--"_s + strEvil} << u"Unknown option '%1'."_s.arg(strSafe);
        QTest::newRow("value") << QStringList{u"--speed"_s, strEvil}
                               << u"--speed: expected a number from 0.1 to 1000, found \"%1\""_s.arg(strSafe);
        QTest::newRow("file name") << QStringList{strEvil} << strSafe + u": expected a file or a name of --list"_s;
        QTest::newRow("key") << QStringList{strScenario} << strScenario + u": "_s + strSafeKey + u": unknown key, @"_s;
        QTest::newRow("value in a scenario")
            << QStringList{strName}
            << strName + u": printers[0].model: expected @found \"\\x1B"_s + strSafeKey + QLatin1Char('"');
        QTest::newRow("encode") << QStringList{u"encode"_s, u"--state"_s, strEvil}
                                << u"--state: expected @found \"%1\""_s.arg(strSafe);
        QTest::newRow("new line") << QStringList{u"a\nb"_s} << u"a\\x0Ab: expected a file or a name of --list"_s;
    }

    /// "@" stands for anything.
    void messagesObeyNoTerminal()
    {
        QFETCH(const QStringList, listArgument);
        QFETCH(const QString, strMessage);
        Simulator simulator(listArgument);
        QVERIFY(simulator.ExitStatus() >= 64);
        const QString strText = simulator.ErrorText();
        const QStringList listPart = strMessage.split(QLatin1Char('@'));
        QVERIFY2(strText.startsWith(u"vora-printer-sim: "_s + listPart.first()), qPrintable(strText));
        QVERIFY2(strText.endsWith(listPart.last() + QLatin1Char('\n')), qPrintable(strText));
    }

    void folderIsToldWithoutControlCharacters()
    {
        const QString strRoot = u"/opt/vora/a\u001b\u202eb"_s;
        Simulator simulator({u"--root"_s, strRoot, ScenarioFile(c_stillScenario)});
        QCOMPARE(simulator.Root(), u"/opt/vora/a\\x1B\\u202Eb"_s);
        QVERIFY(QFileInfo::exists(strRoot + u"/cfg/Lab.dat"_s));
    }

    void unwritableFolderIsRefused()
    {
        QVERIFY(WriteFile(c_strRoot, "a file, no folder"));
        Simulator simulator(PlayHere(u"everyday"_s));
        QCOMPARE(simulator.ExitStatus(), 73);
        QCOMPARE(simulator.ErrorText(),
                 u"vora-printer-sim: cannot write "_s + c_strCfg + u"/printerlist.ini: Not a directory\n"_s);
        QCOMPARE(simulator.Output(), QByteArray());
    }

    void missingTemporaryFolderIsTold_data()
    {
        QTest::addColumn<QString>("strFolder");
        QTest::addColumn<QByteArray>("reason");
        QTest::newRow("missing") << u"/opt/nowhere"_s << QByteArray("TMPDIR is not a folder");
        QTest::newRow("nothing can be made there") << u"/proc"_s << QByteArray("");
    }

    void missingTemporaryFolderIsTold()
    {
        QFETCH(QString, strFolder);
        QFETCH(QByteArray, reason);
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TMPDIR"_s, strFolder);
        process.setProcessEnvironment(environment);
        process.start(c_strProgram, QStringList());
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 73);
        const QByteArray errorText = process.readAllStandardError();
        QVERIFY2(errorText.startsWith("vora-printer-sim: cannot make a temporary folder: " + reason),
                 errorText.constData());
        QCOMPARE(process.readAllStandardOutput(), QByteArray());
    }

    void takenAddressIsRefused()
    {
        const QStringList listUdp = {u"--udp"_s, u"127.0.0.1"_s};
        Simulator first(listUdp);
        QVERIFY(!first.Root().isEmpty());
        Simulator second(PlayHere(u"everyday"_s, listUdp));
        QCOMPARE(second.ExitStatus(), 69);
        QVERIFY(second.ErrorText().startsWith(u"vora-printer-sim: --udp: cannot listen on 127.0.0.1 port 9300: "_s));
        QCOMPARE(FilesIn(c_strCfg), QStringList());
    }

    void failedWriteEndsIt()
    {
        const QByteArray json = R"({"description": "d", "printers": [{"name": "Lab"}], "timeline": [{"at": 10}]})";
        Simulator simulator(PlayHere(ScenarioFile(json), {u"--speed"_s, u"20"_s}));
        QCOMPARE(simulator.Root(), c_strRoot);
        QVERIFY(QDir(c_strCfg).removeRecursively());
        QCOMPARE(simulator.ExitStatus(), 74);
        QVERIFY(simulator.ErrorText().startsWith(u"vora-printer-sim: cannot write "_s + c_strCfg + u"/Lab.dat: "_s));
    }

    void helpFitsTheScreen_data()
    {
        QTest::addColumn<QStringList>("listArgument");
        QTest::addColumn<QString>("strUsage");
        QTest::newRow("play") << QStringList({u"--help"_s}) << u"Usage: vora-printer-sim [options] [SCENARIO]\n"_s;
        QTest::newRow("encode") << QStringList({u"encode"_s, u"-h"_s})
                                << u"Usage: vora-printer-sim encode [options]\n"_s;
    }

    void helpFitsTheScreen()
    {
        QFETCH(QStringList, listArgument);
        QFETCH(QString, strUsage);
        Simulator simulator(listArgument);
        QCOMPARE(simulator.ExitStatus(), 0);
        const QString strHelp = QString::fromUtf8(simulator.Output());
        QCOMPARE(strHelp.left(strUsage.size()), strUsage);
        for (const QString& strLine : strHelp.split(QLatin1Char('\n'))) {
            QVERIFY2(strLine.size() <= 80, qPrintable(strLine));
        }
        QCOMPARE(simulator.ErrorText(), QString());
    }

    void listNamesTheScenarios()
    {
        Simulator simulator({u"--list"_s});
        QCOMPARE(simulator.ExitStatus(), 0);
        QStringList listLine = QString::fromUtf8(simulator.Output()).split(QLatin1Char('\n'));
        QCOMPARE(listLine.takeLast(), QString());
        QCOMPARE(listLine.size(), 9);
        QVERIFY(listLine.contains(
            u"every-error           All %1 errors, one after the other"_s.arg(Sent(GoldenErrors()).size())));
        QVERIFY(std::is_sorted(listLine.begin(), listLine.end()));
    }

    void versionIsTold()
    {
        Simulator simulator({u"--version"_s});
        QCOMPARE(simulator.ExitStatus(), 0);
        QVERIFY(QRegularExpression(u"\\Avora-printer-sim [0-9]+\\.[0-9]+\\.[0-9]+\n\\z"_s)
                    .match(QString::fromUtf8(simulator.Output()))
                    .hasMatch());
    }

    void encodesEveryOption()
    {
        const QStringList listArgument =
            u"encode --unexamined 564F5241000102 --header 0xA1 --header-field-1 0xB1B2 --header-field-2 49602 "
            "--vendor Vora --product RA7QX --serial SN1234 --after-serial 0xD1D2 --state printing "
            "--firmware 2.1.7 --fifth-string xyz --error paper-jam --error 0x6156 --warning black-ink-low "
            "--before-supplies 0xE1 --before-supplies-1 0xF1F2 --before-supplies-2 0xF3F4 "
            "--supply-serial INK42 --supply-type 0x00010203 --remaining-toner 300 --waste-toner 7 "
            "--opc-rotation 0x1234 --pages 256 --prints 5 --print-dots 1000 --printer-pages 65536 "
            "--printer-prints 0x01020304 --black 50 --cyan 51 --magenta 52 --yellow 53"_s.split(QLatin1Char(' '));
        Simulator simulator(listArgument);
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(simulator.Output().toHex(), HandMadeReply().toHex());
        QCOMPARE(simulator.ErrorText(), QString());

        Simulator nothing({u"encode"_s});
        QCOMPARE(nothing.ExitStatus(), 0);
        QCOMPARE(nothing.Output(), QByteArray(33, '\0'));

        // Texts that read like numbers are texts, and records may hold anything.
        Simulator supplies(
            u"encode --serial 42 --state 16 --supply 0x7001=0AFF --supply 0x1="_s.split(QLatin1Char(' ')));
        QCOMPARE(supplies.ExitStatus(), 0);
        QCOMPARE(
            supplies.Output().toHex(),
            QByteArray::fromHex("00000000000000 00 0000 0000 0000 0000 0002 3432 0000 10 0000 0000 00 00 00 0000 0000"
                                "02 7001 02 0AFF 0001 00")
                .toHex());
    }

    void encodesAJsonFile()
    {
        const QString strJson = ScenarioFile(R"({
            "unexamined": "564f5241000102", "header": 161, "header-field-1": "0xb1b2", "header-field-2": "0xC1C2",
            "vendor": "Vora", "product": "RA7QX", "serial": "SN1234", "after-serial": "0xD1D2", "state": "0x10",
            "firmware": "2.1.7", "fifth-string": "xyz", "errors": ["0x6110", "yellow-ink-empty"], "warnings": [24928],
            "before-supplies": "0xE1", "before-supplies-1": "0xF1F2", "before-supplies-2": "0xF3F4",
            "supplies": [
                {"key": "0x0000", "data": "494E4B3432"}, {"key": 1, "data": "00010203"}, {"key": "0x1000", "data": "012C"},
                {"key": "0x1001", "data": "0007"}, {"key": "0x1002", "data": "1234"}, {"key": "0x1003", "data": "00000100"},
                {"key": "0x1004", "data": "00000005"}, {"key": "0x1100", "data": "03E8"},
                {"key": "0x1101", "data": "00010000"}, {"key": "0x1102", "data": "01020304"},
                {"key": "0x4043", "data": "0032"}],
            "cyan": 51, "magenta": 52, "yellow": 53})");
        Simulator simulator({u"encode"_s, u"--json"_s, strJson});
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(simulator.Output().toHex(), HandMadeReply().toHex());
    }

    void encodesIntoAFile()
    {
        const QString strPath = c_strRoot + u"/Lab.dat"_s;
        QVERIFY(WriteFile(strPath, QByteArray(100, 'x')));
        Simulator simulator({u"encode"_s, u"--state"_s, u"busy"_s, u"--output"_s, strPath});
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(simulator.Output(), QByteArray());
        QCOMPARE(ReadFile(strPath).toHex(), ReplyInState(0x02).toHex());
    }

    void encodeReplacesALinkAndNotItsTarget()
    {
        QVERIFY(WriteFile(c_strTarget, "target"));
        QVERIFY(Link(c_strTarget, c_strLab));
        Simulator simulator({u"encode"_s, u"--output"_s, c_strLab});
        QCOMPARE(simulator.ExitStatus(), 0);
        QCOMPARE(ReadFile(c_strLab), QByteArray(33, '\0'));
        QVERIFY(!QFileInfo(c_strLab).isSymLink());
        QCOMPARE(ReadFile(c_strTarget), QByteArray("target"));
    }

    void tellsOfAFullDisk_data()
    {
        QTest::addColumn<QString>("strArgument");
        for (const QString& strArgument : {u"encode"_s, u"--list"_s, u"--help"_s, u"--version"_s}) {
            QTest::newRow(qPrintable(strArgument)) << strArgument;
        }
    }

    void tellsOfAFullDisk()
    {
        QFETCH(QString, strArgument);
        QProcess process;
        process.setStandardOutputFile(u"/dev/full"_s);
        process.start(c_strProgram, {strArgument});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 74);
        QVERIFY(process.readAllStandardError().startsWith("vora-printer-sim: cannot write to standard output: "));
    }

    void leavesNothingWhenItCannotTellTheFolder()
    {
        const QString strRoot = u"/tmp/untold"_s;
        QProcess process;
        process.setStandardOutputFile(u"/dev/full"_s);
        process.start(c_strProgram, {u"--root"_s, strRoot, u"everyday"_s});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 74);
        QCOMPARE(QDir(strRoot + u"/cfg"_s).entryList(QDir::Files), QStringList());
    }

    void encodeRefuses_data()
    {
        QTest::addColumn<QStringList>("listArgument");
        QTest::addColumn<int>("iStatus");
        QTest::addColumn<QString>("strMessage");
        const QString strWrong = ScenarioFile(R"({"cyan": 50, "colour": 1})");
        const auto row = [](const QString& strArguments, int iStatus, const QString& strMessage) {
            QTest::newRow(qPrintable(strArguments)) << strArguments.split(QLatin1Char(' ')) << iStatus << strMessage;
        };
        row(u"--colour"_s, 64, u"Unknown option 'colour'."_s);
        row(u"reply.dat"_s, 64, u"unexpected argument \"reply.dat\""_s);
        row(u"--cyan 65536"_s, 64, u"--cyan: expected a whole number from 0 to 65535, found 65536"_s);
        row(u"--cyan full"_s, 64, u"--cyan: expected a whole number from 0 to 65535, found \"full\""_s);
        row(u"--supply 4043=0032"_s, 64,
            u"--supplies[0].key: expected a whole number from 0 to 65535, found \"4043\""_s);
        row(u"--supply nothing"_s, 64, u"--supplies[0].key: expected a whole number from 0 to 65535, found \"\""_s);
        row(u"--json %1 --cyan 5"_s.arg(strWrong), 64, u"--json: expected no other field beside it"_s);
        row(u"--json /nowhere.json"_s, 66, u"cannot read /nowhere.json: No such file or directory"_s);
        row(u"--json /proc/self/mem"_s, 66, u"cannot read /proc/self/mem: Input/output error"_s);
        row(u"--json %1"_s.arg(strWrong), 65, strWrong + u": colour: unknown key, expected one of "_s);
        row(u"--output /opt/nowhere/reply.dat"_s, 73, u"cannot write /opt/nowhere/reply.dat: "_s);
        row(u"-o /dev/null"_s, 73, u"cannot write /dev/null: not a regular file"_s);
        row(u"-o /tmp"_s, 73, u"cannot write /tmp: not a regular file"_s);
    }

    void encodeRefuses()
    {
        QFETCH(QStringList, listArgument);
        QFETCH(QString, strMessage);
        Simulator simulator(QStringList(u"encode"_s) + listArgument);
        QTEST(simulator.ExitStatus(), "iStatus");
        QCOMPARE(simulator.ErrorText().left(18 + strMessage.size()), u"vora-printer-sim: "_s + strMessage);
        QCOMPARE(simulator.Output(), QByteArray());
    }
};

QTEST_GUILESS_MAIN(tst_vora_printer_sim)

#include "tst_vora_printer_sim.moc"
