// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ReplyLayout.h"

#include <QByteArray>
#include <QList>
#include <QtGlobal>

/// One record of a reply's last part; its data are at most 255 bytes, 65 in a reply that the program survives.
struct stSuppliesRecord
{
    quint16 wKey = 0;
    QByteArray data;
};

/// A binary status reply field by field, with the printer's raw codes. What the program does not interpret is here too,
/// so that every reply can be written. A string has at most 65535 bytes, a list at most 255 entries; longer ones are
/// cut.
struct stStatusReply
{
    QByteArray unexamined = QByteArray(7, '\0'); ///< bytes 0 to 6
    quint8 byHeader = 0;
    quint16 wHeaderField1 = 0;
    quint16 wHeaderField2 = 0;
    QByteArray vendorName;
    QByteArray productName;
    QByteArray serialNumber;
    quint16 wAfterSerialNumber = 0;
    quint8 byStatus = 0;
    QByteArray firmwareVersion;
    QByteArray fifthString;
    QList<quint16> listErrorCode;
    QList<quint16> listWarningCode;
    quint8 byBeforeSupplies = 0;
    quint16 wBeforeSupplies1 = 0;
    quint16 wBeforeSupplies2 = 0;
    QList<stSuppliesRecord> listSupplies;
};

/// A record with a number in the width that printers use for the key: 4 bytes for the type and the page and print
/// counters, 2 for all others, which keep the lower 16 bits.
stSuppliesRecord MakeSuppliesRecord(enSuppliesKey enKey, quint32 dwValue);

/// The reply as a printer sends it; the unexamined bytes are cut or filled up with zeros to 7.
QByteArray EncodeStatusReply(const stStatusReply& reply);
