// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <array>

// The raw numbers of the status reply and what they mean here. Called from any thread.

struct stStatusCode
{
    unsigned long dwRawCode;
    enPrinterStatus enStatus;
};

struct stErrorCode
{
    unsigned long dwRawCode;
    enErrorStatus enStatus;
};

extern const std::array<stStatusCode, 12> c_stStatusCodeList;
extern const std::array<stErrorCode, 45> c_stErrorCodeList;

/// State for the reply's raw state byte; enStatusUnknown for any other number.
enPrinterStatus GetPrinterStatusEnum(unsigned long dwRawCode);

/// Error or warning for one raw code, compared whole; enErrorUnknown for any other.
enErrorStatus GetErrorStatusEnum(unsigned long dwRawCode);

/// Supply type; always enSupplyTypeDefault, the printer's number is deliberately not interpreted.
enSupplyType GetTonerTypeEnum(unsigned long dwRawCode);
