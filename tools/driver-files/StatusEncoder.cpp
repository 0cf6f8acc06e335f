// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusEncoder.h"

#include <QDataStream>
#include <QIODevice>

#include <map>

namespace {

// QDataStream is big-endian by default, as the reply is.

void WriteBytes(QDataStream& stream, const QByteArray& bytes)
{
    stream.writeRawData(bytes.constData(), static_cast<int>(bytes.size()));
}

void WriteString(QDataStream& stream, const QByteArray& text)
{
    const QByteArray bounded = text.left(0xFFFF);
    stream << static_cast<quint16>(bounded.size());
    WriteBytes(stream, bounded);
}

void WriteCodes(QDataStream& stream, const QList<quint16>& listCode)
{
    const QList<quint16> bounded = listCode.mid(0, 0xFF);
    stream << static_cast<quint8>(bounded.size());
    for (const quint16 wCode : bounded) {
        stream << wCode;
    }
}

void WriteSupplies(QDataStream& stream, const QList<stSuppliesRecord>& listSupplies)
{
    const QList<stSuppliesRecord> bounded = listSupplies.mid(0, 0xFF);
    stream << static_cast<quint8>(bounded.size());
    for (const stSuppliesRecord& record : bounded) {
        const QByteArray data = record.data.left(0xFF);
        stream << record.wKey << static_cast<quint8>(data.size());
        WriteBytes(stream, data);
    }
}

/// How many bytes printers send for the number.
int BytesOf(enSuppliesKey enKey)
{
    static const std::map<enSuppliesKey, int> s_bytesOfKey = {
#define VORA_BYTES(enNumberKey, wKey, iBytes, ...) {enNumberKey, iBytes},
        VORA_SUPPLIES_OF_REPLY(VORA_BYTES)
#undef VORA_BYTES
    };
    const auto found = s_bytesOfKey.find(enKey);
    return found == s_bytesOfKey.end() ? 2 : found->second;
}

} // namespace

stSuppliesRecord MakeSuppliesRecord(enSuppliesKey enKey, quint32 dwValue)
{
    stSuppliesRecord record;
    record.wKey = enKey;
    QDataStream stream(&record.data, QIODevice::WriteOnly);
    if (BytesOf(enKey) == 4) {
        stream << dwValue;
    } else {
        stream << static_cast<quint16>(dwValue);
    }
    return record;
}

QByteArray EncodeStatusReply(const stStatusReply& reply)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    WriteBytes(stream, reply.unexamined.leftJustified(7, '\0', true));
    stream << reply.byHeader << reply.wHeaderField1 << reply.wHeaderField2;
    WriteString(stream, reply.vendorName);
    WriteString(stream, reply.productName);
    WriteString(stream, reply.serialNumber);
    stream << reply.wAfterSerialNumber << reply.byStatus;
    WriteString(stream, reply.firmwareVersion);
    WriteString(stream, reply.fifthString);
    WriteCodes(stream, reply.listErrorCode);
    WriteCodes(stream, reply.listWarningCode);
    stream << reply.byBeforeSupplies << reply.wBeforeSupplies1 << reply.wBeforeSupplies2;
    WriteSupplies(stream, reply.listSupplies);
    return bytes;
}
