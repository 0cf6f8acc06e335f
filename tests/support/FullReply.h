// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

/// A reply with all that the program shows and keeps: every text, 3 errors, 2 warnings, all 14 supplies.
inline stStatusReply FullReply()
{
    stStatusReply reply;
    reply.unexamined = "VORA\1\2\3";
    reply.vendorName = "Vora";
    reply.productName = "Vora RA7QX Series";
    reply.serialNumber = "RA7QX20261104000187";
    reply.byStatus = 0x10;
    reply.firmwareVersion = "2.14.03.20260918";
    reply.fifthString = "xyz";
    reply.listErrorCode = {0x6105, 0x6100, 0x6110};
    reply.listWarningCode = {0x6160, 0x6161};
    reply.listSupplies.append({enSuppliesSerialNumber, "CRG-0099887766"});
    for (const enSuppliesKey enKey : c_enSuppliesNumberList) {
        reply.listSupplies.append(MakeSuppliesRecord(enKey, 77));
    }
    return reply;
}
