// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyLayout.h"

#include "UtilPrinterStatus.h"

#include <algorithm>

namespace {

constexpr std::size_t c_iUsualFields = 96; // what a reply with all supplies and some codes has, so that none is moved

} // namespace

ReplyLayout::ReplyLayout(const QByteArray& reply) : m_reply(reply)
{
    m_listField.reserve(c_iUsualFields);
    if (Walk() && m_iUsedLength < m_reply.size()) {
        const int iLength = static_cast<int>(m_reply.size()) - m_iUsedLength;
        m_listField.push_back({enFieldIgnored, 0, m_iUsedLength, iLength, 0, 0});
    }
}

bool ReplyLayout::HasSupplies(unsigned long dwKey) const
{
    return std::find(m_listSuppliesKey.begin(), m_listSuppliesKey.end(), dwKey) != m_listSuppliesKey.end();
}

bool ReplyLayout::Walk()
{
    const bool bHead = Take(enFieldUnexamined, 7) && Take(enFieldHeader, 1) && Take(enFieldHeaderField1, 2) &&
                       Take(enFieldHeaderField2, 2) && TakeText(enFieldVendorLength, enFieldVendor) &&
                       TakeText(enFieldProductLength, enFieldProduct) && TakeText(enFieldSerialLength, enFieldSerial) &&
                       Take(enFieldAfterSerial, 2) && Take(enFieldState, 1) &&
                       TakeText(enFieldFirmwareLength, enFieldFirmware) &&
                       TakeText(enFieldFifthStringLength, enFieldFifthString);
    const bool bCodes =
        bHead && TakeCodes(enFieldErrorCount, enFieldError) && TakeCodes(enFieldWarningCount, enFieldWarning);
    if (!bCodes || !Take(enFieldBeforeSupplies, 1) || !Take(enFieldBeforeSupplies1, 2) ||
        !Take(enFieldBeforeSupplies2, 2) || !Take(enFieldSuppliesCount, 1)) {
        return false;
    }
    const int iCount = static_cast<int>(m_listField.back().dwValue);
    m_listSuppliesKey.reserve(static_cast<std::size_t>(iCount));
    for (int i = 0; i < iCount; ++i) {
        if (!TakeSupplies(i)) {
            return false;
        }
    }
    return true;
}

bool ReplyLayout::Take(const stFieldPlace& field)
{
    if (field.iLength > m_reply.size() - m_iUsedLength) {
        m_enFault = enReplyTruncated;
        m_broken = field;
        return false;
    }
    m_listField.push_back(field);
    if (field.iLength > 0) {
        m_listField.back().dwValue =
            UtilPrinterStatus::byteToDWORD(At(field.iOffset), static_cast<unsigned long>(field.iLength));
    }
    m_iUsedLength += field.iLength;
    return true;
}

bool ReplyLayout::TakeText(enReplyPart enLengthField, enReplyPart enTextField)
{
    return Take(enLengthField, 2) && Take(enTextField, static_cast<int>(m_listField.back().dwValue));
}

bool ReplyLayout::TakeCodes(enReplyPart enCountField, enReplyPart enCodeField)
{
    if (!Take(enCountField, 1)) {
        return false;
    }
    const int iCount = static_cast<int>(m_listField.back().dwValue);
    for (int i = 0; i < iCount; ++i) {
        if (!Take({enCodeField, i, m_iUsedLength, 2, 0, 0})) {
            return false;
        }
    }
    return true;
}

bool ReplyLayout::TakeSupplies(int iIndex)
{
    if (!Take({enFieldSuppliesKey, iIndex, m_iUsedLength, 2, 0, 0})) {
        return false;
    }
    const unsigned long dwKey = m_listField.back().dwValue;
    m_listField.back().dwKey = dwKey;
    m_listSuppliesKey.push_back(dwKey);
    if (!Take({enFieldSuppliesLength, iIndex, m_iUsedLength, 1, dwKey, 0})) {
        return false;
    }
    const stFieldPlace lengthField = m_listField.back();
    const int iLength = static_cast<int>(lengthField.dwValue);
    const bool bComplete = iLength <= m_reply.size() - m_iUsedLength;
    if (bComplete && iLength > c_iMaxSuppliesData) {
        m_enFault = enReplyFatalSupplies;
        m_broken = lengthField;
        return false;
    }
    // A record without data has the first byte of the one before it.
    if (!Take({enFieldSuppliesData, iIndex, m_iUsedLength, iLength, dwKey, m_byStaged})) {
        return false;
    }
    if (iLength > 0) {
        m_byStaged = *At(m_listField.back().iOffset);
    }
    return true;
}

const unsigned char* ReplyLayout::At(int iOffset) const
{
    return reinterpret_cast<const unsigned char*>(m_reply.constData()) + iOffset;
}
