// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CodeNames.h"
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

struct stMalformed
{
    QString strFile;
    QString strExpected; ///< behind "file name:"; one that ends with "@" is the beginning of a longer text
};

QString ModelNames()
{
    QStringList listName;
    for (const stGoldenModel& model : GoldenModels()) {
        listName.append(model.strModel);
    }
    return listName.join(QLatin1String(", "));
}

/// In the order of their values.
QString SentNames(const QList<stGoldenCode>& listCode)
{
    QStringList listName;
    for (const stGoldenCode& code : Sent(listCode)) {
        listName.append(code.strName);
    }
    return listName.join(QLatin1String(", "));
}

const QString c_strStateExpected =
    u": expected a code from 0x00 to 0xFF or one of %1, found "_s.arg(SentNames(GoldenStates()));

const QList<stMalformed> c_listMalformed = {
    {u"json-cut-off.json"_s, u"5: expected JSON: @"_s},
    {u"json-without-comma.json"_s, u"3: expected JSON: @"_s},
    {u"json-empty.json"_s, u"1: expected JSON: @"_s},
    {u"json-list.json"_s, u"1: expected an object, found a list"_s},
    {u"description-missing.json"_s, u" description: expected a text, found nothing"_s},
    {u"unknown-key.json"_s, u" colour: unknown key, expected one of description, loop, duration, printers, timeline"_s},
    {u"loop-text.json"_s, u" loop: expected true or false, found \"yes\""_s},
    {u"duration-zero.json"_s, u" duration: expected a number from 0.1 to 86400, found 0"_s},
    {u"duration-too-long.json"_s, u" duration: expected a number from 0.1 to 86400, found 86401"_s},
    {u"duration-before-last-step.json"_s, u" duration: expected a number from 4.5 to 86400, found 4"_s},
    {u"printers-missing.json"_s, u" printers: expected at least one printer, found nothing"_s},
    {u"printers-empty.json"_s, u" printers: expected at least one printer, found a list"_s},
    {u"printers-object.json"_s, u" printers: expected a list, found an object"_s},
    {u"printer-text.json"_s, u" printers[1]: expected an object, found \"Lab\""_s},
    {u"printer-unknown-key.json"_s,
     u" printers[0].colour: unknown key, expected one of name, model, connection, port, uri, count, present, file, "
     "walk, state, errors, warnings, supplies, @"_s},
    {u"name-missing.json"_s, u" printers[0].name: expected a text, found nothing"_s},
    {u"name-empty.json"_s,
     u" printers[0].name: expected a name of 1 to 240 bytes without \"/\" and control characters, found \"\""_s},
    {u"name-with-slash.json"_s,
     u" printers[0].name: expected a name of 1 to 240 bytes without \"/\" and control characters, found "
     "\"../Office\""_s},
    {u"name-with-newline.json"_s,
     u" printers[0].name: expected a name of 1 to 240 bytes without \"/\" and control characters, found "
     "\"Of\nfice\""_s},
    {u"name-too-long.json"_s,
     u" printers[0].name: expected a name of 1 to 240 bytes without \"/\" and control characters, found \""_s +
         QString(60, QChar(u'打')) + u"\""_s},
    {u"name-twice.json"_s, u" printers[2].name: expected a name that no other printer has, found \"Office\""_s},
    {u"name-without-number.json"_s,
     u" printers[0].name: expected \"%1\", where the printer's number goes, because there is a count, "
     "found \"Office\""_s},
    {u"count-zero.json"_s, u" printers[0].count: expected a whole number from 1 to 1000, found 0"_s},
    {u"count-too-many.json"_s, u" printers[0].count: expected a whole number from 1 to 1000, found 1001"_s},
    {u"printers-too-many.json"_s, u" printers[1].count: expected at most 1000 printers in all, found 401"_s},
    {u"model-unknown.json"_s, u" printers[1].model: expected one of %1, found \"RA8Q\""_s.arg(ModelNames())},
    {u"connection-unknown.json"_s, u" printers[0].connection: expected \"usb\" or \"network\", found \"serial\""_s},
    {u"port-number.json"_s, u" printers[0].port: expected a text, found 9100"_s},
    {u"uri-null.json"_s, u" printers[0].uri: expected a text, found null"_s},
    {u"present-number.json"_s, u" printers[0].present: expected true or false, found 1"_s},
    {u"file-unknown.json"_s,
     u" printers[0].file: expected one of good, missing, empty, truncated, random, mutated, oversized, trailing, "
     "found \"broken\""_s},
    {u"state-unknown.json"_s, u" printers[0].state"_s + c_strStateExpected + u"\"asleep\""_s},
    {u"state-too-large.json"_s, u" printers[0].state"_s + c_strStateExpected + u"256"_s},
    {u"state-negative.json"_s, u" printers[0].state"_s + c_strStateExpected + u"-1"_s},
    {u"state-fraction.json"_s, u" printers[0].state"_s + c_strStateExpected + u"1.5"_s},
    {u"errors-text.json"_s, u" printers[0].errors: expected a list, found \"no-paper\""_s},
    {u"error-unknown.json"_s,
     u" printers[0].errors[1]: expected a code from 0x0000 to 0xFFFF or one of wifi-init-failed, "
     "black-head-damaged, @"_s},
    {u"error-too-large.json"_s,
     u" printers[0].errors[0]: expected a code from 0x0000 to 0xFFFF or one of wifi-init-failed, @"_s},
    {u"errors-too-many.json"_s, u" printers[0].errors: expected at most 255 entries, found a list"_s},
    {u"warning-not-hexadecimal.json"_s,
     u" printers[0].warnings[0]: expected a code from 0x0000 to 0xFFFF or one of wifi-init-failed, @"_s},
    {u"cyan-negative.json"_s, u" printers[0].cyan: expected a whole number from 0 to 65535, found -1"_s},
    {u"cyan-too-large.json"_s, u" printers[0].cyan: expected a whole number from 0 to 65535, found 65536"_s},
    {u"cyan-text.json"_s, u" printers[0].cyan: expected a whole number from 0 to 65535, found \"full\""_s},
    {u"pages-too-large.json"_s,
     u" printers[0].pages: expected a whole number from 0 to 4294967295, found 4294967296"_s},
    {u"serial-number.json"_s, u" printers[0].serial: expected a text, found 42"_s},
    {u"serial-not-latin-1.json"_s, u" printers[0].serial: expected at most 65535 Latin-1 characters, found \"打印\""_s},
    {u"supply-serial-too-long.json"_s,
     u" printers[0].supply-serial: expected at most 65 Latin-1 characters, found \""_s + QString(60, QChar(u'x')) +
         u"\""_s},
    {u"unexamined-short.json"_s,
     u" printers[0].unexamined: expected 7 bytes as pairs of hexadecimal digits, found \"000102030405\""_s},
    {u"unexamined-odd.json"_s,
     u" printers[0].unexamined: expected 7 bytes as pairs of hexadecimal digits, found \"0001020304050\""_s},
    {u"header-too-large.json"_s, u" printers[0].header: expected a whole number from 0 to 255, found \"0x100\""_s},
    {u"header-field-too-large.json"_s,
     u" printers[0].header-field-1: expected a whole number from 0 to 65535, found 65536"_s},
    {u"supplies-unknown-key.json"_s, u" printers[0].supplies[0].kee: unknown key, expected one of key, data"_s},
    {u"supplies-key-missing.json"_s,
     u" printers[0].supplies[0].key: expected a whole number from 0 to 65535, found nothing"_s},
    {u"supplies-data-missing.json"_s, u" printers[0].supplies[0].data: expected a text, found nothing"_s},
    {u"supplies-data-not-hexadecimal.json"_s,
     u" printers[0].supplies[0].data: expected 0 to 65 bytes as pairs of hexadecimal digits, found \"0g\""_s},
    {u"supplies-data-fatal.json"_s,
     u" printers[0].supplies[0].data: expected 0 to 65 bytes as pairs of hexadecimal digits, found \""_s +
         QString(60, QChar(u'0')) + u"\""_s},
    {u"walk-text.json"_s, u" printers[0].walk: expected an object, found \"home\""_s},
    {u"walk-unknown-key.json"_s,
     u" printers[0].walk.speed: unknown key, expected one of every, states, errors, warnings, chance, ink"_s},
    {u"walk-without-every.json"_s, u" printers[0].walk.every: expected a number from 0.1 to 86400, found nothing"_s},
    {u"walk-every-zero.json"_s, u" printers[0].walk.every: expected a number from 0.1 to 86400, found 0"_s},
    {u"walk-state-unknown.json"_s, u" printers[0].walk.states[1]"_s + c_strStateExpected + u"\"asleep\""_s},
    {u"walk-error-unknown.json"_s,
     u" printers[0].walk.errors[0]: expected a code from 0x0000 to 0xFFFF or one of wifi-init-failed, @"_s},
    {u"walk-warning-unknown.json"_s,
     u" printers[0].walk.warnings[0]: expected a code from 0x0000 to 0xFFFF or one of wifi-init-failed, @"_s},
    {u"walk-chance-too-large.json"_s, u" printers[0].walk.chance: expected a whole number from 0 to 100, found 101"_s},
    {u"walk-ink-negative.json"_s, u" printers[0].walk.ink: expected a whole number from 0 to 100, found -1"_s},
    {u"timeline-object.json"_s, u" timeline: expected a list, found an object"_s},
    {u"step-number.json"_s, u" timeline[1]: expected an object, found 2"_s},
    {u"step-without-time.json"_s, u" timeline[0].at: expected a number from 0 to 86400, found nothing"_s},
    {u"step-time-negative.json"_s, u" timeline[0].at: expected a number from 0 to 86400, found -1"_s},
    {u"step-printer-unknown.json"_s,
     u" timeline[0].printer: expected the name of one of the printers, found \"Lab\""_s},
    {u"step-printer-number.json"_s, u" timeline[0].printer: expected a text, found 0"_s},
    {u"step-unknown-key.json"_s,
     u" timeline[0].model: unknown key, expected one of at, printer, present, file, state, @"_s},
    {u"step-state-unknown.json"_s, u" timeline[0].state"_s + c_strStateExpected + u"\"asleep\""_s},
    {u"step-present-text.json"_s, u" timeline[0].present: expected true or false, found \"no\""_s},
    {u"step-file-unknown.json"_s,
     u" timeline[0].file: expected one of good, missing, empty, truncated, random, mutated, oversized, trailing, "
     "found \"broken\""_s},
};

stScenario Read(const QByteArray& json, int iPrinters = -1)
{
    return ReadScenario(json, u"test.json"_s, iPrinters);
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
    void malformedFileIsRefused_data()
    {
        QTest::addColumn<QString>("strExpected");
        for (const stMalformed& malformed : c_listMalformed) {
            QTest::newRow(qPrintable(malformed.strFile)) << malformed.strExpected;
        }
    }

    void malformedFileIsRefused()
    {
        QFETCH(QString, strExpected);
        const QString strName = QString::fromLatin1(QTest::currentDataTag());
        const QString strPath = QStringLiteral(VORA_MALFORMED_SCENARIOS) + strName;
        QVERIFY(QFileInfo::exists(strPath));
        const QString strFailure = FailureOf(ReadFile(strPath), strName);
        strExpected.prepend(strName + QLatin1Char(':'));
        if (strExpected.endsWith(QLatin1Char('@'))) {
            strExpected.chop(1);
            QCOMPARE(strFailure.left(strExpected.size()), strExpected);
            QVERIFY(strFailure.size() > strExpected.size());
        } else {
            QCOMPARE(strFailure, strExpected);
        }
    }

    void everyMalformedFileHasARow()
    {
        QStringList listName;
        for (const stMalformed& malformed : c_listMalformed) {
            listName.append(malformed.strFile);
        }
        listName.sort();
        QStringList listFile = QDir(QStringLiteral(VORA_MALFORMED_SCENARIOS)).entryList(QDir::Files);
        listFile.sort();
        QCOMPARE(listFile, listName);
    }

    void readsEveryPart()
    {
        const stScenario scenario = Read(R"({
            "description": "All parts", "loop": true, "duration": 12.5,
            "printers": [{
                "name": "前台", "model": "RB9X", "connection": "usb", "port": "usb:1", "uri": "usb://Vora",
                "present": false, "file": "random", "state": "scanning", "errors": ["no-paper", "0x6110", 24896],
                "warnings": ["black-ink-low"], "cyan": 1, "magenta": 2, "yellow": 3, "black": 4, "remaining-toner": 5,
                "waste-toner": 6, "opc-rotation": 7, "pages": 100000, "prints": 9, "print-dots": 10,
                "printer-pages": 11, "printer-prints": 12, "supply-type": 13, "vendor": "V", "product": "P",
                "serial": "S", "firmware": "F", "fifth-string": "5", "supply-serial": "SS",
                "unexamined": "01020304050607", "header": "0x11", "before-supplies": 2, "header-field-1": 3,
                "header-field-2": 4, "after-serial": 5, "before-supplies-1": 6, "before-supplies-2": 7,
                "walk": {"every": 1.5, "states": ["ready", "0x10"], "errors": ["paper-jam"], "warnings": ["0x6160"],
                         "chance": 30, "ink": 4}
            }],
            "timeline": [{"at": 2.5, "printer": "前台", "present": true, "file": "empty", "black": 50}]
        })");
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
    }

    void countMakesPrinters()
    {
        const QByteArray json = R"({"description": "d", "printers": [
            {"name": "Lab"}, {"name": "Desk %1", "count": 2, "port": "10.0.0.%1", "uri": "socket://10.0.0.%1"},
            {"name": "100%1"}, {"name": "Other %1", "count": 1}]})";
        const QList<stSimPrinter> listPrinter = Read(json).listPrinter;
        QCOMPARE(listPrinter.size(), 5);
        QCOMPARE(listPrinter.at(0).info.strPrinterName, u"Lab"_s);
        QCOMPARE(listPrinter.at(1).info.strPrinterName, u"Desk 1"_s);
        QCOMPARE(listPrinter.at(2).info.strPrinterName, u"Desk 2"_s);
        QCOMPARE(listPrinter.at(2).info.strPort, u"10.0.0.2"_s);
        QCOMPARE(listPrinter.at(2).info.strURI, u"socket://10.0.0.2"_s);
        QCOMPARE(listPrinter.at(3).info.strPrinterName, u"100%1"_s);
        QCOMPARE(listPrinter.at(4).info.strPrinterName, u"Other 1"_s);

        QCOMPARE(Read(json, 7).listPrinter.size(), 10);
        QCOMPARE(Read(json, 7).listPrinter.at(7).info.strPrinterName, u"Desk 7"_s);
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

    void stateNames_data()
    {
        QTest::addColumn<int>("iRaw");
        QTest::addColumn<int>("iValue");
        for (const stGoldenCode& code : GoldenStates()) {
            QTest::newRow(qPrintable(code.strName)) << code.iRawCode << code.iValue;
        }
    }

    void stateNames()
    {
        QFETCH(int, iRaw);
        QFETCH(int, iValue);
        const QString strName = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(StateName(iValue), strName);
        QCOMPARE(StateName(c_iNoValue), u"unknown"_s);
        const std::optional<quint8> code = StateCodeByName(strName);
        QCOMPARE(code ? static_cast<int>(*code) : -1, iRaw);
        QCOMPARE(StateNames().count(strName), iRaw < 0 ? 0 : 1);
        QCOMPARE(StateNames().size(), Sent(GoldenStates()).size());
        QVERIFY(!StateCodeByName(strName + QLatin1Char('x')));
    }

    void errorNames_data()
    {
        QTest::addColumn<int>("iRaw");
        QTest::addColumn<int>("iValue");
        for (const stGoldenCode& code : GoldenErrors()) {
            QTest::newRow(qPrintable(code.strName)) << code.iRawCode << code.iValue;
        }
    }

    void errorNames()
    {
        QFETCH(int, iRaw);
        QFETCH(int, iValue);
        const QString strName = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(ErrorName(iValue), strName);
        QCOMPARE(ErrorName(c_iNoValue), u"unknown"_s);
        const std::optional<quint16> code = ErrorCodeByName(strName);
        QCOMPARE(code ? static_cast<int>(*code) : -1, iRaw);
        QCOMPARE(ErrorNames().count(strName), iRaw < 0 ? 0 : 1);
        QCOMPARE(ErrorNames().size(), Sent(GoldenErrors()).size());
        QVERIFY(!ErrorCodeByName(strName + QLatin1Char('x')));
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

    void builtInScenariosAreThere()
    {
        QCOMPARE(BuiltInScenarios().join(QLatin1Char(' ')),
                 u"cancel-on-panel every-error everyday garbage ink-running-out many off-line-and-back "
                 "paper-out printers-come-and-go"_s);
        QVERIFY(BuiltInScenario(u"nothing"_s).isNull());
    }

    void builtInScenarioIsGood_data()
    {
        QTest::addColumn<bool>("bChance");
        const QStringList listChance = {u"garbage"_s, u"many"_s};
        for (const QString& strName : BuiltInScenarios()) {
            QTest::newRow(qPrintable(strName)) << listChance.contains(strName);
        }
    }

    void builtInScenarioIsGood()
    {
        const QString strName = QString::fromLatin1(QTest::currentDataTag());
        QCOMPARE(FailureOf(BuiltInScenario(strName), strName), u"no failure"_s);
        const stScenario scenario = ReadScenario(BuiltInScenario(strName), strName);
        QVERIFY(!scenario.strDescription.isEmpty());
        QVERIFY(22 + scenario.strDescription.size() <= 80); // one line of the list
        QVERIFY(!scenario.strDescription.contains(QLatin1Char('\n')));
        QTEST(scenario.UsesChance(), "bChance");
    }

    void everydayShowsSomethingEveryTwoSeconds()
    {
        const stScenario scenario = ReadScenario(BuiltInScenario(u"everyday"_s), u"everyday"_s);
        QVERIFY(scenario.bLoop);
        QCOMPARE(scenario.iDurationMSec, 20000);
        QCOMPARE(scenario.listPrinter.size(), 3);
        QList<int> listConnectType;
        QList<stPrinterState> listState;
        for (const stSimPrinter& printer : scenario.listPrinter) {
            listConnectType.append(printer.info.iConnectType);
            listState.append(DecodeReply(printer.reply));
        }
        std::sort(listConnectType.begin(), listConnectType.end());
        QCOMPARE(listConnectType, QList<int>({1, 2, 2}));

        QList<stStatusReply> listReply;
        for (const stSimPrinter& printer : scenario.listPrinter) {
            listReply.append(printer.reply);
        }
        TrdGetPrinterStatus worker;
        std::set<qint64> setVisible = {0};
        std::set<int> setState;
        for (const stStep& step : scenario.listStep) {
            for (const int iIndex : step.listPrinter) {
                ApplyReplyKeys(JsonReader(step.fields, QString()), listReply[iIndex]);
                const stPrinterState state = DecodeReply(listReply.at(iIndex));
                if (worker.CheckStatusChange(state, listState.at(iIndex))) {
                    setVisible.insert(step.iAtMSec);
                }
                listState[iIndex] = state;
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
        const stScenario scenario = ReadScenario(BuiltInScenario(u"every-error"_s), u"every-error"_s);
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
    }

    /// The printer tool takes a printer for off-line after eleven seconds without its file.
    void offLineLastsLongEnough()
    {
        const stScenario scenario = ReadScenario(BuiltInScenario(u"off-line-and-back"_s), u"off-line-and-back"_s);
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

    void garbageNeverEndsTheReader_data()
    {
        QTest::addColumn<int>("iContent");
        QTest::newRow("empty") << 2;
        QTest::newRow("truncated") << 3;
        QTest::newRow("random") << 4;
        QTest::newRow("mutated") << 5;
        QTest::newRow("oversized") << 6;
        QTest::newRow("trailing") << 7;
    }

    /// A reader that meets what it must not meet ends this test.
    void garbageNeverEndsTheReader()
    {
        QFETCH(int, iContent);
        QCOMPARE(FileContentNames().at(iContent), QString::fromLatin1(QTest::currentDataTag()));
        QRandomGenerator random(20261116);
        for (const QByteArray& reply : {ReplyOfManyRecords(), EncodeStatusReply(stStatusReply())}) {
            for (int i = 0; i < 5000; ++i) {
                IsAccepted(AsRead(FileContent(static_cast<enFileContent>(iContent), reply, random)));
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
        stStatusReply reply;
        reply.vendorName = "Vora";
        reply.productName = "RA7Q";
        reply.serialNumber = "S1";
        reply.firmwareVersion = "1";
        reply.fifthString = "55";
        reply.listErrorCode = {0x6100, 0x6110};
        reply.listWarningCode = {0x6160};
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
        const stSimPrinter printer = ReadScenario(BuiltInScenario(u"many"_s), u"many"_s, 1).listPrinter.constFirst();
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

    void playerTellsWhatItCouldNotWrite()
    {
        QTemporaryDir root;
        const DriverFolder folder(root.filePath(u"cfg"_s));
        const stScenario scenario = Read(R"({"description": "d", "printers": [{"name": "Lab"}],
            "duration": 100, "timeline": [{"at": 100, "state": "printing"}]})"); // at the very end
        Player player(scenario, folder, 1000, 1);
        player.Start();
        QVERIFY(QDir(folder.Path()).removeRecursively());
        QString strMessage;
        try {
            player.Advance();
        } catch (const ToolError& error) {
            QCOMPARE(error.ExitStatus(), enExitIo);
            strMessage = error.Message();
        }
        QVERIFY2(strMessage.startsWith(u"cannot write "_s + folder.Path() + u"/Lab.dat: "_s), qPrintable(strMessage));
        QVERIFY(!player.HasFinished());
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
        const QByteArray large = R"(, "fifth-string": ")" + QByteArray(60000, 'x') + R"("})";
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
