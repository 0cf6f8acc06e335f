// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilPrinterStatus.h"

#include "UtilStatusIdParser.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr unsigned long c_dwUnexaminedHeader = 7; // bytes 0 to 6
constexpr unsigned long c_dwMaxSuppliesData = 65; // what a supplies record of these printers holds at most

/// Copies at most the array's size less its terminating zero.
template <std::size_t iSize>
void CopyBounded(std::array<char, iSize>& target, const unsigned char* pData, unsigned long dwLength)
{
    std::copy_n(pData, std::min<unsigned long>(dwLength, iSize - 1), target.begin());
}

/// The reply's bytes from front to back: every read first checks that its bytes are there.
class Reader
{
public:
    Reader(const unsigned char* pBuffer, unsigned long dwLength) : m_pNext(pBuffer), m_dwLeft(dwLength) {}

    const unsigned char* Take(unsigned long dwLength)
    {
        if (dwLength > m_dwLeft) {
            return nullptr;
        }
        const unsigned char* pTaken = m_pNext;
        m_pNext += dwLength;
        m_dwLeft -= dwLength;
        return pTaken;
    }

    bool Byte(unsigned char& byValue)
    {
        const unsigned char* pTaken = Take(1);
        if (pTaken != nullptr) {
            byValue = *pTaken;
        }
        return pTaken != nullptr;
    }

    bool Raw(UtilPrinterStatus::Raw2& raw)
    {
        const unsigned char* pTaken = Take(2);
        if (pTaken != nullptr) {
            CopyBounded(raw, pTaken, 2);
        }
        return pTaken != nullptr;
    }

    bool Number(UtilPrinterStatus::Raw2& raw, unsigned long& dwValue)
    {
        const unsigned char* pTaken = Take(2);
        if (pTaken != nullptr) {
            CopyBounded(raw, pTaken, 2);
            dwValue = UtilPrinterStatus::byteToDWORD(pTaken, 2);
        }
        return pTaken != nullptr;
    }

    bool String(UtilPrinterStatus::Raw2& rawLength, unsigned long& dwLength, UtilPrinterStatus::Text& text)
    {
        const unsigned char* pTaken = Number(rawLength, dwLength) ? Take(dwLength) : nullptr;
        if (pTaken != nullptr) {
            CopyBounded(text, pTaken, dwLength);
        }
        return pTaken != nullptr;
    }

    bool Codes(unsigned char& byCount, unsigned long& dwCount, UtilPrinterStatus::Raw2& rawLast,
               std::vector<unsigned long>& listCode)
    {
        if (!Byte(byCount)) {
            return false;
        }
        dwCount = byCount;
        for (unsigned long i = 0; i < dwCount; ++i) {
            unsigned long dwCode = 0;
            if (!Number(rawLast, dwCode)) {
                return false;
            }
            listCode.push_back(dwCode);
        }
        return true;
    }

private:
    const unsigned char* m_pNext;
    unsigned long m_dwLeft;
};

QList<enErrorStatus> ErrorStatusList(const std::vector<unsigned long>& listCode)
{
    QList<enErrorStatus> listStatus;
    for (const unsigned long dwCode : listCode) {
        listStatus.append(GetErrorStatusEnum(dwCode));
    }
    return listStatus;
}

template <std::size_t iSize>
QString TextOf(const std::array<char, iSize>& text)
{
    return QString::fromLatin1(text.data());
}

} // namespace

enParseResult UtilPrinterStatus::parseReply(const unsigned char* pBuffer, unsigned long dwLength)
{
    Reader reader(pBuffer, dwLength);
    unsigned long dwFirmwareVersionLength = 0;
    const bool bHead = reader.Take(c_dwUnexaminedHeader) != nullptr && reader.Byte(m_byHeader) &&
                       reader.Raw(m_headerField1) && reader.Raw(m_headerField2) &&
                       reader.String(m_vendorNameLength, m_dwVendorNameLength, m_vendorName) &&
                       reader.String(m_productNameLength, m_dwProductNameLength, m_productName) &&
                       reader.String(m_serialNumberLength, m_dwSerialNumberLength, m_serialNumber) &&
                       reader.Raw(m_afterSerialNumber) && reader.Byte(m_byStatus) &&
                       reader.String(m_firmwareVersionLength, dwFirmwareVersionLength, m_firmwareVersion) &&
                       reader.String(m_fifthStringLength, m_dwFifthStringLength, m_fifthString);
    m_dwStatus = m_byStatus;
    const bool bCodes = bHead && reader.Codes(m_byErrorCount, m_dwErrorCount, m_lastErrorCode, m_listErrorCode) &&
                        reader.Codes(m_byWarningCount, m_dwWarningCount, m_lastWarningCode, m_listWarningCode);
    if (!bCodes || !reader.Byte(m_byBeforeSupplies) || !reader.Raw(m_beforeSupplies1) ||
        !reader.Raw(m_beforeSupplies2) || !reader.Byte(m_bySuppliesCount)) {
        return enParseRejected;
    }
    m_dwSuppliesCount = m_bySuppliesCount;

    const unsigned char byNone = 0;
    const unsigned char* pLastData = &byNone; // a record without data has the first byte of the one before it
    for (unsigned long i = 0; i < m_dwSuppliesCount; ++i) {
        const unsigned char* pHead = reader.Take(3); // key and length
        const unsigned char byLength = pHead != nullptr ? pHead[2] : 0;
        const unsigned char* pData = pHead != nullptr ? reader.Take(byLength) : nullptr;
        if (pData == nullptr) {
            return enParseRejected;
        }
        if (byLength > c_dwMaxSuppliesData) {
            return enParseFatal; // no printer sends this: nothing that the reply says can be trusted
        }
        if (byLength > 0) {
            pLastData = pData;
        }
        setSuppliesData(byteToDWORD(pHead, 2), pLastData, byLength);
    }
    return enParseAccepted;
}

bool UtilPrinterStatus::parseRecvBuf(unsigned char* pBuffer, unsigned long dwLength)
{
    const enParseResult enResult = parseReply(pBuffer, dwLength);
    if (enResult == enParseFatal) {
        std::abort();
    }
    return enResult == enParseAccepted;
}

void UtilPrinterStatus::setSuppliesData(unsigned long dwKey, const unsigned char* pData, unsigned long dwLength)
{
    const auto store = [pData, dwLength](auto& raw, unsigned long& dwValue) {
        CopyBounded(raw, pData, dwLength);
        dwValue = byteToDWORD(pData, dwLength);
    };
    switch (dwKey) {
    case enSuppliesSerialNumber: CopyBounded(m_supplySerialNumber, pData, dwLength); break;
#define VORA_STORE(enKey, wKey, iBytes, Stem, ...)                                                                     \
    case enKey: store(m_raw##Stem, m_dw##Stem); break;
        VORA_SUPPLIES_OF_REPLY(VORA_STORE)
#undef VORA_STORE
    default: break;
    }
    if (dwKey == enSuppliesNumberOfPages) {
        store(m_rawNumberOfPrint, m_dwNumberOfPrint); // a record of prints that follows overwrites them
    }
}

stPrinterState DecodedState(const UtilPrinterStatus& reply)
{
    stPrinterState state;
    state.strPrinterSerialNumber = TextOf(reply.m_serialNumber);
    state.enCurrentStatus = GetPrinterStatusEnum(reply.m_dwStatus);
    state.strFWVersion = TextOf(reply.m_firmwareVersion);
    state.strVenderName = TextOf(reply.m_vendorName);
    state.strProductName = TextOf(reply.m_productName);
    state.listErrorStatus = ErrorStatusList(reply.m_listErrorCode);
    state.listWarningStatus = ErrorStatusList(reply.m_listWarningCode);
    state.strSupplySerialNumber = TextOf(reply.m_supplySerialNumber);
    state.enSpplyType = GetTonerTypeEnum(reply.m_dwSupplyType);
#define VORA_CONVERT(enKey, wKey, iBytes, Stem, ...) state.dw##Stem = reply.m_dw##Stem;
    VORA_SUPPLIES_OF_STATE(VORA_CONVERT)
#undef VORA_CONVERT
    state.iReadFailCount = 0;
    return state;
}
