// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"
#include "Verdict.h"

#include <QDir>

#include <algorithm>
#include <cstdint>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The list file, which the program looks for at this one place: the sandbox has a folder of its own there, in memory.
int OpenListFile()
{
    QDir().mkpath(QStringLiteral("/opt/vora/vora-printer-k507/cfg"));
    const int iFd = ::open("/opt/vora/vora-printer-k507/cfg/printerlist.ini", O_WRONLY | O_CREAT | O_CLOEXEC, 0644);
    EndUnless(iFd >= 0);
    return iFd;
}

/// Each content has a time of its own: Qt does not read a file again whose size and time it knows.
void WriteList(const std::uint8_t* pData, std::size_t iSize)
{
    static const int s_iFd = OpenListFile();
    static long s_iMSec = 0;
    ++s_iMSec;
    const timespec time = {s_iMSec / 1000, s_iMSec % 1000 * 1000000};
    const timespec times[2] = {time, time};
    EndUnless(::ftruncate(s_iFd, 0) == 0 && ::pwrite(s_iFd, pData, iSize, 0) == static_cast<ssize_t>(iSize) &&
              ::futimens(s_iFd, times) == 0);
}

} // namespace

/// Any bytes, as the printer list file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* pData, std::size_t iSize)
{
    WriteList(pData, iSize);
    static TrdDeviceManage s_worker;
    const QList<stPrinterInfo> listInfo = s_worker.GetPrinterInfo(true);
    // Up to 1000 printers need nothing but a number; more of them need a group each.
    EndUnless(static_cast<std::size_t>(listInfo.size()) <= std::max<std::size_t>(1000, iSize));
    const QList<stPrinterManager> listPrinter = s_worker.GetInitPrinterList(listInfo);
    EndUnless(listPrinter.size() == listInfo.size());
    EndUnless(std::all_of(listPrinter.begin(), listPrinter.end(), [](const stPrinterManager& printer) {
        return printer.printerState.enCurrentStatus == enStatusOffline;
    }));
    return 0;
}
