// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilStatusIdParser.h"

#include <algorithm>

namespace {

template <typename List, typename Status>
Status FindStatus(const List& list, unsigned long dwRawCode, Status enDefault)
{
    const auto found =
        std::find_if(list.begin(), list.end(), [dwRawCode](const auto& row) { return row.dwRawCode == dwRawCode; });
    return found == list.end() ? enDefault : found->enStatus;
}

} // namespace

enPrinterStatus GetPrinterStatusEnum(unsigned long dwRawCode)
{
    return FindStatus(c_stStatusCodeList, dwRawCode, enStatusUnknown);
}

enErrorStatus GetErrorStatusEnum(unsigned long dwRawCode)
{
    return FindStatus(c_stErrorCodeList, dwRawCode, enErrorUnknown);
}

enSupplyType GetTonerTypeEnum(unsigned long)
{
    return enSupplyTypeDefault;
}
