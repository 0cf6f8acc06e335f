// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "JsonReader.h"

#include "QtCompat.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRegularExpression>

#include <cmath>

namespace {

QString Describe(const QJsonValue& value)
{
    switch (value.type()) {
    case QJsonValue::Undefined: return u"nothing"_s;
    case QJsonValue::Null: return u"null"_s;
    case QJsonValue::Bool: return value.toBool() ? u"true"_s : u"false"_s;
    case QJsonValue::Double: return QString::number(value.toDouble(), 'g', 12);
    case QJsonValue::String: return QLatin1Char('"') + value.toString().left(60) + QLatin1Char('"');
    case QJsonValue::Array: return u"a list"_s;
    case QJsonValue::Object: return u"an object"_s;
    }
    return QString();
}

} // namespace

std::optional<qint64> WholeNumber(const QJsonValue& value)
{
    if (value.isString()) {
        const QString strText = value.toString();
        bool bNumber = false;
        const qint64 iNumber = strText.toLongLong(&bNumber, 16);
        return bNumber && strText.startsWith(QLatin1String("0x")) ? std::optional<qint64>(iNumber) : std::nullopt;
    }
    const double dNumber = value.toDouble(0.5); // what is no number is not whole either
    const bool bWhole = std::floor(dNumber) == dNumber && std::abs(dNumber) < 9e15;
    return bWhole ? std::optional<qint64>(static_cast<qint64>(dNumber)) : std::nullopt;
}

JsonReader JsonReader::FromBytes(const QByteArray& json, const QString& strSource)
{
    QJsonParseError error{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError) {
        const auto iLine = json.left(error.offset).count('\n') + 1;
        throw ToolError(enExitData, u"%1:%2: expected JSON: %3"_s.arg(strSource).arg(iLine).arg(error.errorString()));
    }
    if (!document.isObject()) {
        throw ToolError(enExitData, u"%1:1: expected an object, found a list"_s.arg(strSource));
    }
    return {document.object(), strSource + u": "_s};
}

void JsonReader::AllowOnly(const QStringList& listKey) const
{
    for (const QString& strKey : m_object.keys()) {
        if (!listKey.contains(strKey)) {
            throw ToolError(m_enFailure, u"%1%2: unknown key, expected one of %3"_s.arg(
                                             m_strPath, strKey, listKey.join(QLatin1String(", "))));
        }
    }
}

QString JsonReader::Text(const QString& strKey, const std::optional<QString>& strDefault) const
{
    if (!Has(strKey) && strDefault) {
        return *strDefault;
    }
    if (!Value(strKey).isString()) {
        Fail(strKey, u"a text"_s);
    }
    return Value(strKey).toString();
}

bool JsonReader::Flag(const QString& strKey, bool bDefault) const
{
    if (Has(strKey) && !Value(strKey).isBool()) {
        Fail(strKey, u"true or false"_s);
    }
    return Value(strKey).toBool(bDefault);
}

double JsonReader::Number(const QString& strKey, double dMin, double dMax, std::optional<double> dDefault) const
{
    if (!Has(strKey) && dDefault) {
        return *dDefault;
    }
    const double dNumber = Value(strKey).toDouble(dMin - 1);
    if (dNumber < dMin || dNumber > dMax) {
        Fail(strKey, u"a number from %1 to %2"_s.arg(dMin).arg(dMax));
    }
    return dNumber;
}

qint64 JsonReader::Whole(const QString& strKey, qint64 iMin, qint64 iMax, std::optional<qint64> iDefault) const
{
    if (!Has(strKey) && iDefault) {
        return *iDefault;
    }
    const std::optional<qint64> iNumber = WholeNumber(Value(strKey));
    if (!iNumber || *iNumber < iMin || *iNumber > iMax) {
        Fail(strKey, u"a whole number from %1 to %2"_s.arg(iMin).arg(iMax));
    }
    return *iNumber;
}

QByteArray JsonReader::Hex(const QString& strKey, int iMinSize, int iMaxSize) const
{
    static const QRegularExpression pairs(u"\\A([0-9A-Fa-f]{2})*\\z"_s);
    const QString strDigits = Text(strKey);
    if (!pairs.match(strDigits).hasMatch() || strDigits.size() < iMinSize * 2 || strDigits.size() > iMaxSize * 2) {
        const QString strSize =
            iMinSize == iMaxSize ? QString::number(iMinSize) : u"%1 to %2"_s.arg(iMinSize).arg(iMaxSize);
        Fail(strKey, strSize + u" bytes as pairs of hexadecimal digits"_s);
    }
    return QByteArray::fromHex(strDigits.toLatin1());
}

JsonReader JsonReader::Child(const QString& strKey) const
{
    if (!Value(strKey).isObject()) {
        Fail(strKey, u"an object"_s);
    }
    return {Value(strKey).toObject(), m_strPath + strKey + QLatin1Char('.'), m_enFailure};
}

QList<JsonReader> JsonReader::Children(const QString& strKey, int iMax) const
{
    QList<JsonReader> listChild;
    for (const QJsonValue& item : Items(strKey, iMax)) {
        const int iIndex = static_cast<int>(listChild.size());
        if (!item.isObject()) {
            FailItem(strKey, iIndex, u"an object"_s);
        }
        listChild.append({item.toObject(), u"%1%2[%3]."_s.arg(m_strPath, strKey).arg(iIndex), m_enFailure});
    }
    return listChild;
}

QList<QJsonValue> JsonReader::Items(const QString& strKey, int iMax) const
{
    if (Has(strKey) && !Value(strKey).isArray()) {
        Fail(strKey, u"a list"_s);
    }
    const QJsonArray array = Value(strKey).toArray();
    if (array.size() > iMax) {
        Fail(strKey, u"at most %1 entries"_s.arg(iMax));
    }
    QList<QJsonValue> listItem;
    for (const QJsonValue item : array) {
        listItem.append(item);
    }
    return listItem;
}

void JsonReader::Fail(const QString& strKey, const QString& strExpected) const
{
    FailAt(m_strPath + strKey, strExpected, Value(strKey));
}

void JsonReader::FailItem(const QString& strKey, int iIndex, const QString& strExpected) const
{
    FailAt(u"%1%2[%3]"_s.arg(m_strPath, strKey).arg(iIndex), strExpected, Value(strKey).toArray().at(iIndex));
}

void JsonReader::FailAt(const QString& strPath, const QString& strExpected, const QJsonValue& found) const
{
    throw ToolError(m_enFailure, u"%1: expected %2, found %3"_s.arg(strPath, strExpected, Describe(found)));
}
