// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <array>
#include <cstdint>

// The one table of the supplies records' keys, in the order of the keys. What tests expect is docs/status-reply.md.
//
// X: enumerator; key; bytes that printers send for the number; stem of its members (dwStem of stPrinterState, m_dwStem
// and m_rawStem of UtilPrinterStatus); name in scenarios, JSON and on the command line; what it is, English and
// Chinese.

// clang-format off
#define VORA_SUPPLIES_TYPE(X) \
    X(enSuppliesType, 0x0001, 4, SupplyType, "supply-type", "supply type", "耗材类型")
#define VORA_SUPPLIES_TONER(X) \
    X(enSuppliesRemainingToner, 0x1000, 2, RemainingToner, "remaining-toner", "toner or ink left over all", "剩余墨粉或墨水总量") \
    X(enSuppliesWasteToner, 0x1001, 2, WasteToner, "waste-toner", "waste toner or ink", "废墨粉或废墨水")
#define VORA_SUPPLIES_COUNTERS(X) \
    X(enSuppliesOPCRotation, 0x1002, 2, OPCRotation, "opc-rotation", "rotations of the drum", "感光鼓转数") \
    X(enSuppliesNumberOfPages, 0x1003, 4, NumberOfPages, "pages", "pages", "页数") \
    X(enSuppliesNumberOfPrint, 0x1004, 4, NumberOfPrint, "prints", "prints", "打印次数") \
    X(enSuppliesPrintDotsCount, 0x1100, 2, PrintDotsCount, "print-dots", "printed dots", "打印点数") \
    X(enSuppliesPrinterNumOfPages, 0x1101, 4, PrinterNumOfPages, "printer-pages", "pages of the printer", "打印机页数") \
    X(enSuppliesPrinterNumOfPrint, 0x1102, 4, PrinterNumOfPrint, "printer-prints", "prints of the printer", "打印机打印次数")
#define VORA_SUPPLIES_INK(X) \
    X(enSuppliesBlackInk, 0x4043, 2, BlackInkRemainer, "black", "black ink left, per cent", "黑色墨水剩余百分比") \
    X(enSuppliesBlueInk, 0x4143, 2, BlueInkRemainer, "cyan", "cyan ink left, per cent", "青色墨水剩余百分比") \
    X(enSuppliesRedInk, 0x4243, 2, RedInkRemainer, "magenta", "magenta ink left, per cent", "品红色墨水剩余百分比") \
    X(enSuppliesYellowInk, 0x4343, 2, YellowInkRemainer, "yellow", "yellow ink left, per cent", "黄色墨水剩余百分比")

/// All numbers in the order of the keys, which is the decoder's.
#define VORA_SUPPLIES_OF_REPLY(X) \
    VORA_SUPPLIES_TYPE(X) VORA_SUPPLIES_TONER(X) VORA_SUPPLIES_COUNTERS(X) VORA_SUPPLIES_INK(X)
/// The figures in the order of stPrinterState and of the log.
#define VORA_SUPPLIES_OF_STATE(X) \
    VORA_SUPPLIES_TONER(X) VORA_SUPPLIES_INK(X) VORA_SUPPLIES_COUNTERS(X)
// clang-format on

/// Keys of the supplies records that the program knows.
enum enSuppliesKey : std::uint16_t
{
    enSuppliesSerialNumber = 0x0000, ///< the one text
#define VORA_ENUMERATOR(enKey, wKey, ...) enKey = wKey,
    VORA_SUPPLIES_OF_REPLY(VORA_ENUMERATOR)
#undef VORA_ENUMERATOR
};

#define VORA_KEY(enKey, ...) enKey,
/// The keys of numbers, and those of inks among them.
inline constexpr std::array c_enSuppliesNumberList = {VORA_SUPPLIES_OF_REPLY(VORA_KEY)};
inline constexpr std::array c_enSuppliesInkList = {VORA_SUPPLIES_INK(VORA_KEY)};
#undef VORA_KEY
