// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"
#include "SuppliesKeys.h"

#include <QList>
#include <QString>

#include <mutex>

// ---- Paths of the printer driver package ---------------------------------------------------------------------------

#define VORA_PACKAGE_PATH                                                                                              \
    "/opt/"                                                                                                            \
    "vora/"                                                                                                            \
    "vora-printer-k507"                                                                                                \
    "/"

inline const QString c_strToolPath = u"" VORA_PACKAGE_PATH "tool/"_s; // temporary files and logs
inline const QString c_strCfgPath = u"" VORA_PACKAGE_PATH "cfg/"_s;   // printer list and status files
inline const QString c_strBinPath = u"" VORA_PACKAGE_PATH "bin/"_s;   // firmware-update tool

inline const QString c_strPrinterListName = u"printerlist.ini"_s;
inline const QString c_strStatusFileSuffix = u".dat"_s;

/// The status file of a queue.
inline QString StatusFilePath(const QString& strPrinterName)
{
    return c_strCfgPath + strPrinterName + c_strStatusFileSuffix;
}

// ---- Enumerations --------------------------------------------------------------------------------------------------

// Both from the table StatusCodes.def, which has their values, raw codes, names and texts.

/// State of a printer; the row of c_strStatusLanguageText. enStatusOffline: never reached, or reads keep failing.
enum enPrinterStatus
{
#define VORA_STATE(enStatus, ...) enStatus,
#define VORA_UNSENT_STATE(enStatus, ...) enStatus,
#include "StatusCodes.def"
    enStatusCount
};

/// An error or a warning (which one is decided by the reply's list that it stands in); the row of c_strErrorDescText.
enum enErrorStatus : int
{
#define VORA_ERROR(enError, ...) enError,
#define VORA_UNSENT_ERROR(enError, ...) enError,
#include "StatusCodes.def"
    enErrorCount
};

/// Type of the installed supply. The printer's number is not interpreted, so there is one value.
enum enSupplyType
{
    enSupplyTypeDefault = 0
};

// ---- Records: plain values, copied whole between threads -----------------------------------------------------------

constexpr int c_iConnectUsb = 1;

/// Who and where a printer is. Written by the device list worker alone.
struct stPrinterInfo
{
    QString strPrinterName; ///< print queue; also the name of its status file
    QString enType;         ///< model code as text, "-1" when not known
    int iConnectType = 0;   ///< c_iConnectUsb, anything else network
    QString strPort;        ///< address of a network printer
    QString strURI;         ///< the print system's device URI
};

/// The last decoded status reply. Filled by the status workers, reset by the device list worker; figures are the
/// printer's own, not converted.
struct stPrinterState
{
    QString strPrinterSerialNumber;
    int enCurrentStatus = enStatusOffline; ///< enPrinterStatus
    QString strFWVersion;
    QString strVenderName;
    QString strProductName;
    QList<enErrorStatus> listErrorStatus;   ///< in the order of the reply
    QList<enErrorStatus> listWarningStatus; ///< in the order of the reply
    QString strSupplySerialNumber;
    int enSpplyType = enSupplyTypeDefault; ///< enSupplyType
    // The figures of SuppliesKeys.h, an ink's in per cent.
#define VORA_MEMBER(enKey, wKey, iBytes, Stem, ...) unsigned long dw##Stem = 0;
    VORA_SUPPLIES_OF_STATE(VORA_MEMBER)
#undef VORA_MEMBER
    int iReadFailCount = 0; ///< failed status reads in a row
};

/// One printer. Its index in the shared list is its table row and its status worker's index.
struct stPrinterManager
{
    stPrinterInfo printerInfo;
    stPrinterState printerState;
};

/// Guards the one shared QList<stPrinterManager>, which the window owns and the workers read and write. Held for copies
/// and assignments only, never during file access or a shell command.
inline std::mutex g_mutexPrinterList;

// ---- Model catalogue: reference data for the tools, read by no part of the program ----------------------------------

struct stModelInfo
{
    QString strModel;
    QString strDisplayName;
    QString strPPDName;
    int iVendorId;  ///< USB
    int iProductId; ///< USB
};

// clang-format off
#define VORA_MODEL(strCode, iProductId) \
    {QStringLiteral(strCode), QStringLiteral("Vora " strCode), QStringLiteral("Vora_" strCode ".ppd"), 0x4A7C, iProductId},
// The first is the simulator's default.
inline const stModelInfo c_stModelInfoList[] = {
    VORA_MODEL("RA7QX", 0x7105)
    VORA_MODEL("RA7Q", 0x7106)
    VORA_MODEL("RA7X", 0x7107)
    VORA_MODEL("RB9QX", 0x7108)
    VORA_MODEL("RB9Q", 0x7109)
    VORA_MODEL("RB9X", 0x710A)
    VORA_MODEL("HV5520TP", 0x7121)
};
#undef VORA_MODEL
// clang-format on
