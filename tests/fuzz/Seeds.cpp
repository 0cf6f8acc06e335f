// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Seeds.h"

#include "HandMadeReply.h"
#include "JsonReader.h"
#include "ReplyFields.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"

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

} // namespace

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
