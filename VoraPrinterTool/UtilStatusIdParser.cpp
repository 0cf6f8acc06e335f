// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilStatusIdParser.h"

#include <algorithm>

const std::array<stStatusCode, 12> c_stStatusCodeList = {{
    {0x00, enStatusReady},
    {0x01, enStatusInitialize},
    {0x02, enStatusBusy},
    {0x03, enStatusCanceling},
    {0x10, enStatusPrinting},
    {0x11, enStatusScanning},
    {0x12, enStatusCopying},
    {0x13, enStatusReporting},
    {0x20, enStatusCleaning},
    {0x21, enStatusAlignment},
    {0x22, enStatusScanBack},
    {0x23, enStatusDebug},
}};

const std::array<stErrorCode, 45> c_stErrorCodeList = {{
    {0x5200, enErrorWifiInitFailed},
    {0x6143, enErrorBlackHeadDamaged},
    {0x6144, enErrorColorHeadDamaged},
    {0x120A, enErrorEndOfLife},
    {0x7200, enErrorScannerOrigin},
    {0x6210, enErrorFeedMotor},
    {0x6211, enErrorCarriageMotor},
    {0x6201, enErrorMemoryFull},
    {0x6203, enErrorFatal},
    {0x5121, enErrorUpdateFailed},
    {0x6100, enErrorNoPaper},
    {0x6105, enErrorPaperSize},
    {0x6110, enErrorPaperJam},
    {0x6112, enErrorPaperPlacement},
    {0x6120, enErrorInkDoorOpen},
    {0x6121, enErrorService6121},
    {0x6122, enErrorService6122},
    {0x6131, enErrorBlackHeadMismatch},
    {0x6132, enErrorColorHeadMismatch},
    {0x6139, enErrorNozzleOvercurrent},
    {0x6140, enErrorAlignment},
    {0x6145, enErrorAlignmentSetup},
    {0x6170, enErrorBlackHeadHot},
    {0x6171, enErrorColorHeadHot},
    {0x6160, enErrorBlackInkLow},
    {0x6161, enErrorColorInkLow},
    {0x6162, enErrorBothInkLow},
    {0x6163, enErrorCyanInkLow},
    {0x6164, enErrorMagentaInkLow},
    {0x6165, enErrorYellowInkLow},
    {0x6150, enErrorBlackInkEmpty},
    {0x6151, enErrorColorInkEmpty},
    {0x6152, enErrorBlackHeadMissing},
    {0x6153, enErrorColorHeadMissing},
    {0x6154, enErrorCyanInkEmpty},
    {0x6155, enErrorMagentaInkEmpty},
    {0x6156, enErrorYellowInkEmpty},
    {0x6181, enErrorNoColorForPhotoPrint},
    {0x6182, enErrorNoColorForPhotoCopy},
    {0x615A, enErrorBlackOutUsingColor},
    {0x615B, enErrorColorOutUsingBlack},
    {0x6800, enErrorCode6800},
    {0x9200, enErrorCupsRasterPrint},
    {0x9201, enErrorUrfRasterPrint},
    {0x5201, enErrorNetwork},
}};

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
