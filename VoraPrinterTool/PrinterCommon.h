// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

#include <mutex>

// ---- Paths of the printer driver package ---------------------------------------------------------------------------

#define VORA_PACKAGE_PATH                                                                                              \
    "/opt/"                                                                                                            \
    "vora/"                                                                                                            \
    "vora-printer-k507"                                                                                                \
    "/"

inline const QString c_strToolPath = QStringLiteral(VORA_PACKAGE_PATH "tool/"); // temporary files and logs
inline const QString c_strCfgPath = QStringLiteral(VORA_PACKAGE_PATH "cfg/");   // printer list and status files
inline const QString c_strBinPath = QStringLiteral(VORA_PACKAGE_PATH "bin/");   // firmware-update tool

inline const QString c_strPrinterListName = QStringLiteral("printerlist.ini");
inline const QString c_strStatusFileSuffix = QStringLiteral(".dat");

/// The status file of a queue. Called from any thread.
inline QString StatusFilePath(const QString& strPrinterName)
{
    return c_strCfgPath + strPrinterName + c_strStatusFileSuffix;
}

// ---- Enumerations --------------------------------------------------------------------------------------------------

/// State of a printer; the row of c_strStatusLanguageText.
enum enPrinterStatus
{
    enStatusUnknown = 0,
    enStatusVersionMismatch = 1,
    enStatusOffline = 2, ///< never reached, or reads keep failing
    enStatusReady = 3,
    enStatusInitialize = 4,
    enStatusBusy = 5,
    enStatusCanceling = 6,
    enStatusError = 7,
    enStatusPrinting = 8,
    enStatusScanning = 9,
    enStatusCopying = 10,
    enStatusReporting = 11,
    enStatusCleaning = 12,
    enStatusAlignment = 13,
    enStatusScanBack = 14,
    enStatusDebug = 15,
    enStatusCount = 16
};

/// An error or a warning (which one is decided by the reply's list that it stands in); the row of c_strErrorDescText.
enum enErrorStatus : int
{
    enErrorUnknown = 0,
    enErrorWifiInitFailed = 1,
    enErrorBlackHeadDamaged = 2,
    enErrorColorHeadDamaged = 3,
    enErrorEndOfLife = 4,
    enErrorScannerOrigin = 5,
    enErrorFeedMotor = 6,
    enErrorCarriageMotor = 7,
    enErrorMemoryFull = 8,
    enErrorFatal = 9,
    enErrorUpdateFailed = 10,
    enErrorNoPaper = 11,
    enErrorPaperSize = 12,
    enErrorPaperJam = 13,
    enErrorPaperPlacement = 14,
    enErrorInkDoorOpen = 15,
    enErrorService6121 = 16,
    enErrorService6122 = 17,
    enErrorBlackHeadMismatch = 18,
    enErrorColorHeadMismatch = 19,
    enErrorNozzleOvercurrent = 20,
    enErrorAlignment = 21,
    enErrorAlignmentSetup = 22,
    enErrorBlackHeadHot = 23,
    enErrorColorHeadHot = 24,
    enErrorBlackInkLow = 25,
    enErrorColorInkLow = 26,
    enErrorBothInkLow = 27,
    enErrorCyanInkLow = 28,
    enErrorMagentaInkLow = 29,
    enErrorYellowInkLow = 30,
    enErrorBlackInkEmpty = 31,
    enErrorColorInkEmpty = 32,
    enErrorBlackHeadMissing = 33,
    enErrorColorHeadMissing = 34,
    enErrorCyanInkEmpty = 35,
    enErrorMagentaInkEmpty = 36,
    enErrorYellowInkEmpty = 37,
    enErrorNoColorForPhotoPrint = 38,
    enErrorNoColorForPhotoCopy = 39,
    enErrorBlackOutUsingColor = 40,
    enErrorColorOutUsingBlack = 41,
    enErrorCode6800 = 42,
    enErrorCupsRasterPrint = 43,
    enErrorUrfRasterPrint = 44,
    enErrorNetwork = 45,
    enErrorCount = 46
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
    unsigned long dwRemainingToner = 0;
    unsigned long dwWasteToner = 0;
    unsigned long dwBlackInkRemainer = 0;  ///< per cent
    unsigned long dwBlueInkRemainer = 0;   ///< cyan, per cent
    unsigned long dwRedInkRemainer = 0;    ///< magenta, per cent
    unsigned long dwYellowInkRemainer = 0; ///< per cent
    unsigned long dwOPCRotation = 0;
    unsigned long dwNumberOfPages = 0;
    unsigned long dwNumberOfPrint = 0;
    unsigned long dwPrintDotsCount = 0;
    unsigned long dwPrinterNumOfPages = 0;
    unsigned long dwPrinterNumOfPrint = 0;
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

inline const stModelInfo c_stModelInfoList[7] = {
    {QStringLiteral("RA7QX"), QStringLiteral("Vora RA7QX"), QStringLiteral("Vora_RA7QX.ppd"), 0x4A7C, 0x7105},
    {QStringLiteral("RA7Q"), QStringLiteral("Vora RA7Q"), QStringLiteral("Vora_RA7Q.ppd"), 0x4A7C, 0x7106},
    {QStringLiteral("RA7X"), QStringLiteral("Vora RA7X"), QStringLiteral("Vora_RA7X.ppd"), 0x4A7C, 0x7107},
    {QStringLiteral("RB9QX"), QStringLiteral("Vora RB9QX"), QStringLiteral("Vora_RB9QX.ppd"), 0x4A7C, 0x7108},
    {QStringLiteral("RB9Q"), QStringLiteral("Vora RB9Q"), QStringLiteral("Vora_RB9Q.ppd"), 0x4A7C, 0x7109},
    {QStringLiteral("RB9X"), QStringLiteral("Vora RB9X"), QStringLiteral("Vora_RB9X.ppd"), 0x4A7C, 0x710A},
    {QStringLiteral("HV5520TP"), QStringLiteral("Vora HV5520TP"), QStringLiteral("Vora_HV5520TP.ppd"), 0x4A7C, 0x7121},
};
