// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Verdict.h"

#include "ReplyLayout.h"
#include "TrdGetPrinterStatus.h"

#include <algorithm>
#include <csetjmp>
#include <csignal>

#include <unistd.h>

namespace {

std::jmp_buf s_beforeDecoding;
bool s_bDecoding = false;

bool AreErrors(const QList<enErrorStatus>& listError)
{
    return listError.size() <= 255 && std::all_of(listError.begin(), listError.end(),
                                                  [](int iError) { return iError >= 0 && iError < enErrorCount; });
}

bool IsWithinBounds(const stPrinterState& state)
{
    const bool bTexts = state.strVenderName.size() <= 255 && state.strProductName.size() <= 255 &&
                        state.strPrinterSerialNumber.size() <= 255 && state.strFWVersion.size() <= 255 &&
                        state.strSupplySerialNumber.size() <= 64;
    const unsigned long dwHighest = std::max({
#define VORA_FIGURE(enKey, wKey, iBytes, Stem, ...) state.dw##Stem,
        VORA_SUPPLIES_OF_STATE(VORA_FIGURE)
#undef VORA_FIGURE
    });
    return bTexts && state.enCurrentStatus >= 0 && state.enCurrentStatus < enStatusCount &&
           state.enSpplyType == enSupplyTypeDefault && AreErrors(state.listErrorStatus) &&
           AreErrors(state.listWarningStatus) && dwHighest <= 0xFFFFFFFF && state.iReadFailCount == 0;
}

enVerdict VerdictOfLayout(const unsigned char* pData, std::size_t iSize)
{
    switch (ReplyLayout(QByteArray(reinterpret_cast<const char*>(pData), static_cast<int>(iSize))).Fault()) {
    case enReplyTruncated: return enRejected;
    case enReplyFatalSupplies: return enEnded;
    default: return enDecoded;
    }
}

} // namespace

/// The C library's function, defined anew. The decoder's frame, which the jump leaves, holds plain values only.
extern "C" void abort() noexcept
{
    if (s_bDecoding) {
        s_bDecoding = false;
        std::longjmp(s_beforeDecoding, 1);
    }
    std::raise(SIGABRT);
    ::_exit(128 + SIGABRT);
}

enVerdict Decode(UtilPrinterStatus& decoder, const unsigned char* pData, std::size_t iSize)
{
    if (_setjmp(s_beforeDecoding) != 0) {
        return enEnded;
    }
    s_bDecoding = true;
    const bool bDecoded = decoder.parseRecvBuf(const_cast<unsigned char*>(pData), iSize);
    s_bDecoding = false;
    return bDecoded ? enDecoded : enRejected;
}

enVerdict Judge(const unsigned char* pData, std::size_t iSize)
{
    UtilPrinterStatus decoder;
    const enVerdict enResult = Decode(decoder, pData, iSize);
    bool bAgreed = VerdictOfLayout(pData, iSize) == enResult;
    if (enResult != enEnded) {
        static TrdGetPrinterStatus s_worker;
        stPrinterState& state = s_worker.m_printerManager.printerState;
        state = stPrinterState();
        state.iReadFailCount = 1;
        const int iResult = s_worker.CheckPrinterStatus(const_cast<unsigned char*>(pData), iSize);
        const bool bKept = state.iReadFailCount == 1 && state.enCurrentStatus == enStatusOffline &&
                           state.strVenderName.isEmpty() && state.listErrorStatus.isEmpty();
        bAgreed = bAgreed && (enResult == enDecoded ? iResult == 0 && IsWithinBounds(state) : iResult == -1 && bKept);
    }
    return bAgreed ? enResult : enDisputed;
}

void EndUnless(bool bCondition)
{
    if (!bCondition) {
        std::abort();
    }
}
