// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Verdict.h"

#include <cstdint>

/// Any bytes, as a status reply: the decoder and the conversion to a record.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    EndUnless(Judge(pData, iSize) != enDisputed);
    return 0;
}
