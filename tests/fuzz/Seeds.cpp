// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Seeds.h"

#include "FullReply.h"
#include "JsonReader.h"
#include "ReplyFields.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"
#include "UtilStatusIdParser.h"

namespace {

constexpr int c_iMaxOfScenario = 4; // printers and steps; the others are much the same

/// Each bound of the decoder met exactly.
stStatusReply WidestReply()
{
    stStatusReply reply;
    reply.vendorName = QByteArray(255, 'v');
    reply.productName = QByteArray(256, 'p');
    reply.fifthString = QByteArray(257, 'f');
    for (int i = 0; i < 255; ++i) {
        reply.listErrorCode.append(0x6100);
    }
    reply.listSupplies = {{enSuppliesSerialNumber, QByteArray(65, 's')}, {0x7777, QByteArray(65, 'u')}};
    return reply;
}

void AddScenario(QMap<QString, QByteArray>& seeds, const QString& strName)
{
    const stScenario scenario = ReadScenario(BuiltInScenario(strName), strName);
    for (int i = 0; i < scenario.listPrinter.size() && i < c_iMaxOfScenario; ++i) {
        seeds.insert(u"%1-printer-%2"_s.arg(strName).arg(i), EncodeStatusReply(scenario.listPrinter.at(i).reply));
    }
    for (int i = 0; i < scenario.listStep.size() && i < c_iMaxOfScenario; ++i) {
        const stStep& step = scenario.listStep.at(i);
        stStatusReply reply = scenario.listPrinter.at(step.listPrinter.constFirst()).reply;
        ApplyReplyKeys(JsonReader(step.fields, QString()), reply);
        seeds.insert(u"%1-step-%2"_s.arg(strName).arg(i), EncodeStatusReply(reply));
    }
}

QByteArray DictionaryEntry(const QByteArray& bytes)
{
    return "\"\\x" + bytes.toHex(' ').replace(" ", "\\x") + "\"\n";
}

} // namespace

QByteArray ReplyDictionary()
{
    // The serial number of the supply, and lengths at the bounds of the fields.
    QByteArray text = DictionaryEntry(QByteArray::fromHex("000005"));
    for (const char* pHex : {"00ff", "0100", "0101", "000040", "000041", "000042"}) {
        text += DictionaryEntry(QByteArray::fromHex(pHex));
    }
    for (const enSuppliesKey enKey : c_enSuppliesNumberList) {
        stStatusReply reply;
        reply.listSupplies = {MakeSuppliesRecord(enKey, 0)};
        const QByteArray bytes = EncodeStatusReply(reply);
        text += DictionaryEntry(bytes.mid(EncodeStatusReply(stStatusReply()).size(), 3)); // key and length
    }
    for (const stErrorCode& code : c_stErrorCodeList) {
        text += DictionaryEntry(QByteArray::fromHex(QByteArray::number(qulonglong{code.dwRawCode}, 16)));
    }
    for (const stStatusCode& code : c_stStatusCodeList) {
        text += DictionaryEntry(QByteArray(1, static_cast<char>(code.dwRawCode)));
    }
    return text;
}

QMap<QString, QByteArray> ReplySeeds()
{
    QMap<QString, QByteArray> seeds = {
        {u"blank"_s, EncodeStatusReply(stStatusReply())},
        {u"full"_s, EncodeStatusReply(FullReply())},
        {u"widest"_s, EncodeStatusReply(WidestReply())},
    };
    for (const QString& strName : BuiltInScenarios()) {
        AddScenario(seeds, strName);
    }
    return seeds;
}

QMap<QString, QByteArray> PrinterListSeeds()
{
    const QByteArray one = "[Main]\nCount=1\n[printer_0]\nName=";
    QByteArray groups = "[Main]\nCount=1001\n";
    for (int i = 0; i < 3000; ++i) {
        groups += "[printer_" + QByteArray::number(i) + "]\nName=A\n";
    }
    return {
        {u"variants-nested-30000-times"_s,
         one + "@Variant(" + QByteArray(R"(\0\0\0\x9\0\0\0\x1)").repeated(30000) + ')'},
        {u"3000-groups"_s, groups},
        {u"pieces-of-a-text"_s, one + QByteArray(1000000, ',')},
        {u"pieces-in-quotes"_s, one + QByteArray("\"\"").repeated(500000)},
        {u"escapes"_s, one + QByteArray("\\x40").repeated(250000)},
        {u"entries-of-a-long-group"_s,
         "[printer_" + QByteArray(500000, '1') + "]\n" + QByteArray("a=\n").repeated(150000)},
        {u"entries"_s, "[printer_0]\n" + QByteArray("a=\n").repeated(330000)},
        {u"long-key"_s, "[a]\n" + QByteArray("%41").repeated(330000) + '='},
    };
}
