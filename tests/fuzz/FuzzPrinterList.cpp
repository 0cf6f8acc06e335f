// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilPrinterList.h"
#include "Verdict.h"

#include <cstdint>

/// Any bytes, as the printer list file's content.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    EndUnless(ParsePrinterList({reinterpret_cast<const char*>(pData), iSize}).size() <= 1000);
    return 0;
}
