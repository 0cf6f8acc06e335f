// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

#include <QStringList>

class JsonReader;

// A status reply as people write it: one key for each field, the same in scenarios, in JSON files and (with "--") on
// the command line.

/// One field of a reply.
struct stFieldKey
{
    QString strKey;
    QString strMeaning;
    QString strValue;   ///< what its value is called in a help text
    bool bList = false; ///< in JSON a list, on the command line a repeatable option of another name
    bool bText = false; ///< its value is a text even if it reads like a number
};

QList<stFieldKey> ReplyFields();
QStringList ReplyFieldKeys();

/// Stores the fields that the object has; the others stay. Other keys of the object are left alone.
/// Throws InputError.
void ApplyReplyFields(const JsonReader& reader, stStatusReply& reply);

/// Replaces the supplies records of the key; records stand in the order of their keys, so that the prints come after
/// the pages, which also count as prints.
void SetSupplies(stStatusReply& reply, const stSuppliesRecord& record);

/// The number in the last supplies record of the key, 0 when there is none.
quint32 SuppliesValue(const stStatusReply& reply, enSuppliesKey enKey);

/// Raw codes of a list of names ("no-paper"), hexadecimal texts ("0x6100") or numbers. Throw InputError.
QList<quint16> ErrorCodes(const JsonReader& reader, const QString& strKey);
QList<quint8> StateCodes(const JsonReader& reader, const QString& strKey);
