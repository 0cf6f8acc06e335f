// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilPrinterStatus.h"

#include <cstddef>

// What the decoder may do with bytes that nobody vouches for. Shared by the fuzzers and the test of damaged replies.

enum enVerdict
{
    enRejected,
    enDecoded,
    enEnded,   ///< at a supplies record of more than 65 data bytes the decoder ends the process, by design
    enDisputed ///< the decoder, the conversion and the reading of the layout do not agree, or a value is out of bounds
};

/// Decodes into a new decoder and comes back even from the end by design: abort() is this program's own while the
/// decoder runs. Of all of the product's code this function alone may meet that end. Called from one thread.
enVerdict Decode(UtilPrinterStatus& decoder, const unsigned char* pData, std::size_t iSize);

/// Decodes and converts a reply and reads its layout, by code of its own. A rejected one must leave the state as it
/// was; every value of a decoded one must lie within the tables that it is looked up in and the bounds of its field.
enVerdict Judge(const unsigned char* pData, std::size_t iSize);

/// Ends the process, so that the fuzzer keeps the input, unless the condition holds.
void EndUnless(bool bCondition);
