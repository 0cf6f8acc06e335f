// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <array>

// The raw numbers of the status reply and what they mean here.

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

// The states and errors that have a raw code, in the order of their values.
inline constexpr std::array c_stStatusCodeList = {
#define VORA_STATE(enStatus, wRawCode, ...) stStatusCode{wRawCode, enStatus},
#include "StatusCodes.def"
};
inline constexpr std::array c_stErrorCodeList = {
#define VORA_ERROR(enError, wRawCode, ...) stErrorCode{wRawCode, enError},
#include "StatusCodes.def"
};

/// State for the reply's raw state byte; enStatusUnknown for any other number.
enPrinterStatus GetPrinterStatusEnum(unsigned long dwRawCode);

/// Error or warning for one raw code, compared whole; enErrorUnknown for any other.
enErrorStatus GetErrorStatusEnum(unsigned long dwRawCode);

/// Supply type; always enSupplyTypeDefault, the printer's number is deliberately not interpreted.
enSupplyType GetTonerTypeEnum(unsigned long dwRawCode);
