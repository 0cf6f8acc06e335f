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

const QString c_strOutput = QStringLiteral("output");
const QString c_strJson = QStringLiteral("json");
const QString c_strError = QStringLiteral("error");
const QString c_strWarning = QStringLiteral("warning");
const QString c_strSupply = QStringLiteral("supply");

void AddOptions(QCommandLineParser& parser)
{
    const auto add = [&parser](const QString& strName, const QString& strMeaning, const QString& strValue) {
        parser.addOption({strName, strMeaning, strValue});
    };
    parser.addOption({{QStringLiteral("o"), c_strOutput}, QStringLiteral("Write to FILE."), QStringLiteral("FILE")});
    add(c_strJson, QStringLiteral("Take the fields from a JSON object in FILE."), QStringLiteral("FILE"));
    add(c_strError, QStringLiteral("An error, raw or by name; repeatable."), QStringLiteral("CODE"));
    add(c_strWarning, QStringLiteral("A warning, likewise."), QStringLiteral("CODE"));
    add(c_strSupply, QStringLiteral("A supplies record, such as 0x4043=0032; repeatable."), QStringLiteral("KEY=HEX"));
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
        listSupplies.append(QJsonObject{{QStringLiteral("key"), strRecord.left(std::max<qsizetype>(iEqual, 0))},
                                        {QStringLiteral("data"), strRecord.mid(iEqual + 1)}});
    }
    if (!listSupplies.isEmpty()) {
        object.insert(QStringLiteral("supplies"), listSupplies);
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
    ApplyReplyKeys(JsonReader(FieldsOf(parser), QStringLiteral("--"), enExitUsage), reply);
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
        throw ToolError(enExitCannotCreate, QStringLiteral("cannot write %1: not a regular file").arg(strPath));
    }
    ReplaceFile(strPath, bytes);
}

} // namespace

void RunEncode(const QStringList& listArgument)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Writes one status reply. What is not given is zero or empty."));
    AddOptions(parser);
    if (!ParseArguments(parser, listArgument, 0)) {
        return;
    }
    const bool bJson = parser.isSet(c_strJson);
    if (bJson && !FieldsOf(parser).isEmpty()) {
        throw ToolError(enExitUsage, QStringLiteral("--json: expected no other field beside it"));
    }
    const stStatusReply reply = bJson ? ReplyFromFile(parser.value(c_strJson)) : ReplyFromOptions(parser);
    Write(EncodeStatusReply(reply), parser.value(c_strOutput));
}
