// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CodeNames.h"

#include "UtilStatusIdParser.h"

#include <algorithm>

namespace {

const QString c_strUnknown = QStringLiteral("unknown");

template <typename Status>
struct stName
{
    Status enStatus;
    QLatin1String strName;
};

constexpr std::array<stName<enPrinterStatus>, 12> c_stateNameList = {{
    {enStatusReady, QLatin1String("ready")},
    {enStatusInitialize, QLatin1String("initialize")},
    {enStatusBusy, QLatin1String("busy")},
    {enStatusCanceling, QLatin1String("canceling")},
    {enStatusPrinting, QLatin1String("printing")},
    {enStatusScanning, QLatin1String("scanning")},
    {enStatusCopying, QLatin1String("copying")},
    {enStatusReporting, QLatin1String("reporting")},
    {enStatusCleaning, QLatin1String("cleaning")},
    {enStatusAlignment, QLatin1String("alignment")},
    {enStatusScanBack, QLatin1String("scan-back")},
    {enStatusDebug, QLatin1String("debug")},
}};

// No raw code stands for these.
constexpr std::array<stName<enPrinterStatus>, 3> c_unsentStateNameList = {{
    {enStatusVersionMismatch, QLatin1String("version-mismatch")},
    {enStatusOffline, QLatin1String("off-line")},
    {enStatusError, QLatin1String("error")},
}};

constexpr std::array<stName<enErrorStatus>, 45> c_errorNameList = {{
    {enErrorWifiInitFailed, QLatin1String("wifi-init-failed")},
    {enErrorBlackHeadDamaged, QLatin1String("black-head-damaged")},
    {enErrorColorHeadDamaged, QLatin1String("color-head-damaged")},
    {enErrorEndOfLife, QLatin1String("end-of-life")},
    {enErrorScannerOrigin, QLatin1String("scanner-origin")},
    {enErrorFeedMotor, QLatin1String("feed-motor")},
    {enErrorCarriageMotor, QLatin1String("carriage-motor")},
    {enErrorMemoryFull, QLatin1String("memory-full")},
    {enErrorFatal, QLatin1String("fatal")},
    {enErrorUpdateFailed, QLatin1String("update-failed")},
    {enErrorNoPaper, QLatin1String("no-paper")},
    {enErrorPaperSize, QLatin1String("paper-size")},
    {enErrorPaperJam, QLatin1String("paper-jam")},
    {enErrorPaperPlacement, QLatin1String("paper-placement")},
    {enErrorInkDoorOpen, QLatin1String("ink-door-open")},
    {enErrorService6121, QLatin1String("service-6121")},
    {enErrorService6122, QLatin1String("service-6122")},
    {enErrorBlackHeadMismatch, QLatin1String("black-head-mismatch")},
    {enErrorColorHeadMismatch, QLatin1String("color-head-mismatch")},
    {enErrorNozzleOvercurrent, QLatin1String("nozzle-overcurrent")},
    {enErrorAlignment, QLatin1String("alignment")},
    {enErrorAlignmentSetup, QLatin1String("alignment-setup")},
    {enErrorBlackHeadHot, QLatin1String("black-head-hot")},
    {enErrorColorHeadHot, QLatin1String("color-head-hot")},
    {enErrorBlackInkLow, QLatin1String("black-ink-low")},
    {enErrorColorInkLow, QLatin1String("color-ink-low")},
    {enErrorBothInkLow, QLatin1String("both-ink-low")},
    {enErrorCyanInkLow, QLatin1String("cyan-ink-low")},
    {enErrorMagentaInkLow, QLatin1String("magenta-ink-low")},
    {enErrorYellowInkLow, QLatin1String("yellow-ink-low")},
    {enErrorBlackInkEmpty, QLatin1String("black-ink-empty")},
    {enErrorColorInkEmpty, QLatin1String("color-ink-empty")},
    {enErrorBlackHeadMissing, QLatin1String("black-head-missing")},
    {enErrorColorHeadMissing, QLatin1String("color-head-missing")},
    {enErrorCyanInkEmpty, QLatin1String("cyan-ink-empty")},
    {enErrorMagentaInkEmpty, QLatin1String("magenta-ink-empty")},
    {enErrorYellowInkEmpty, QLatin1String("yellow-ink-empty")},
    {enErrorNoColorForPhotoPrint, QLatin1String("no-color-for-photo-print")},
    {enErrorNoColorForPhotoCopy, QLatin1String("no-color-for-photo-copy")},
    {enErrorBlackOutUsingColor, QLatin1String("black-out-using-color")},
    {enErrorColorOutUsingBlack, QLatin1String("color-out-using-black")},
    {enErrorCode6800, QLatin1String("code-6800")},
    {enErrorCupsRasterPrint, QLatin1String("cups-raster-print")},
    {enErrorUrfRasterPrint, QLatin1String("urf-raster-print")},
    {enErrorNetwork, QLatin1String("network")},
}};

static_assert(std::tuple_size_v<decltype(c_stateNameList)> == std::tuple_size_v<decltype(c_stStatusCodeList)>);
static_assert(std::tuple_size_v<decltype(c_errorNameList)> == std::tuple_size_v<decltype(c_stErrorCodeList)>);

template <typename Code, typename Names, typename Codes>
std::optional<Code> CodeByName(const QString& strName, const Names& listName, const Codes& listCode)
{
    const auto name =
        std::find_if(listName.begin(), listName.end(), [&strName](const auto& row) { return row.strName == strName; });
    if (name == listName.end()) {
        return std::nullopt;
    }
    const auto code = std::find_if(listCode.begin(), listCode.end(),
                                   [name](const auto& row) { return row.enStatus == name->enStatus; });
    return code == listCode.end() ? std::nullopt : std::optional<Code>(static_cast<Code>(code->dwRawCode));
}

template <typename Names>
std::optional<QString> NameOf(int iStatus, const Names& listName)
{
    const auto name =
        std::find_if(listName.begin(), listName.end(), [iStatus](const auto& row) { return row.enStatus == iStatus; });
    return name == listName.end() ? std::nullopt : std::optional<QString>(name->strName);
}

template <typename Names>
QStringList AllNames(const Names& listName)
{
    QStringList listText;
    for (const auto& row : listName) {
        listText.append(row.strName);
    }
    return listText;
}

} // namespace

std::optional<quint8> StateCodeByName(const QString& strName)
{
    return CodeByName<quint8>(strName, c_stateNameList, c_stStatusCodeList);
}

std::optional<quint16> ErrorCodeByName(const QString& strName)
{
    return CodeByName<quint16>(strName, c_errorNameList, c_stErrorCodeList);
}

QStringList StateNames()
{
    return AllNames(c_stateNameList);
}

QStringList ErrorNames()
{
    return AllNames(c_errorNameList);
}

QString StateName(int iStatus)
{
    const std::optional<QString> strUnsent = NameOf(iStatus, c_unsentStateNameList);
    return strUnsent ? *strUnsent : NameOf(iStatus, c_stateNameList).value_or(c_strUnknown);
}

QString ErrorName(int iError)
{
    return NameOf(iError, c_errorNameList).value_or(c_strUnknown);
}
