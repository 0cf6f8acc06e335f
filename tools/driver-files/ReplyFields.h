// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

#include <QStringList>

class JsonReader;

// A status reply as people write it: one key for each field, the same in scenarios, in JSON files and (with "--") on
// the command line. Used by one thread at a time.

/// One field of a reply.
struct stReplyKey
{
    QString strKey;
    QString strMeaning;
    QString strValue;   ///< what its value is called in a help text
    bool bList = false; ///< in JSON a list, on the command line a repeatable option of another name
    bool bText = false; ///< its value is a text even if it reads like a number
};

// All fields in the order of the help text, and their keys alone.
QList<stReplyKey> ReplyKeys();
QStringList ReplyKeyNames();

/// Stores the fields that the object has; the others stay. Other keys of the object are left alone. Throws ToolError
/// at the first wrong value; the fields before it are stored by then.
void ApplyReplyKeys(const JsonReader& reader, stStatusReply& reply);

/// Removes the records of the key and puts this one before the first of a greater key, so that the prints come after
/// the pages, which also count as prints.
void SetSupplies(stStatusReply& reply, const stSuppliesRecord& record);

/// The number in the last supplies record of the key; 0 when there is none or it takes more than 32 bits.
quint32 LastSuppliesNumber(const stStatusReply& reply, enSuppliesKey enKey);

// Raw codes of a list of at most 255 names ("no-paper"), hexadecimal texts ("0x6100") or numbers; a missing list is
// empty. Throw ToolError.
QList<quint16> ErrorCodes(const JsonReader& reader, const QString& strKey);
QList<quint8> StateCodes(const JsonReader& reader, const QString& strKey);
