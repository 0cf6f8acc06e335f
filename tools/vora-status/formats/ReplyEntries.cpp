// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyEntries.h"

#include "StatusReport.h"

namespace {

struct stNumber
{
    unsigned long dwKey;
    unsigned long UtilPrinterStatus::*pValue;
};

constexpr std::array c_numberList = {
#define VORA_NUMBER(enKey, wKey, iBytes, Stem, ...) stNumber{enKey, &UtilPrinterStatus::m_dw##Stem},
    VORA_SUPPLIES_OF_REPLY(VORA_NUMBER)
#undef VORA_NUMBER
};

stReplyEntry Raw(enReplyPart enField, unsigned long dwValue, int iBytes)
{
    stReplyEntry entry{enEntryRaw, &PartLabel(enField)};
    entry.dwValue = dwValue;
    entry.iBytes = iBytes;
    return entry;
}

stReplyEntry Raw(enReplyPart enField, const UtilPrinterStatus::Raw2& raw)
{
    const unsigned long dwHigh = static_cast<unsigned char>(raw[0]);
    return Raw(enField, dwHigh << 8U | static_cast<unsigned char>(raw[1]), 2);
}

stReplyEntry Text(enReplyPart enField, const QString& strText)
{
    stReplyEntry entry{enEntryText, &PartLabel(enField)};
    entry.strText = strText;
    return entry;
}

stReplyEntry State(unsigned long dwRawCode)
{
    stReplyEntry entry{enEntryState, &PartLabel(enFieldState)};
    entry.dwValue = dwRawCode;
    return entry;
}

stReplyEntry Codes(enReplyPart enField, const std::vector<unsigned long>& listCode)
{
    stReplyEntry entry{enEntryCodes, &PartLabel(enField)};
    entry.pListCode = &listCode;
    return entry;
}

/// bAlsoPresent: another record gives the value too.
stReplyEntry Supplies(enReplyEntryKind enKind, const ReplyLayout& layout, unsigned long dwKey,
                      bool bAlsoPresent = false)
{
    stReplyEntry entry{enKind, SuppliesLabel(dwKey)};
    entry.bSupplies = true;
    entry.dwKey = dwKey;
    entry.bPresent = layout.HasSupplies(dwKey) || bAlsoPresent;
    return entry;
}

} // namespace

std::vector<stReplyEntry> ReplyEntries(const StatusReport& report)
{
    const UtilPrinterStatus& decoder = report.m_decoder;
    const stPrinterState& state = report.m_state;
    const ReplyLayout& layout = report.m_layout;
    std::vector<stReplyEntry> listEntry;
    listEntry.reserve(17 + c_numberList.size());
    listEntry.push_back(Text(enFieldUnexamined, QString::fromLatin1(report.m_reply.left(7).toHex())));
    listEntry.push_back(Raw(enFieldHeader, decoder.m_byHeader, 1));
    listEntry.push_back(Raw(enFieldHeaderField1, decoder.m_headerField1));
    listEntry.push_back(Raw(enFieldHeaderField2, decoder.m_headerField2));
    listEntry.push_back(Text(enFieldVendor, state.strVenderName));
    listEntry.push_back(Text(enFieldProduct, state.strProductName));
    listEntry.push_back(Text(enFieldSerial, state.strPrinterSerialNumber));
    listEntry.push_back(Raw(enFieldAfterSerial, decoder.m_afterSerialNumber));
    listEntry.push_back(State(decoder.m_dwStatus));
    listEntry.push_back(Text(enFieldFirmware, state.strFWVersion));
    listEntry.push_back(Text(enFieldFifthString, QString::fromLatin1(decoder.m_fifthString.data())));
    listEntry.push_back(Codes(enFieldError, decoder.m_listErrorCode));
    listEntry.push_back(Codes(enFieldWarning, decoder.m_listWarningCode));
    listEntry.push_back(Raw(enFieldBeforeSupplies, decoder.m_byBeforeSupplies, 1));
    listEntry.push_back(Raw(enFieldBeforeSupplies1, decoder.m_beforeSupplies1));
    listEntry.push_back(Raw(enFieldBeforeSupplies2, decoder.m_beforeSupplies2));
    listEntry.push_back(Supplies(enEntryText, layout, enSuppliesSerialNumber));
    listEntry.back().strText = state.strSupplySerialNumber;
    for (const stNumber& number : c_numberList) {
        // A record of pages gives the prints too.
        const bool bAlsoPresent =
            number.dwKey == enSuppliesNumberOfPrint && layout.HasSupplies(enSuppliesNumberOfPages);
        listEntry.push_back(Supplies(enEntryNumber, layout, number.dwKey, bAlsoPresent));
        listEntry.back().dwValue = decoder.*number.pValue;
    }
    return listEntry;
}
