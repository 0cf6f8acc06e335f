// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <vector>

/// What a reply says, field by field; those whose meaning is the printer's own business are kept as raw bytes. Without
/// initialisers: the decoder clears them in one go, which takes half as long as one by one.
struct stReplyFields
{
    using Text = std::array<char, 256>; ///< a string of the reply, cut to 255 bytes and a zero
    using Raw2 = std::array<char, 3>;   ///< two raw bytes and a zero
    using Raw4 = std::array<char, 5>;   ///< four raw bytes and a zero

    std::vector<unsigned long> m_listErrorCode;
    std::vector<unsigned long> m_listWarningCode;

    unsigned char m_byHeader;
    Raw2 m_headerField1;
    Raw2 m_headerField2;

    Raw2 m_vendorNameLength;
    Text m_vendorName;
    unsigned long m_dwVendorNameLength;
    Raw2 m_productNameLength;
    Text m_productName;
    unsigned long m_dwProductNameLength;
    Raw2 m_serialNumberLength;
    Text m_serialNumber;
    unsigned long m_dwSerialNumberLength;

    Raw2 m_afterSerialNumber;
    unsigned char m_byStatus;
    Raw2 m_fifthStringLength;
    Text m_fifthString;
    unsigned long m_dwFifthStringLength;

    unsigned char m_byErrorCount;
    Raw2 m_lastErrorCode;
    unsigned char m_byWarningCount;
    Raw2 m_lastWarningCode;
    unsigned long m_dwErrorCount;
    unsigned long m_dwWarningCount;
    unsigned long m_dwStatus;

    Text m_firmwareVersion;
    Raw2 m_firmwareVersionLength;

    unsigned char m_byBeforeSupplies;
    Raw2 m_beforeSupplies1;
    Raw2 m_beforeSupplies2;
    unsigned char m_bySuppliesCount;
    unsigned long m_dwSuppliesCount;

    std::array<char, 65> m_supplySerialNumber;
    Raw4 m_rawSupplyType;
    Raw2 m_rawRemainingToner;
    Raw2 m_rawWasteToner;
    Raw2 m_rawOPCRotation;
    Raw4 m_rawNumberOfPages;
    Raw4 m_rawNumberOfPrint;
    Raw2 m_rawPrintDotsCount;
    Raw4 m_rawPrinterNumOfPages;
    Raw4 m_rawPrinterNumOfPrint;
    Raw2 m_rawBlackInkRemainer;
    Raw2 m_rawBlueInkRemainer;
    Raw2 m_rawRedInkRemainer;
    Raw2 m_rawYellowInkRemainer;

    unsigned long m_dwSupplyType;
    unsigned long m_dwRemainingToner;
    unsigned long m_dwWasteToner;
    unsigned long m_dwOPCRotation;
    unsigned long m_dwNumberOfPages;
    unsigned long m_dwNumberOfPrint;
    unsigned long m_dwPrintDotsCount;
    unsigned long m_dwPrinterNumOfPages;
    unsigned long m_dwPrinterNumOfPrint;
    unsigned long m_dwBlackInkRemainer;
    unsigned long m_dwBlueInkRemainer;
    unsigned long m_dwRedInkRemainer;
    unsigned long m_dwYellowInkRemainer;
};

/// Decoder of one binary status reply: made, filled by parseRecvBuf, read and discarded. Used by one thread at a time.
/// Numbers are big-endian in the reply.
class UtilPrinterStatus : public stReplyFields
{
public:
    /// All fields are zero.
    UtilPrinterStatus() : stReplyFields() {}

    /// Decodes dwLength bytes. True when the whole layout up to and including the last supplies record lies within
    /// them; false as soon as a field does not. Ends the process on a supplies record of more than 65 data bytes.
    bool parseRecvBuf(unsigned char* pBuffer, unsigned long dwLength);

    /// The number of a supplies value: 2, 3 or 4 bytes big-endian; of any other length, deliberately, the first byte
    /// alone, so that pData has one byte at least. Called from any thread.
    static unsigned long byteToDWORD(const unsigned char* pData, unsigned long dwLength)
    {
        switch (dwLength) {
        case 2: return pData[0] << 8U | pData[1];
        case 3: return pData[0] << 16U | pData[1] << 8U | pData[2];
        case 4: return static_cast<unsigned long>(pData[0]) << 24U | pData[1] << 16U | pData[2] << 8U | pData[3];
        default: return pData[0];
        }
    }

    /// Stores one supplies record (dwLength at most 65, pData one byte at least) by its key; an unknown key is skipped.
    void setSuppliesData(unsigned long dwKey, unsigned char* pData, unsigned long dwLength);

    /// Address of the raw status byte. Kept for the driver package's tools.
    unsigned char* getPrinterStatusValue() { return &m_byStatus; }
};
