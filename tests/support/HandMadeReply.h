// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

/// A reply in which every field has a value of its own, written out byte by byte.
inline QByteArray HandMadeReply()
{
    return QByteArray::fromHex("564F5241000102"     // not examined
                               "A1 B1B2 C1C2"       // header
                               "0004 566F7261"      // vendor name Vora
                               "0005 5241375158"    // product name RA7QX
                               "0006 534E31323334"  // serial number SN1234
                               "D1D2"               // two bytes after the serial number
                               "10"                 // state: printing
                               "0005 322E312E37"    // firmware version 2.1.7
                               "0003 78797A"        // fifth string xyz
                               "02 6110 6156"       // errors
                               "01 6160"            // warnings
                               "E1 F1F2 F3F4"       // fields before the supplies
                               "0E"                 // supplies records
                               "0000 05 494E4B3432" // serial number INK42
                               "0001 04 00010203"   // type
                               "1000 02 012C"       // remaining toner
                               "1001 02 0007"       // waste toner
                               "1002 02 1234"       // OPC rotation
                               "1003 04 00000100"   // pages, and prints too
                               "1004 04 00000005"   // prints
                               "1100 02 03E8"       // dots
                               "1101 04 00010000"   // printer's pages
                               "1102 04 01020304"   // printer's prints
                               "4043 02 0032"       // black
                               "4143 02 0033"       // blue
                               "4243 02 0034"       // red
                               "4343 02 0035");     // yellow
}

/// A reply without texts, codes and supplies.
inline QByteArray ReplyInState(quint8 byStatus)
{
    stStatusReply reply;
    reply.byStatus = byStatus;
    return EncodeStatusReply(reply);
}

/// A reply without texts and codes.
inline QByteArray ReplyWithSupplies(const QList<stSuppliesRecord>& listSupplies)
{
    stStatusReply reply;
    reply.listSupplies = listSupplies;
    return EncodeStatusReply(reply);
}

/// A reply of exactly iSize bytes that ends with a supplies record.
inline QByteArray ReplyOfSize(int iSize)
{
    stStatusReply reply;
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 42)};
    reply.fifthString = QByteArray(iSize - static_cast<int>(EncodeStatusReply(reply).size()), 'x');
    return EncodeStatusReply(reply);
}
