// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EncodeCommand.h"

#include "CommandLine.h"
#include "DriverFolder.h"
#include "JsonReader.h"
#include "ReplyFields.h"

#include <QFileInfo>
#include <QJsonArray>

#include <algorithm>

namespace {

const QString c_strOutput = u"output"_s;
const QString c_strJson = u"json"_s;
const QString c_strError = u"error"_s;
const QString c_strWarning = u"warning"_s;
const QString c_strSupply = u"supply"_s;

void AddOptions(QCommandLineParser& parser)
{
    const auto add = [&parser](const QString& strName, const QString& strMeaning, const QString& strValue) {
        parser.addOption({strName, strMeaning, strValue});
    };
    parser.addOption({{u"o"_s, c_strOutput}, u"Write to FILE."_s, u"FILE"_s});
    add(c_strJson, u"Take the fields from a JSON object in FILE."_s, u"FILE"_s);
    add(c_strError, u"An error, raw or by name; repeatable."_s, u"CODE"_s);
    add(c_strWarning, u"A warning, likewise."_s, u"CODE"_s);
    add(c_strSupply, u"A supplies record, such as 0x4043=0032; repeatable."_s, u"KEY=HEX"_s);
    for (const stReplyKey& field : ReplyKeys()) {
        if (!field.bList) {
            add(field.strKey, field.strMeaning, field.strValue);
        }
    }
}

/// A text of the command line as the JSON value that it stands for.
QJsonValue ValueOf(const stReplyKey& field, const QString& strText)
{
    bool bNumber = false;
    const qint64 iNumber = strText.toLongLong(&bNumber);
    return bNumber && !field.bText ? QJsonValue(iNumber) : QJsonValue(strText);
}

QJsonObject FieldsOf(const QCommandLineParser& parser)
{
    QJsonObject object;
    for (const stReplyKey& field : ReplyKeys()) {
        if (!field.bList && parser.isSet(field.strKey)) {
            object.insert(field.strKey, ValueOf(field, parser.value(field.strKey)));
        }
    }
    for (const QString& strOption : {c_strError, c_strWarning}) {
        if (parser.isSet(strOption)) {
            object.insert(strOption + QLatin1Char('s'), QJsonArray::fromStringList(parser.values(strOption)));
        }
    }
    QJsonArray listSupplies;
    for (const QString& strRecord : parser.values(c_strSupply)) {
        const auto iEqual = strRecord.indexOf(QLatin1Char('='));
        listSupplies.append(QJsonObject{{u"key"_s, strRecord.left(std::max<qsizetype>(iEqual, 0))},
                                        {u"data"_s, strRecord.mid(iEqual + 1)}});
    }
    if (!listSupplies.isEmpty()) {
        object.insert(u"supplies"_s, listSupplies);
    }
    return object;
}

stStatusReply ReplyFromFile(const QString& strPath)
{
    const JsonReader reader = JsonReader::FromBytes(ReadInput(strPath), strPath);
    reader.AllowOnly(ReplyKeyNames());
    stStatusReply reply;
    ApplyReplyKeys(reader, reply);
    return reply;
}

stStatusReply ReplyFromOptions(const QCommandLineParser& parser)
{
    stStatusReply reply;
    ApplyReplyKeys(JsonReader(FieldsOf(parser), u"--"_s, enExitUsage), reply);
    return reply;
}

void Write(const QByteArray& bytes, const QString& strPath)
{
    if (strPath.isEmpty()) {
        Print(bytes);
        return;
    }
    const QFileInfo fileInfo(strPath);
    if (fileInfo.exists() && !fileInfo.isFile()) {
        throw ToolError(enExitCannotCreate, u"cannot write %1: not a regular file"_s.arg(strPath));
    }
    ReplaceFile(strPath, bytes);
}

} // namespace

void RunEncode(const QStringList& listArgument)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Writes one status reply. What is not given is zero or empty."_s);
    AddOptions(parser);
    if (!ParseArguments(parser, listArgument, 0)) {
        return;
    }
    const bool bJson = parser.isSet(c_strJson);
    if (bJson && !FieldsOf(parser).isEmpty()) {
        throw ToolError(enExitUsage, u"--json: expected no other field beside it"_s);
    }
    const stStatusReply reply = bJson ? ReplyFromFile(parser.value(c_strJson)) : ReplyFromOptions(parser);
    Write(EncodeStatusReply(reply), parser.value(c_strOutput));
}
