// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ReplyLabels.h"

#include <vector>

class StatusReport;

enum enReplyEntryKind
{
    enEntryRaw,    ///< dwValue, iBytes wide, that the program does not interpret
    enEntryText,   ///< strText
    enEntryState,  ///< dwValue
    enEntryCodes,  ///< *pListCode
    enEntryNumber, ///< dwValue; 0 when the reply has no record for it
};

/// One value of a decoded reply with its name, ready to be shown.
struct stReplyEntry
{
    enReplyEntryKind enKind;
    const stReplyLabel* pLabel;
    unsigned long dwValue = 0;
    int iBytes = 0;
    QString strText{};
    const std::vector<unsigned long>* pListCode = nullptr; ///< the report's own
    bool bSupplies = false;                                ///< from a supplies record of the key dwKey
    unsigned long dwKey = 0;
    bool bPresent = true; ///< the reply has such a record
};

/// Every value of a decoded reply as the program's decoder has it, in the order of the reply.
std::vector<stReplyEntry> ReplyEntries(const StatusReport& report);
