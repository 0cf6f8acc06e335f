// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"
#include "HandMadeReply.h"
#include "JsonReader.h"
#include "ReplyFields.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"

#include <QDir>

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

/// Replies as the simulator's encoder writes them, each under a name of its own. All of them decode.
QMap<QString, QByteArray> ReplySeeds()
{
    QMap<QString, QByteArray> seeds = {
        {u"blank"_s, EncodeStatusReply(stStatusReply())},
        {u"full"_s, HandMadeReply()},
        {u"widest"_s, EncodeStatusReply(WidestReply())},
    };
    for (const QString& strName : BuiltInScenarios()) {
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
    return seeds;
}

/// Printer lists that are too long for a file of their own: deep, wide and with long names.
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

void Write(const QString& strFolder, const QMap<QString, QByteArray>& contents)
{
    QDir().mkpath(strFolder);
    for (auto content = contents.begin(); content != contents.end(); ++content) {
        ReplaceFile(strFolder + QLatin1Char('/') + content.key(), content.value());
    }
}

} // namespace

/// The argument is the folder into which the seeds of all fuzzers go: reply/, printer-list/ and scenario/. A ToolError
/// ends the program.
int main(int argc, char** argv)
{
    const QString strFolder = QString::fromLocal8Bit(argc == 2 ? argv[1] : ".");
    Write(strFolder + u"/reply"_s, ReplySeeds());
    Write(strFolder + u"/printer-list"_s, PrinterListSeeds());
    for (const QString& strName : BuiltInScenarios()) {
        const QByteArray json = BuiltInScenario(strName);
        Write(strFolder + u"/scenario"_s, {{strName, json}});
        QList<stPrinterInfo> listPrinter;
        for (const auto& printer : ReadScenario(json, strName).listPrinter.mid(0, 5)) {
            listPrinter.append(printer.info);
        }
        DriverFolder(strFolder + u"/printer-list/"_s + strName).WritePrinterList(listPrinter);
    }
}
