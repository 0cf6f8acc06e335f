// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReplyLabels.h"

#include <algorithm>

namespace {

const std::array<stReplyLabel, enFieldCount> c_fieldLabelList = {{
    {"unexamined", {"not examined", "不检查"}},
    {"header", {"header byte", "头字节"}},
    {"header-field-1", {"header field 1", "头字段1"}},
    {"header-field-2", {"header field 2", "头字段2"}},
    {nullptr, {"length of the vendor name", "厂商名称长度"}},
    {"vendor", {"vendor name", "厂商名称"}},
    {nullptr, {"length of the product name", "产品名称长度"}},
    {"product", {"product name", "产品名称"}},
    {nullptr, {"length of the printer serial number", "打印机序列号长度"}},
    {"serial", {"printer serial number", "打印机序列号"}},
    {"after-serial", {"field after the serial number", "序列号后的字段"}},
    {"state", {"state", "状态"}},
    {nullptr, {"length of the firmware version", "固件版本长度"}},
    {"firmware", {"firmware version", "固件版本"}},
    {nullptr, {"length of the fifth string", "第五个字符串长度"}},
    {"fifth-string", {"fifth string", "第五个字符串"}},
    {nullptr, {"number of errors", "错误数"}},
    {"errors", {"error", "错误"}},
    {nullptr, {"number of warnings", "警告数"}},
    {"warnings", {"warning", "警告"}},
    {"before-supplies", {"byte before the supplies", "耗材前的字节"}},
    {"before-supplies-1", {"field 1 before the supplies", "耗材前的字段1"}},
    {"before-supplies-2", {"field 2 before the supplies", "耗材前的字段2"}},
    {nullptr, {"number of supplies records", "耗材记录数"}},
    {nullptr, {"supplies key", "耗材键"}},
    {nullptr, {"supplies data length", "耗材数据长度"}},
    {nullptr, {"supplies data", "耗材数据"}},
    {nullptr, {"ignored", "忽略"}},
}};

struct stSuppliesLabel
{
    unsigned long dwKey;
    stReplyLabel label;
};

constexpr std::array c_suppliesLabelList = {
    stSuppliesLabel{enSuppliesSerialNumber, {"supply-serial", {"supply serial number", "耗材序列号"}}},
#define VORA_LABEL(enKey, wKey, iBytes, Stem, pName, pEnglish, pChinese)                                               \
    stSuppliesLabel{enKey, {pName, {pEnglish, pChinese}}},
    VORA_SUPPLIES_OF_REPLY(VORA_LABEL)
#undef VORA_LABEL
};

} // namespace

const stReplyLabel& PartLabel(enReplyPart enField)
{
    return c_fieldLabelList.at(enField);
}

const stReplyLabel* SuppliesLabel(unsigned long dwKey)
{
    const auto found = std::find_if(c_suppliesLabelList.begin(), c_suppliesLabelList.end(),
                                    [dwKey](const stSuppliesLabel& row) { return row.dwKey == dwKey; });
    return found == c_suppliesLabelList.end() ? nullptr : &found->label;
}
