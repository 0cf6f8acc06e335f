// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UnitBenchmarks.h"

#include "BenchOptions.h"
#include "Figures.h"
#include "FullReply.h"
#include "Sampling.h"
#include "ThreadCpu.h"
#include "TrdGetPrinterStatus.h"

#include <QList>

namespace {

/// All that a record holds, ready to be put there: texts in the reply's encoding, codes mapped, numbers read.
struct stReadyValues
{
    const char* pSerialNumber;
    const char* pFirmwareVersion;
    const char* pVendorName;
    const char* pProductName;
    const char* pSupplySerialNumber;
    int iStatus;
    std::vector<enErrorStatus> listError;
    std::vector<enErrorStatus> listWarning;
    unsigned long dwNumber;
};

// Not inlined, as the decoder is not.
[[gnu::noinline]] void BuildRecord(stPrinterState& target, const stReadyValues& ready)
{
    stPrinterState state;
    state.strPrinterSerialNumber = QString::fromLatin1(ready.pSerialNumber);
    state.enCurrentStatus = ready.iStatus;
    state.strFWVersion = QString::fromLatin1(ready.pFirmwareVersion);
    state.strVenderName = QString::fromLatin1(ready.pVendorName);
    state.strProductName = QString::fromLatin1(ready.pProductName);
    state.listErrorStatus = QList<enErrorStatus>(ready.listError.begin(), ready.listError.end());
    state.listWarningStatus = QList<enErrorStatus>(ready.listWarning.begin(), ready.listWarning.end());
    state.strSupplySerialNumber = QString::fromLatin1(ready.pSupplySerialNumber);
    state.dwRemainingToner = ready.dwNumber;
    state.dwWasteToner = ready.dwNumber;
    state.dwBlackInkRemainer = ready.dwNumber;
    state.dwBlueInkRemainer = ready.dwNumber;
    state.dwRedInkRemainer = ready.dwNumber;
    state.dwYellowInkRemainer = ready.dwNumber;
    state.dwOPCRotation = ready.dwNumber;
    state.dwNumberOfPages = ready.dwNumber;
    state.dwNumberOfPrint = ready.dwNumber;
    state.dwPrintDotsCount = ready.dwNumber;
    state.dwPrinterNumOfPages = ready.dwNumber;
    state.dwPrinterNumOfPrint = ready.dwNumber;
    target = std::move(state);
}

} // namespace

void BenchDecode(const BenchOptions& options, Figures& figures)
{
    QByteArray reply = EncodeStatusReply(FullReply());
    const int iCalls = options.FullOrQuick(20000, 100);
    TrdGetPrinterStatus worker;
    stPrinterState record;
    const stReadyValues ready = {"RA7QX20261104000187",
                                 "2.14.03.20260918",
                                 "Vora",
                                 "Vora RA7QX Series",
                                 "CRG-0099887766",
                                 enStatusPrinting,
                                 {enErrorPaperSize, enErrorNoPaper, enErrorPaperJam},
                                 {enErrorBlackInkLow, enErrorColorInkLow},
                                 77};
    const auto decode = [&] {
        if (worker.CheckPrinterStatus(reinterpret_cast<unsigned char*>(reply.data()),
                                      static_cast<unsigned long>(reply.size())) != 0) {
            qFatal("the reply is rejected");
        }
    };
    const auto build = [&] { BuildRecord(record, ready); };
    const stPair pair = MedianPair(
        options.m_iRuns, [&] { return CpuUSecOf(iCalls, decode); }, [&] { return CpuUSecOf(iCalls, build); });
    figures.Add({u"decode"_s, u"decode and convert one rich reply"_s, u"µs"_s, pair.dValue, pair.dFloor, {}});
}
