// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CodeNames.h"
#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "JsonReader.h"
#include "Player.h"
#include "ReplyFields.h"
#include "ReplyLayout.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"
#include "TestFiles.h"
#include "TrdGetPrinterStatus.h"
#include "UtilPrinterStatus.h"

#include <QJsonDocument>
#include <QTextStream>
#include <QtTest>

#include <functional>
#include <numeric>
#include <set>

namespace {

stScenario BuiltIn(const QString& strName)
{
    return ReadScenario(BuiltInScenario(strName), strName);
}

const QString c_strGood = QStringLiteral(VORA_GOOD_SCENARIOS "/");

stScenario Good(const char* pName)
{
    return ReadScenario(ReadFile(c_strGood + QLatin1String(pName) + u".json"_s), QLatin1String(pName));
}

template <typename Code>
QString Listed(const QList<Code>& listCode)
{
    QStringList listText;
    for (const Code code : listCode) {
        listText.append(QString::number(code, 16));
    }
    return u"["_s + listText.join(QLatin1Char(' ')) + u"]"_s;
}

/// All that a scenario says: its own line, one for each printer and one for each step.
QString Told(const stScenario& scenario)
{
    QString strTold;
    QTextStream told(&strTold);
    told << scenario.strDescription << ", loop " << scenario.bLoop << ", " << scenario.iDurationMSec << " ms\n";
    for (const stSimPrinter& printer : scenario.listPrinter) {
        const stPrinterInfo& info = printer.info;
        told << "printer \"" << info.strPrinterName << "\" " << info.enType << " connection " << info.iConnectType
             << " port \"" << info.strPort << "\" uri \"" << info.strURI << "\" present " << printer.bPresent
             << " file " << printer.enContent << " walk " << printer.walk.iEveryMSec << ' '
             << Listed(printer.walk.listState) << Listed(printer.walk.listError) << Listed(printer.walk.listWarning)
             << ' ' << printer.walk.iChance << ' ' << printer.walk.iInk << " reply "
             << EncodeStatusReply(printer.reply).toHex() << '\n';
    }
    for (const stStep& step : scenario.listStep) {
        told << "step " << step.iAtMSec << " ms printers " << Listed(step.listPrinter) << " present "
             << (step.bPresent ? static_cast<int>(*step.bPresent) : -1) << " file " << step.enContent << ' '
             << QJsonDocument(step.fields).toJson(QJsonDocument::Compact) << '\n';
    }
    return strTold;
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

/// Names, in the order of their values, and codes are what the document says; what it does not know is unknown.
template <typename Code>
void CompareNames(const QList<stGoldenCode>& listCode, QString (*nameOf)(int),
                  std::optional<Code> (*codeByName)(const QString&), const QStringList& listName)
{
    QStringList listSent;
    for (const stGoldenCode& code : listCode) {
        QCOMPARE(nameOf(code.iValue), code.strName);
        const std::optional<Code> found = codeByName(code.strName);
        QCOMPARE(found ? static_cast<int>(*found) : -1, code.iRawCode);
        QVERIFY(!codeByName(code.strName + QLatin1Char('x')));
        if (found) {
            listSent.append(code.strName);
        }
    }
    QVERIFY(!listSent.isEmpty());
    QCOMPARE(nameOf(c_iNoValue), u"unknown"_s);
    QCOMPARE(listName, listSent);
}

} // namespace

class tst_Scenario : public QObject
{
    Q_OBJECT

private slots:
    void saysWhatItsFileSays()
    {
        for (const char* pName : {"count", "every-part", "minimal", "moment", "player", "steps"}) {
            const QString strExpected = QString::fromUtf8(ReadFile(c_strGood + QLatin1String(pName) + u".txt"_s));
            QCOMPARE(Told(Good(pName)).split(QLatin1Char('\n')), strExpected.split(QLatin1Char('\n')));
        }
    }

    void names()
    {
        CompareNames(GoldenStates(), StateName, StateCodeByName, StateNames());
        CompareNames(GoldenErrors(), ErrorName, ErrorCodeByName, ErrorNames());
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

    void everydayShowsSomethingEveryTwoSeconds()
    {
        const stScenario scenario = BuiltIn(u"everyday"_s);
        QVERIFY(scenario.bLoop);
        QCOMPARE(scenario.iDurationMSec, 20000);
        QList<stStatusReply> listReply;
        for (const stSimPrinter& printer : scenario.listPrinter) {
            listReply.append(printer.reply);
        }
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
        QVERIFY(setVisible == std::set<qint64>({0, 2000, 4000, 6000, 8000, 10000, 12000, 14000, 16000, 18000}));
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
        stStatusReply manyRecords; // so that a byte replaced at random often is a length
        manyRecords.listSupplies = QList<stSuppliesRecord>(200, {0x7000, QByteArray(2, '\0')});
        QRandomGenerator random(20261116);
        for (int iContent = enFileEmpty; iContent < enFileContentCount; ++iContent) {
            for (const stStatusReply& reply : {manyRecords, stStatusReply()}) {
                for (int i = 0; i < 5000; ++i) {
                    QByteArray bytes =
                        FileContent(static_cast<enFileContent>(iContent), EncodeStatusReply(reply), random).left(2048);
                    UtilPrinterStatus decoder;
                    decoder.parseRecvBuf(reinterpret_cast<unsigned char*>(bytes.data()),
                                         static_cast<unsigned long>(bytes.size()));
                }
            }
        }
    }

    void contentIsWhatItsNameSays()
    {
        const QByteArray reply = HandMadeReply();
        QRandomGenerator random(7);
        std::set<QByteArray> setTruncated;
        for (int i = 0; i < 200; ++i) {
            QCOMPARE(FileContent(enFileGood, reply, random), reply);
            QVERIFY(FileContent(enFileMissing, reply, random).isNull());
            QCOMPARE(FileContent(enFileEmpty, reply, random), QByteArray());

            const QByteArray truncated = FileContent(enFileTruncated, reply, random);
            setTruncated.insert(truncated);
            QVERIFY(truncated.size() < reply.size() && reply.startsWith(truncated));

            const QByteArray bytes = FileContent(enFileRandom, reply, random);
            QVERIFY(!bytes.isEmpty() && bytes.size() <= 2048);

            const QByteArray mutated = FileContent(enFileMutated, reply, random);
            QCOMPARE(mutated.size(), reply.size());
            QVERIFY(std::inner_product(mutated.begin(), mutated.end(), reply.begin(), 0, std::plus<>(),
                                       std::not_equal_to<>()) <= 4);

            const QByteArray oversized = FileContent(enFileOversized, reply, random);
            QVERIFY(oversized.size() > 2048);
            QCOMPARE(oversized.mid(12, 2), QByteArray::fromHex("1000")); // the length of the vendor's name
            QVERIFY(!ReplyLayout(oversized.left(2048)).IsAccepted());

            const QByteArray trailing = FileContent(enFileTrailing, reply, random);
            QVERIFY(trailing.size() > 2048 && trailing.startsWith(reply));
            QVERIFY(ReplyLayout(trailing.left(2048)).IsAccepted());
        }
        QVERIFY(setTruncated.size() > 20);
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
        stStatusReply twin = reply;
        QRandomGenerator random(5);
        QRandomGenerator randomOfTwin(5);
        int iErrors = 0;
        int iFilled = 0;
        std::set<int> setState;
        std::set<int> setError;
        for (int i = 0; i < 2000; ++i) {
            const quint32 dwBefore = LastSuppliesNumber(reply, enSuppliesBlackInk);
            StepAtRandom(walk, reply, random);
            StepAtRandom(walk, twin, randomOfTwin);
            QCOMPARE(EncodeStatusReply(twin), EncodeStatusReply(reply));
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
        Player player(Good("player"), folder, 1000, 1);
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
        Player player(Good("moment"), folder, 1, 1);
        player.Start();
        player.SetMustStop([&folder] { return folder.HasStatus(u"Lab"_s); });
        player.Advance();
        QVERIFY(!folder.HasStatus(u"Office"_s));
        QCOMPARE(Decode(ReadFile(folder.StatusPath(u"Lab"_s))).enCurrentStatus, 3); // of the first step
        QCOMPARE(player.CleanUp(), QString());
        QVERIFY(QDir(root.path()).isEmpty());
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
        ReadScenario(strExample.toUtf8(), u"example"_s); // throws when it is not good
    }
};

QTEST_GUILESS_MAIN(tst_Scenario)

#include "tst_Scenario.moc"
