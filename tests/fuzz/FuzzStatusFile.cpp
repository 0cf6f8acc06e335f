// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusRendering.h"
#include "StatusReport.h"
#include "StatusSource.h"
#include "UtilStatusFile.h"
#include "Verdict.h"

#include <algorithm>
#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

/// Any bytes, as a file that vora-status is to read. It must say of each reply what the program does with it, and live
/// on where the program ends.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    static const int s_iFd = ::memfd_create("reply", MFD_CLOEXEC); // a regular file that is in memory only
    EndUnless(::ftruncate(s_iFd, 0) == 0 && ::pwrite(s_iFd, pData, iSize, 0) == static_cast<ssize_t>(iSize));
    StatusOptions options;
    options.m_listPath.append(u"/proc/self/fd/%1"_s.arg(s_iFd));
    // Neither the program nor vora-status interprets a reply's first byte: here it chooses the output.
    const int iChoice = iSize > 0 ? pData[0] : 0;
    options.m_enFormat = static_cast<enOutputFormat>(iChoice % 4);
    options.m_enLang = iChoice / 4 % 2 == 0 ? enLanguageEnglish : enLanguageChinese;
    StatusSource source(options);
    const stStatusRendering rendering = RenderStatus(options, source);

    const auto iRead = std::min<std::size_t>(iSize, c_iMaxStatusLength);
    EndUnless(Judge(pData, iRead) != enDisputed);
    UtilPrinterStatus decoder;
    const bool bDecoded = Decode(decoder, pData, iRead) == enDecoded;
    const enExitStatus enExpected = decoder.m_listErrorCode.empty() ? enExitGood : enExitPrinterErrors;
    EndUnless(rendering.enStatus == (bDecoded ? enExpected : enExitFailure));
    return 0;
}
