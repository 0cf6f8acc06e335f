// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyLayout.h"
#include "TrdGetPrinterStatus.h"
#include "Verdict.h"

#include <cstdint>

/// Any bytes, as a status reply: the decoder and the conversion to a record.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    UtilPrinterStatus decoder;
    const enVerdict enResult = Decode(decoder, pData, iSize);
    if (enResult == enEnded) {
        const QByteArray reply(reinterpret_cast<const char*>(pData), static_cast<int>(iSize));
        EndUnless(ReplyLayout(reply).Fault() == enReplyFatalSupplies);
        return 0;
    }
    static TrdGetPrinterStatus s_worker;
    stPrinterState& state = s_worker.m_printerManager.printerState;
    state.iReadFailCount = 1;
    const int iResult = s_worker.CheckPrinterStatus(const_cast<std::uint8_t*>(pData), iSize);
    if (enResult == enDecoded) {
        EndUnless(iResult == 0 && IsWithinBounds(state));
    } else {
        EndUnless(iResult == -1 && state.iReadFailCount == 1);
    }
    return 0;
}
