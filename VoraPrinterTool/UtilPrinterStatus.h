// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <array>
#include <vector>

/// What became of a reply.
enum enParseResult
{
    enParseAccepted,
    enParseRejected, ///< a field does not lie within the reply
    enParseFatal     ///< a supplies record of more than 65 data bytes, which ends the process
};

/// Decoder of one binary status reply: made, filled by parseReply, read and discarded. Used by one thread at a time.
/// Numbers are big-endian in the reply; what a field means that is kept as raw bytes is the printer's own business.
class UtilPrinterStatus
{
public:
    using Text = std::array<char, 256>; ///< a string of the reply, cut to 255 bytes and a zero
    using Raw2 = std::array<char, 3>;   ///< two raw bytes and a zero

    /// Decodes dwLength bytes: accepted when the whole layout up to and including the last supplies record lies within
    /// them. The fields before the one at fault are filled in any case.
    enParseResult parseReply(const unsigned char* pBuffer, unsigned long dwLength);

    /// As above, true for an accepted reply; a fatal one ends the process.
    bool parseRecvBuf(unsigned char* pBuffer, unsigned long dwLength);

    /// The number of a supplies value: 2, 3 or 4 bytes big-endian; of any other length, deliberately, the first byte
    /// alone, so that pData has one byte at least.
    static unsigned long byteToDWORD(const unsigned char* pData, unsigned long dwLength)
    {
        switch (dwLength) {
        case 2: return pData[0] << 8U | pData[1];
        case 3: return pData[0] << 16U | pData[1] << 8U | pData[2];
        case 4: return static_cast<unsigned long>(pData[0]) << 24U | pData[1] << 16U | pData[2] << 8U | pData[3];
        default: return pData[0];
        }
    }

    /// Stores one supplies record (dwLength at most 65) by its key; an unknown key is skipped. The data of a number has
    /// one byte at least, which counts also when dwLength is 0.
    void setSuppliesData(unsigned long dwKey, const unsigned char* pData, unsigned long dwLength);

    /// Address of the raw status byte. Kept, not used by the polling.
    unsigned char* getPrinterStatusValue() { return &m_byStatus; }

    std::vector<unsigned long> m_listErrorCode;
    std::vector<unsigned long> m_listWarningCode;

    unsigned char m_byHeader = 0;
    Raw2 m_headerField1{};
    Raw2 m_headerField2{};

    Raw2 m_vendorNameLength{};
    Text m_vendorName{};
    unsigned long m_dwVendorNameLength = 0;
    Raw2 m_productNameLength{};
    Text m_productName{};
    unsigned long m_dwProductNameLength = 0;
    Raw2 m_serialNumberLength{};
    Text m_serialNumber{};
    unsigned long m_dwSerialNumberLength = 0;

    Raw2 m_afterSerialNumber{};
    unsigned char m_byStatus = 0;
    Raw2 m_fifthStringLength{};
    Text m_fifthString{};
    unsigned long m_dwFifthStringLength = 0;

    unsigned char m_byErrorCount = 0;
    Raw2 m_lastErrorCode{};
    unsigned char m_byWarningCount = 0;
    Raw2 m_lastWarningCode{};
    unsigned long m_dwErrorCount = 0;
    unsigned long m_dwWarningCount = 0;
    unsigned long m_dwStatus = 0;

    Text m_firmwareVersion{};
    Raw2 m_firmwareVersionLength{};

    unsigned char m_byBeforeSupplies = 0;
    Raw2 m_beforeSupplies1{};
    Raw2 m_beforeSupplies2{};
    unsigned char m_bySuppliesCount = 0;
    unsigned long m_dwSuppliesCount = 0;

    std::array<char, 65> m_supplySerialNumber{};
    // For each number of SuppliesKeys.h its raw bytes, then all values.
#define VORA_RAW(enKey, wKey, iBytes, Stem, ...) std::array<char, (iBytes) + 1> m_raw##Stem{};
    VORA_SUPPLIES_OF_REPLY(VORA_RAW)
#undef VORA_RAW
#define VORA_NUMBER(enKey, wKey, iBytes, Stem, ...) unsigned long m_dw##Stem = 0;
    VORA_SUPPLIES_OF_REPLY(VORA_NUMBER)
#undef VORA_NUMBER
};

/// The record that a decoded reply becomes, with no failed reads.
stPrinterState DecodedState(const UtilPrinterStatus& reply);
