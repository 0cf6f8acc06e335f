// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyFields.h"

#include "CodeNames.h"
#include "JsonReader.h"
#include "ReplyLayout.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int c_iMaxEntries = 255;
constexpr int c_iMaxText = 65535;

const QString c_strState = u"state"_s;
const QString c_strErrors = u"errors"_s;
const QString c_strWarnings = u"warnings"_s;
const QString c_strSupplies = u"supplies"_s;
const QString c_strSupplySerial = u"supply-serial"_s;
const QString c_strUnexamined = u"unexamined"_s;

/// The supplies records that hold a number, inks first.
struct stNumberField
{
    const char* pstrKey;
    enSuppliesKey enKey;
    const char* pstrMeaning;
};

const QList<stNumberField> c_numberFieldList = {
#define VORA_FIELD(enKey, wKey, iBytes, Stem, pName, pEnglish, pChinese) {pName, enKey, pEnglish},
    VORA_SUPPLIES_INK(VORA_FIELD) VORA_SUPPLIES_TONER(VORA_FIELD) VORA_SUPPLIES_COUNTERS(VORA_FIELD)
        VORA_SUPPLIES_TYPE(VORA_FIELD)
#undef VORA_FIELD
};

struct stTextField
{
    const char* pstrKey;
    QByteArray stStatusReply::*pText;
    const char* pstrMeaning;
};

const QList<stTextField> c_textFieldList = {
    {"vendor", &stStatusReply::vendorName, "name of the vendor"},
    {"product", &stStatusReply::productName, "name of the product"},
    {"serial", &stStatusReply::serialNumber, "serial number of the printer"},
    {"firmware", &stStatusReply::firmwareVersion, "version of the firmware"},
    {"fifth-string", &stStatusReply::fifthString, "text without known meaning"},
};

template <typename Number>
struct stRawField
{
    const char* pstrKey;
    Number stStatusReply::*pNumber;
};

const QList<stRawField<quint8>> c_byteFieldList = {
    {"header", &stStatusReply::byHeader},
    {"before-supplies", &stStatusReply::byBeforeSupplies},
};

const QList<stRawField<quint16>> c_wordFieldList = {
    {"header-field-1", &stStatusReply::wHeaderField1},       {"header-field-2", &stStatusReply::wHeaderField2},
    {"after-serial", &stStatusReply::wAfterSerialNumber},    {"before-supplies-1", &stStatusReply::wBeforeSupplies1},
    {"before-supplies-2", &stStatusReply::wBeforeSupplies2},
};

QByteArray Latin1(const JsonReader& reader, const QString& strKey, int iMaxSize)
{
    const QString strText = reader.Text(strKey);
    const QByteArray text = strText.toLatin1();
    if (text.size() > iMaxSize || QString::fromLatin1(text) != strText) {
        reader.Fail(strKey, u"at most %1 Latin-1 characters"_s.arg(iMaxSize));
    }
    return text;
}

template <typename Number>
void ApplyNumbers(const JsonReader& reader, const QList<stRawField<Number>>& listField, stStatusReply& reply)
{
    for (const auto& field : listField) {
        const QString strKey = QString::fromLatin1(field.pstrKey);
        reply.*field.pNumber =
            static_cast<Number>(reader.Whole(strKey, 0, std::numeric_limits<Number>::max(), reply.*field.pNumber));
    }
}

template <typename Code>
std::optional<Code> CodeOf(const QJsonValue& value, std::optional<Code> (*pByName)(const QString&))
{
    if (const std::optional<Code> code = pByName(value.toString())) {
        return code;
    }
    const std::optional<qint64> iCode = WholeNumber(value);
    const bool bCode = iCode && *iCode >= 0 && *iCode <= std::numeric_limits<Code>::max();
    return bCode ? std::optional<Code>(static_cast<Code>(*iCode)) : std::nullopt;
}

QString ExpectedState()
{
    return u"a code from 0x00 to 0xFF or one of "_s + StateNames().join(QLatin1String(", "));
}

QString ExpectedError()
{
    return u"a code from 0x0000 to 0xFFFF or one of "_s + ErrorNames().join(QLatin1String(", "));
}

template <typename Code>
QList<Code> Codes(const JsonReader& reader, const QString& strKey, std::optional<Code> (*pByName)(const QString&),
                  QString (*pExpected)())
{
    QList<Code> listCode;
    for (const QJsonValue& item : reader.Items(strKey, c_iMaxEntries)) {
        const std::optional<Code> code = CodeOf(item, pByName);
        if (!code) {
            reader.FailItem(strKey, static_cast<int>(listCode.size()), pExpected());
        }
        listCode.append(*code);
    }
    return listCode;
}

void ApplySupplies(const JsonReader& reader, stStatusReply& reply)
{
    if (reader.Has(c_strSupplies)) {
        reply.listSupplies.clear();
        for (const JsonReader& record : reader.Children(c_strSupplies, c_iMaxEntries)) {
            const QString strKey = u"key"_s;
            const QString strData = u"data"_s;
            record.AllowOnly({strKey, strData});
            reply.listSupplies.append({static_cast<quint16>(record.Whole(strKey, 0, 0xFFFF)),
                                       record.Hex(strData, 0, ReplyLayout::c_iMaxSuppliesData)});
        }
    }
    if (reader.Has(c_strSupplySerial)) {
        SetSupplies(reply,
                    {enSuppliesSerialNumber, Latin1(reader, c_strSupplySerial, ReplyLayout::c_iMaxSuppliesData)});
    }
    for (const stNumberField& field : c_numberFieldList) {
        const QString strKey = QString::fromLatin1(field.pstrKey);
        if (reader.Has(strKey)) {
            const qint64 iMax = MakeSuppliesRecord(field.enKey, 0).data.size() == 4 ? 0xFFFFFFFFLL : 0xFFFFLL;
            SetSupplies(reply, MakeSuppliesRecord(field.enKey, static_cast<quint32>(reader.Whole(strKey, 0, iMax))));
        }
    }
}

} // namespace

QList<stReplyKey> ReplyKeys()
{
    const QString strNumber = u"N"_s;
    const QString strText = u"TEXT"_s;
    const QString strHex = u"HEX"_s;
    const QString strRaw = u"raw, without known meaning"_s;
    QList<stReplyKey> listField = {
        {c_strState, u"state, raw or by name"_s, u"CODE"_s, false, false},
        {c_strErrors, QString(), QString(), true, false},
        {c_strWarnings, QString(), QString(), true, false},
        {c_strSupplies, QString(), QString(), true, false},
    };
    for (const stNumberField& field : c_numberFieldList) {
        QString strMeaning = QString::fromLatin1(field.pstrMeaning);
        if (field.enKey == enSuppliesNumberOfPages) {
            strMeaning += u"; prints too where those are not given"_s;
        }
        listField.append({QString::fromLatin1(field.pstrKey), strMeaning, strNumber, false, false});
    }
    for (const stTextField& field : c_textFieldList) {
        const QString strMeaning = QString::fromLatin1(field.pstrMeaning);
        listField.append({QString::fromLatin1(field.pstrKey), strMeaning, strText, false, true});
    }
    listField.append({c_strSupplySerial, u"serial number of the supply"_s, strText, false, true});
    listField.append({c_strUnexamined, u"the first seven bytes"_s, strHex, false, true});
    for (const auto& field : c_byteFieldList) {
        listField.append({QString::fromLatin1(field.pstrKey), strRaw, strNumber, false, false});
    }
    for (const auto& field : c_wordFieldList) {
        listField.append({QString::fromLatin1(field.pstrKey), strRaw, strNumber, false, false});
    }
    return listField;
}

QStringList ReplyKeyNames()
{
    QStringList listKey;
    for (const stReplyKey& field : ReplyKeys()) {
        listKey.append(field.strKey);
    }
    return listKey;
}

void ApplyReplyKeys(const JsonReader& reader, stStatusReply& reply)
{
    if (reader.Has(c_strState)) {
        const std::optional<quint8> code = CodeOf(reader.Value(c_strState), StateCodeByName);
        if (!code) {
            reader.Fail(c_strState, ExpectedState());
        }
        reply.byStatus = *code;
    }
    if (reader.Has(c_strErrors)) {
        reply.listErrorCode = ErrorCodes(reader, c_strErrors);
    }
    if (reader.Has(c_strWarnings)) {
        reply.listWarningCode = ErrorCodes(reader, c_strWarnings);
    }
    for (const stTextField& field : c_textFieldList) {
        const QString strKey = QString::fromLatin1(field.pstrKey);
        if (reader.Has(strKey)) {
            reply.*field.pText = Latin1(reader, strKey, c_iMaxText);
        }
    }
    if (reader.Has(c_strUnexamined)) {
        reply.unexamined = reader.Hex(c_strUnexamined, 7, 7);
    }
    ApplyNumbers(reader, c_byteFieldList, reply);
    ApplyNumbers(reader, c_wordFieldList, reply);
    ApplySupplies(reader, reply);
}

void SetSupplies(stStatusReply& reply, const stSuppliesRecord& record)
{
    QList<stSuppliesRecord>& listRecord = reply.listSupplies;
    listRecord.erase(std::remove_if(listRecord.begin(), listRecord.end(),
                                    [&record](const stSuppliesRecord& other) { return other.wKey == record.wKey; }),
                     listRecord.end());
    const auto next = std::find_if(listRecord.begin(), listRecord.end(),
                                   [&record](const stSuppliesRecord& other) { return other.wKey > record.wKey; });
    listRecord.insert(next, record);
}

quint32 LastSuppliesNumber(const stStatusReply& reply, enSuppliesKey enKey)
{
    quint32 dwValue = 0;
    for (const stSuppliesRecord& record : reply.listSupplies) {
        if (record.wKey == enKey) {
            dwValue = record.data.toHex().toUInt(nullptr, 16);
        }
    }
    return dwValue;
}

QList<quint16> ErrorCodes(const JsonReader& reader, const QString& strKey)
{
    return Codes<quint16>(reader, strKey, ErrorCodeByName, ExpectedError);
}

QList<quint8> StateCodes(const JsonReader& reader, const QString& strKey)
{
    return Codes<quint8>(reader, strKey, StateCodeByName, ExpectedState);
}
