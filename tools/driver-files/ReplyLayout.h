// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "SuppliesKeys.h"

#include <QByteArray>

#include <vector>

/// What a piece of a status reply is.
enum enReplyPart
{
    enFieldUnexamined,
    enFieldHeader,
    enFieldHeaderField1,
    enFieldHeaderField2,
    enFieldVendorLength,
    enFieldVendor,
    enFieldProductLength,
    enFieldProduct,
    enFieldSerialLength,
    enFieldSerial,
    enFieldAfterSerial,
    enFieldState,
    enFieldFirmwareLength,
    enFieldFirmware,
    enFieldFifthStringLength,
    enFieldFifthString,
    enFieldErrorCount,
    enFieldError,
    enFieldWarningCount,
    enFieldWarning,
    enFieldBeforeSupplies,
    enFieldBeforeSupplies1,
    enFieldBeforeSupplies2,
    enFieldSuppliesCount,
    enFieldSuppliesKey,
    enFieldSuppliesLength,
    enFieldSuppliesData,
    enFieldIgnored, ///< what stands after the last supplies record
    enFieldCount
};

struct stFieldPlace
{
    enReplyPart enField = enFieldUnexamined;
    int iIndex = 0; ///< which error, warning or supplies record, from 0
    int iOffset = 0;
    int iLength = 0;
    unsigned long dwKey = 0;   ///< of the supplies record that the field belongs to
    unsigned long dwValue = 0; ///< the number that the program reads here; of no meaning for texts and unexamined bytes
};

enum enReplyFault
{
    enReplyAccepted,
    enReplyTruncated,    ///< the reply ends inside a field
    enReplyFatalSupplies ///< a supplies record has more data than the program survives
};

/// Where each field of one status reply lies, as far as the program would read it. The program's own decoder says only
/// yes or no, and ends the process on a supplies record that is too long: this says where and why, and is asked first.
class ReplyLayout
{
public:
    static constexpr int c_iMaxSuppliesData = 65; ///< with more the program ends, by design

    explicit ReplyLayout(const QByteArray& reply = QByteArray());

    bool IsAccepted() const { return m_enFault == enReplyAccepted; }
    enReplyFault Fault() const { return m_enFault; }

    /// The complete fields in the order of the reply; they follow one another without a gap.
    const std::vector<stFieldPlace>& Fields() const { return m_listField; }

    /// The field at which a rejected reply broke. Truncated: the first field that is not complete, with the length that
    /// it should have. Too much supplies data: the byte that says so, which is the last of Fields() too.
    const stFieldPlace& BrokenField() const { return m_broken; }

    /// True when the reply has a supplies record of this key.
    bool HasSupplies(unsigned long dwKey) const;

private:
    bool Walk();
    bool Take(const stFieldPlace& field);
    bool Take(enReplyPart enField, int iLength) { return Take({enField, 0, m_iUsedLength, iLength, 0, 0}); }
    bool TakeText(enReplyPart enLengthField, enReplyPart enTextField);
    bool TakeCodes(enReplyPart enCountField, enReplyPart enCodeField);
    bool TakeSupplies(int iIndex);
    const unsigned char* At(int iOffset) const;

    QByteArray m_reply;
    std::vector<stFieldPlace> m_listField;
    std::vector<unsigned long> m_listSuppliesKey;
    stFieldPlace m_broken;
    enReplyFault m_enFault = enReplyAccepted;
    int m_iUsedLength = 0;
    unsigned char m_byStaged = 0; ///< first data byte of the last supplies record that had data
};
