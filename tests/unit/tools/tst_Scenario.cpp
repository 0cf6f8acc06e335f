// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CodeNames.h"
#include "FullReply.h"
#include "GoldenTable.h"
#include "JsonReader.h"
#include "Player.h"
#include "ReplyFields.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"
#include "TestFiles.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <QSignalSpy>
#include <QtTest>

#include <set>

namespace {

/// In the order of their values.
QString SentNames(const QList<stGoldenCode>& listCode)
{
    QStringList listName;
    for (const stGoldenCode& code : Sent(listCode)) {
        listName.append(code.strName);
    }
    return listName.join(QLatin1String(", "));
}

stScenario Read(const QByteArray& json, int iPrinters = -1)
{
    return ReadScenario(json, u"test.json"_s, iPrinters);
}

stScenario BuiltIn(const QString& strName, int iPrinters = -1)
{
    return ReadScenario(BuiltInScenario(strName), strName, iPrinters);
}

/// Of scenarios/good/.
stScenario Good(const char* pName, int iPrinters = -1)
{
    return Read(ReadFile(QStringLiteral(VORA_GOOD_SCENARIOS "/%1.json").arg(QString::fromLatin1(pName))), iPrinters);
}

QString FailureOf(const QByteArray& json, const QString& strSource, int iPrinters = -1)
{
    try {
        ReadScenario(json, strSource, iPrinters);
    } catch (const ToolError& error) {
        return error.Message();
    }
    return u"no failure"_s;
}

/// The state that the printer tool shows for a reply.
stPrinterState Decode(QByteArray bytes)
{
    TrdGetPrinterStatus worker;
    worker.CheckPrinterStatus(reinterpret_cast<unsigned char*>(bytes.data()), static_cast<unsigned long>(bytes.size()));
    return worker.m_printerManager.printerState;
}

stPrinterState DecodeReply(const stStatusReply& reply)
{
    return Decode(EncodeStatusReply(reply));
}

bool IsAccepted(QByteArray bytes)
{
    UtilPrinterStatus decoder;
    return decoder.parseRecvBuf(reinterpret_cast<unsigned char*>(bytes.data()),
                                static_cast<unsigned long>(bytes.size()));
}

/// Names, in the order of their values, and codes are what the document says; what it does not know is unknown.
template <typename Code>
void CompareNames(const QList<stGoldenCode>& listCode, QString (*nameOf)(int),
                  std::optional<Code> (*codeByName)(const QString&), const QStringList& listName)
{
    QVERIFY(!listCode.isEmpty());
    for (const stGoldenCode& code : listCode) {
        QCOMPARE(nameOf(code.iValue), code.strName);
        const std::optional<Code> found = codeByName(code.strName);
        QCOMPARE(found ? static_cast<int>(*found) : -1, code.iRawCode);
        QVERIFY(!codeByName(code.strName + QLatin1Char('x')));
    }
    QCOMPARE(nameOf(c_iNoValue), u"unknown"_s);
    QCOMPARE(listName.join(QLatin1String(", ")), SentNames(listCode));
}

/// The bytes that a reader of a status file sees.
QByteArray AsRead(const QByteArray& content)
{
    return content.left(2048);
}

/// A reply that is mostly the data of supplies records, so that a byte replaced at random often is a length.
QByteArray ReplyOfManyRecords()
{
    stStatusReply reply;
    for (int i = 0; i < 200; ++i) {
        reply.listSupplies.append(stSuppliesRecord{0x7000, QByteArray(2, '\0')});
    }
    return EncodeStatusReply(reply);
}

} // namespace

class tst_Scenario : public QObject
{
    Q_OBJECT

private slots:
    void readsEveryPart()
    {
        const stScenario scenario = Good("every-part");
        QCOMPARE(scenario.strDescription, u"All parts"_s);
        QVERIFY(scenario.bLoop);
        QCOMPARE(scenario.iDurationMSec, 12500);
        QCOMPARE(scenario.listPrinter.size(), 1);

        const stSimPrinter& printer = scenario.listPrinter.constFirst();
        QCOMPARE(printer.info.strPrinterName, u"前台"_s);
        QCOMPARE(printer.info.enType, u"RB9X"_s);
        QCOMPARE(printer.info.iConnectType, 1);
        QCOMPARE(printer.info.strPort, u"usb:1"_s);
        QCOMPARE(printer.info.strURI, u"usb://Vora"_s);
        QVERIFY(!printer.bPresent);
        QCOMPARE(printer.enContent, enFileRandom);
        QCOMPARE(EncodeStatusReply(printer.reply).toHex(),
                 QByteArray::fromHex("01020304050607 11 0003 0004 0001 56 0001 50 0001 53 0005 11 0001 46 0001 35"
                                     "03 6100 6110 6140 01 6160 02 0006 0007 0E"
                                     "0000 02 5353 0001 04 0000000D 1000 02 0005 1001 02 0006 1002 02 0007"
                                     "1003 04 000186A0 1004 04 00000009 1100 02 000A 1101 04 0000000B 1102 04 0000000C"
                                     "4043 02 0004 4143 02 0001 4243 02 0002 4343 02 0003")
                     .toHex());
        QCOMPARE(printer.walk.iEveryMSec, 1500);
        QCOMPARE(printer.walk.listState, QList<quint8>({0x00, 0x10}));
        QCOMPARE(printer.walk.listError, QList<quint16>({0x6110}));
        QCOMPARE(printer.walk.listWarning, QList<quint16>({0x6160}));
        QCOMPARE(printer.walk.iChance, 30);
        QCOMPARE(printer.walk.iInk, 4);

        QCOMPARE(scenario.listStep.size(), 1);
        const stStep& step = scenario.listStep.constFirst();
        QCOMPARE(step.iAtMSec, 2500);
        QCOMPARE(step.listPrinter, QList<int>({0}));
        QCOMPARE(step.bPresent, std::optional<bool>(true));
        QCOMPARE(step.enContent, enFileEmpty);
        QCOMPARE(step.fields.value(u"black"_s).toInt(), 50);
    }

    void leavesOutWhatIsNotGiven()
    {
        const stScenario scenario = Read(R"({"description": "d", "printers": [{"name": "Office"}]})");
        QVERIFY(!scenario.bLoop);
        QCOMPARE(scenario.iDurationMSec, -1);
        const stSimPrinter& printer = scenario.listPrinter.constFirst();
        QCOMPARE(printer.info.enType, u"RA7QX"_s);
        QCOMPARE(printer.info.iConnectType, 2);
        QVERIFY(printer.bPresent);
        QCOMPARE(printer.enContent, enFileGood);
        QCOMPARE(printer.walk.iEveryMSec, 0);
        const stPrinterState state = DecodeReply(printer.reply);
        QCOMPARE(state.enCurrentStatus, 3);
        QCOMPARE(state.strVenderName, u"Vora"_s);
        QCOMPARE(state.strProductName, u"Vora RA7QX"_s);
        QCOMPARE(state.strPrinterSerialNumber, u"SIM00001"_s);
        QCOMPARE(state.dwBlackInkRemainer, 100UL);
        QCOMPARE(state.dwBlueInkRemainer, 100UL);
        QCOMPARE(state.dwRedInkRemainer, 100UL);
        QCOMPARE(state.dwYellowInkRemainer, 100UL);

        const QByteArray withStep = R"({"description": "d", "printers": [{"name": "A"}], "timeline": [{"at": 5}]})";
        QCOMPARE(Read(withStep).iDurationMSec, 7000);

        const QByteArray withWalk = R"({"description": "d", "printers": [{"name": "A", "walk": {"every": 0.1006}}]})";
        const stWalk walk = Read(withWalk).listPrinter.constFirst().walk;
        QCOMPARE(walk.iEveryMSec, 101);
        QCOMPARE(walk.iChance, 20);
        QCOMPARE(walk.iInk, 0);
    }

    void countMakesPrinters()
    {
        const QList<stSimPrinter> listPrinter = Good("count").listPrinter;
        QCOMPARE(listPrinter.size(), 5);
        QCOMPARE(listPrinter.at(0).info.strPrinterName, u"Lab"_s);
        QCOMPARE(listPrinter.at(1).info.strPrinterName, u"Desk 1"_s);
        QCOMPARE(listPrinter.at(2).info.strPrinterName, u"Desk 2"_s);
        QCOMPARE(listPrinter.at(2).info.strPort, u"10.0.0.2"_s);
        QCOMPARE(listPrinter.at(2).info.strURI, u"socket://10.0.0.2"_s);
        QCOMPARE(listPrinter.at(3).info.strPrinterName, u"100%1"_s);
        QCOMPARE(listPrinter.at(4).info.strPrinterName, u"Other 1"_s);

        QCOMPARE(Good("count", 7).listPrinter.size(), 10);
        QCOMPARE(Good("count", 7).listPrinter.at(7).info.strPrinterName, u"Desk 7"_s);
        QCOMPARE(FailureOf(R"({"description": "d", "printers": [{"name": "Lab"}]})", u"x"_s, 7),
                 u"x: printers: expected an entry with a count, to make 7 of it, found a list"_s);
    }

    void stepFindsItsPrinters()
    {
        const stScenario scenario = Read(R"({"description": "d",
            "printers": [{"name": "Lab"}, {"name": "Desk %1", "count": 3}],
            "timeline": [{"at": 1}, {"at": 2, "printer": "Desk %1"}, {"at": 3, "printer": "Desk 2"},
                         {"at": 4, "printer": "Lab"}]})");
        QCOMPARE(scenario.listStep.at(0).listPrinter, QList<int>({0, 1, 2, 3}));
        QCOMPARE(scenario.listStep.at(1).listPrinter, QList<int>({1, 2, 3}));
        QCOMPARE(scenario.listStep.at(2).listPrinter, QList<int>({2}));
        QCOMPARE(scenario.listStep.at(3).listPrinter, QList<int>({0}));
    }

    void stepsAreInTheOrderOfTheirTimes()
    {
        const stScenario scenario = Read(R"({"description": "d", "printers": [{"name": "Lab"}], "timeline": [
            {"at": 3, "black": 1}, {"at": 1, "black": 2}, {"at": 3, "black": 3}, {"at": 2, "black": 4}]})");
        QList<int> listBlack;
        for (const stStep& step : scenario.listStep) {
            listBlack.append(step.fields.value(u"black"_s).toInt());
        }
        QCOMPARE(listBlack, QList<int>({2, 4, 1, 3}));
        QCOMPARE(scenario.iDurationMSec, 5000);
    }

    void names()
    {
        CompareNames(GoldenStates(), StateName, StateCodeByName, StateNames());
        CompareNames(GoldenErrors(), ErrorName, ErrorCodeByName, ErrorNames());
        QStringList listModel;
        for (const stGoldenModel& model : GoldenModels()) {
            listModel.append(model.strModel);
        }
        const auto refusal = [](const QByteArray& value) {
            return FailureOf(R"({"description": "d", "printers": [{"name": "Lab", )" + value + "}]}", u"s"_s);
        };
        QCOMPARE(refusal("\"model\": \"RA8Q\""),
                 u"s: printers[0].model: expected one of %1, found \"RA8Q\""_s.arg(listModel.join(u", "_s)));
        QCOMPARE(refusal("\"state\": 256"),
                 u"s: printers[0].state: expected a code from 0x00 to 0xFF or one of %1, found 256"_s.arg(
                     SentNames(GoldenStates())));
        QCOMPARE(refusal("\"errors\": [-1]"),
                 u"s: printers[0].errors[0]: expected a code from 0x0000 to 0xFFFF or one of %1, found -1"_s.arg(
                     SentNames(GoldenErrors())));
    }

    void suppliesStandInTheOrderOfTheirKeys()
    {
        stStatusReply reply;
        reply.listSupplies = {{0x4043, "b"}, {0x4043, "c"}, {0x1004, "p"}};
        SetSupplies(reply, MakeSuppliesRecord(enSuppliesBlackInk, 40));
        SetSupplies(reply, MakeSuppliesRecord(enSuppliesNumberOfPages, 9));
        QList<int> listKey;
        for (const stSuppliesRecord& record : reply.listSupplies) {
            listKey.append(record.wKey);
        }
        QCOMPARE(listKey, QList<int>({0x1003, 0x1004, 0x4043}));
        QCOMPARE(LastSuppliesNumber(reply, enSuppliesBlackInk), 40U);
        QCOMPARE(LastSuppliesNumber(reply, enSuppliesYellowInk), 0U);
    }

    void builtInScenariosAreGood()
    {
        QCOMPARE(BuiltInScenarios().join(QLatin1Char(' ')),
                 u"cancel-on-panel every-error everyday garbage ink-running-out many off-line-and-back "
                 "paper-out printers-come-and-go"_s);
        QVERIFY(BuiltInScenario(u"nothing"_s).isNull());
        for (const QString& strName : BuiltInScenarios()) {
            QCOMPARE(FailureOf(BuiltInScenario(strName), strName), u"no failure"_s);
            const stScenario scenario = BuiltIn(strName);
            QVERIFY(!scenario.strDescription.isEmpty());
            QVERIFY(22 + scenario.strDescription.size() <= 80); // one line of the list
            QVERIFY(!scenario.strDescription.contains(QLatin1Char('\n')));
            QCOMPARE(scenario.UsesChance(), strName == QLatin1String("garbage") || strName == QLatin1String("many"));
        }
    }

    void everydayShowsSomethingEveryTwoSeconds()
    {
        const stScenario scenario = BuiltIn(u"everyday"_s);
        QVERIFY(scenario.bLoop);
        QCOMPARE(scenario.iDurationMSec, 20000);
        QCOMPARE(scenario.listPrinter.size(), 3);
        QList<int> listConnectType;
        QList<stStatusReply> listReply;
        for (const stSimPrinter& printer : scenario.listPrinter) {
            listConnectType.append(printer.info.iConnectType);
            listReply.append(printer.reply);
        }
        std::sort(listConnectType.begin(), listConnectType.end());
        QCOMPARE(listConnectType, QList<int>({1, 2, 2}));

        TrdGetPrinterStatus worker;
        std::set<qint64> setVisible = {0};
        std::set<int> setState;
        for (const stStep& step : scenario.listStep) {
            for (const int iIndex : step.listPrinter) {
                const stPrinterState before = DecodeReply(listReply.at(iIndex));
                ApplyReplyKeys(JsonReader(step.fields, QString()), listReply[iIndex]);
                const stPrinterState state = DecodeReply(listReply.at(iIndex));
                if (worker.CheckStatusChange(state, before)) {
                    setVisible.insert(step.iAtMSec);
                }
                setState.insert(state.enCurrentStatus);
            }
        }
        std::set<qint64> setExpected;
        for (qint64 iAt = 0; iAt < 20000; iAt += 2000) {
            setExpected.insert(iAt);
        }
        QVERIFY(setVisible == setExpected);
        for (const int iState : {3, 5, 6, 8}) { // ready, busy, cancelling, printing
            QVERIFY(setState.count(iState) == 1);
        }
    }

    void everyErrorShowsThemAll()
    {
        const stScenario scenario = BuiltIn(u"every-error"_s);
        stStatusReply reply = scenario.listPrinter.constFirst().reply;
        QList<int> listShown;
        for (const stStep& step : scenario.listStep) {
            ApplyReplyKeys(JsonReader(step.fields, QString()), reply);
            for (const enErrorStatus enError : DecodeReply(reply).listErrorStatus) {
                listShown.append(enError);
            }
        }
        QList<int> listExpected;
        for (const stGoldenCode& code : Sent(GoldenErrors())) {
            listExpected.append(code.iValue);
        }
        QVERIFY(!listExpected.isEmpty());
        QCOMPARE(listShown, listExpected);
        QCOMPARE(scenario.strDescription, u"All %1 errors, one after the other"_s.arg(listExpected.size()));
        QCOMPARE(scenario.listStep.constFirst().iAtMSec, 2000);
        QCOMPARE(scenario.listStep.constLast().iAtMSec, 2000 * (listExpected.size() + 1));
    }

    /// The printer tool takes a printer for off-line after eleven seconds without its file.
    void offLineLastsLongEnough()
    {
        const stScenario scenario = BuiltIn(u"off-line-and-back"_s);
        qint64 iGone = -1;
        qint64 iLongest = 0;
        for (const stStep& step : scenario.listStep) {
            if (step.listPrinter == QList<int>({1})) {
                iLongest = iGone < 0 ? iLongest : std::max(iLongest, step.iAtMSec - iGone);
                iGone = step.enContent == enFileMissing ? step.iAtMSec : -1;
            }
        }
        QVERIFY(iLongest >= 13000);
    }

    /// A reader that meets what it must not meet ends this test.
    void garbageNeverEndsTheReader()
    {
        QCOMPARE(FileContentNames().join(QLatin1Char(' ')),
                 u"good missing empty truncated random mutated oversized trailing"_s);
        QRandomGenerator random(20261116);
        for (int iContent = enFileEmpty; iContent < enFileContentCount; ++iContent) {
            for (const QByteArray& reply : {ReplyOfManyRecords(), EncodeStatusReply(stStatusReply())}) {
                for (int i = 0; i < 5000; ++i) {
                    IsAccepted(AsRead(FileContent(static_cast<enFileContent>(iContent), reply, random)));
                }
            }
        }
    }

    void fatalRecordIsKnown_data()
    {
        QTest::addColumn<QByteArray>("listLength");
        QTest::addColumn<bool>("bEnds");
        QTest::newRow("no record") << QByteArray("") << false;
        QTest::newRow("65 bytes") << QByteArray("\x41") << false;
        QTest::newRow("66 bytes") << QByteArray("\x42") << true;
        QTest::newRow("255 bytes") << QByteArray("\xFF") << true;
        QTest::newRow("66 bytes after others") << QByteArray("\x02\x41\x42") << true;
    }

    void fatalRecordIsKnown()
    {
        QFETCH(QByteArray, listLength);
        stStatusReply reply = FullReply();
        reply.listSupplies.clear();
        for (const char cLength : std::as_const(listLength)) {
            reply.listSupplies.append(stSuppliesRecord{0x7000, QByteArray(static_cast<unsigned char>(cLength), 'x')});
        }
        const QByteArray bytes = EncodeStatusReply(reply);
        QTEST(HasFatalSupplies(bytes), "bEnds");
        // A record that the reader never comes to is of no matter.
        QVERIFY(!HasFatalSupplies(bytes.left(40)));
    }

    void contentIsWhatItsNameSays()
    {
        const QByteArray reply = EncodeStatusReply(
            Read(R"({"description": "d", "printers": [{"name": "Lab"}]})").listPrinter.constFirst().reply);
        QRandomGenerator random(7);
        std::set<QByteArray> setTruncated;
        for (int i = 0; i < 200; ++i) {
            QCOMPARE(FileContent(enFileGood, reply, random), reply);
            QVERIFY(FileContent(enFileMissing, reply, random).isNull());
            QCOMPARE(FileContent(enFileEmpty, reply, random), QByteArray());

            const QByteArray truncated = FileContent(enFileTruncated, reply, random);
            setTruncated.insert(truncated);
            QVERIFY(truncated.size() < reply.size() && reply.startsWith(truncated));
            QVERIFY(!IsAccepted(truncated));

            const QByteArray bytes = FileContent(enFileRandom, reply, random);
            QVERIFY(!bytes.isEmpty() && bytes.size() <= 2048);

            const QByteArray mutated = FileContent(enFileMutated, reply, random);
            QCOMPARE(mutated.size(), reply.size());
            int iDifferent = 0;
            for (int j = 0; j < reply.size(); ++j) {
                iDifferent += mutated.at(j) == reply.at(j) ? 0 : 1;
            }
            QVERIFY(iDifferent <= 4);

            const QByteArray oversized = FileContent(enFileOversized, reply, random);
            QVERIFY(oversized.size() > 2048);
            QVERIFY(!IsAccepted(AsRead(oversized)));

            const QByteArray trailing = FileContent(enFileTrailing, reply, random);
            QVERIFY(trailing.size() > 2048 && trailing.startsWith(reply));
            QVERIFY(IsAccepted(AsRead(trailing)));
        }
        QVERIFY(setTruncated.size() > 20);
    }

    void walkTakesTheSameCourseWithTheSameSeed()
    {
        const stSimPrinter printer = BuiltIn(u"many"_s, 1).listPrinter.constFirst();
        const auto course = [&printer](quint32 dwSeed) {
            QRandomGenerator random(dwSeed);
            stStatusReply reply = printer.reply;
            QByteArray bytes;
            for (int i = 0; i < 50; ++i) {
                StepAtRandom(printer.walk, reply, random);
                bytes += EncodeStatusReply(reply);
            }
            return bytes;
        };
        QCOMPARE(course(1), course(1));
        QVERIFY(course(1) != course(2));
    }

    void walkStaysInItsBounds()
    {
        stWalk walk;
        walk.listState = {0x00, 0x10};
        walk.listError = {0x6100, 0x6110};
        walk.listWarning = {0x6160};
        walk.iChance = 25;
        walk.iInk = 7;
        stStatusReply reply;
        SetSupplies(reply, MakeSuppliesRecord(enSuppliesBlackInk, 50));
        QRandomGenerator random(5);
        int iErrors = 0;
        int iFilled = 0;
        std::set<int> setState;
        std::set<int> setError;
        for (int i = 0; i < 2000; ++i) {
            const quint32 dwBefore = LastSuppliesNumber(reply, enSuppliesBlackInk);
            StepAtRandom(walk, reply, random);
            const quint32 dwAfter = LastSuppliesNumber(reply, enSuppliesBlackInk);
            iFilled += dwBefore == 0 ? 1 : 0;
            QVERIFY(dwBefore == 0 ? dwAfter == 100 : dwAfter <= dwBefore && dwAfter + 7 >= dwBefore);
            setState.insert(reply.byStatus);
            QVERIFY(reply.listErrorCode.size() <= 1 && reply.listWarningCode.size() <= 1);
            for (const quint16 wCode : std::as_const(reply.listErrorCode)) {
                setError.insert(wCode);
                ++iErrors;
            }
        }
        QVERIFY(iFilled > 10);
        QVERIFY(setState == std::set<int>({0x00, 0x10}));
        QVERIFY(setError == std::set<int>({0x6100, 0x6110}));
        QVERIFY(iErrors > 400 && iErrors < 600);

        walk.iChance = 0;
        walk.iInk = 0;
        SetSupplies(reply, MakeSuppliesRecord(enSuppliesBlackInk, 0));
        for (int i = 0; i < 50; ++i) {
            StepAtRandom(walk, reply, random);
            QVERIFY(reply.listErrorCode.isEmpty() && reply.listWarningCode.isEmpty());
            QCOMPARE(LastSuppliesNumber(reply, enSuppliesBlackInk), 0U);
        }
    }

    /// However fast the clock is, every step is played, and the last one holds until the end.
    void playerLeavesNothingOut()
    {
        const QTemporaryDir root;
        const DriverFolder folder(root.path());
        const stScenario scenario = Read(R"({"description": "d", "duration": 100,
            "printers": [{"name": "Lab", "black": 0}, {"name": "Gone", "present": false}],
            "timeline": [{"at": 10, "printer": "Lab", "state": "printing"}, {"at": 10, "printer": "Lab", "black": 7},
                         {"at": 20, "printer": "Gone", "present": true, "cyan": 3},
                         {"at": 99, "printer": "Lab", "file": "missing"}]})");
        Player player(scenario, folder, 1000, 1);
        player.Start();
        QCOMPARE(QDir(root.path()).entryList(QDir::Files), QStringList({u"Lab.dat"_s, u"printerlist.ini"_s}));
        QCOMPARE(Decode(player.CurrentReply(u"Lab"_s)).enCurrentStatus, 3);
        QVERIFY(player.CurrentReply(u"Gone"_s).isEmpty());
        QVERIFY(player.CurrentReply(u"Nobody"_s).isEmpty());
        while (!player.HasFinished()) {
            QVERIFY(player.WaitMSec().has_value());
            player.Advance();
        }
        QCOMPARE(QDir(root.path()).entryList(QDir::Files), QStringList({u"Gone.dat"_s, u"printerlist.ini"_s}));
        QCOMPARE(Decode(player.CurrentReply(u"Gone"_s)).dwBlueInkRemainer, 3UL);
        QVERIFY(player.CurrentReply(u"Lab"_s).isEmpty());
        QCOMPARE(player.CleanUp(), QString());
        QVERIFY(QDir(root.path()).isEmpty());
    }

    void playerStopsWithinAMoment()
    {
        const QTemporaryDir root;
        const DriverFolder folder(root.path());
        const stScenario scenario = Read(R"({"description": "d", "printers": [{"name": "Lab", "file": "missing"},
            {"name": "Office", "file": "missing"}], "timeline": [{"at": 0}, {"at": 0, "state": "printing"}]})");
        Player player(scenario, folder, 1, 1);
        player.Start();
        player.SetMustStop([&folder] { return folder.HasStatus(u"Lab"_s); });
        player.Advance();
        QVERIFY(!folder.HasStatus(u"Office"_s));
        QCOMPARE(Decode(ReadFile(folder.StatusPath(u"Lab"_s))).enCurrentStatus, 3); // of the first step
        QCOMPARE(player.CleanUp(), QString());
        QVERIFY(QDir(root.path()).isEmpty());
    }

    void sizeIsBounded_data()
    {
        QTest::addColumn<QByteArray>("printers");
        QTest::addColumn<QByteArray>("steps");
        QTest::addColumn<QString>("strMessage");
        const auto row = [](const char* pName, const QByteArray& printers, const QByteArray& steps,
                            const QString& strMessage = u"no failure"_s) {
            QTest::newRow(pName) << printers << steps << strMessage;
        };
        const QByteArray thousand = R"({"name": "Desk %1", "count": 1000})";
        const QByteArray step = R"({"at": 1}, )";
        row("a million changes", thousand, step.repeated(999) + R"({"at": 1})");
        row("one step more", thousand, step.repeated(1000) + R"({"at": 1, "printer": "Desk 7"})",
            u"s: timeline[1000]: expected at most 1000000 changes of a printer in all steps, found an object"_s);
        const QByteArray large = QByteArray(R"(, "fifth-string": "LONG"})").replace("LONG", QByteArray(60000, 'x'));
        row("replies of 16 MB", R"({"name": "Desk %1", "count": 279)" + large, QByteArray());
        row("replies of 17 MB", R"({"name": "Lab"}, {"name": "Desk %1", "count": 280)" + large, QByteArray(),
            u"s: printers[1]: expected replies of at most 16777216 bytes in all, found an object"_s);
        row("changes of 16 MB", R"({"name": "Desk %1", "count": 279})", R"({"at": 1)" + large);
        row("changes of 17 MB", R"({"name": "Desk %1", "count": 140})",
            R"({"at": 0}, {"at": 1)" + large + R"(, {"at": 2)" + large,
            u"s: timeline[2]: expected replies of at most 16777216 bytes in all, found an object"_s);
    }

    void sizeIsBounded()
    {
        QFETCH(const QByteArray, printers);
        QFETCH(const QByteArray, steps);
        QFETCH(const QString, strMessage);
        const QByteArray json =
            R"({"description": "d", "printers": [)" + printers + R"(], "timeline": [)" + steps + "]}";
        QCOMPARE(FailureOf(json, u"s"_s), strMessage);
    }

    void documentTellsEverything()
    {
        const QString strDocument = QString::fromUtf8(ReadFile(QStringLiteral(VORA_SIMULATOR_DOCUMENT)));
        // The names of states and errors stand in the table of codes, which tst_vora_status compares.
        QVERIFY(strDocument.contains(QLatin1String("(status-reply.md#state-codes)")));
        QVERIFY(strDocument.contains(QLatin1String("(status-reply.md#error-and-warning-codes)")));
        for (const QString& strName : ReplyKeyNames() + FileContentNames() + BuiltInScenarios()) {
            QVERIFY2(strDocument.contains(QLatin1Char('`') + strName + QLatin1Char('`')), qPrintable(strName));
        }
        const QString strBegin = u"```json\n"_s;
        const auto iBegin = strDocument.indexOf(strBegin) + strBegin.size();
        const QString strExample = strDocument.mid(iBegin, strDocument.indexOf(u"```"_s, iBegin) - iBegin);
        QCOMPARE(FailureOf(strExample.toUtf8(), u"example"_s), u"no failure"_s);
    }
};

QTEST_GUILESS_MAIN(tst_Scenario)

#include "tst_Scenario.moc"
