// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// How long the built program takes and what it weighs, seen from outside on a virtual desktop. Prints one line a
// figure: the median of several runs and the worst.

#include "DriverFolder.h"
#include "StatusEncoder.h"
#include "Tool.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QTest>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int c_iRuns = 5;
constexpr int c_iTimeOutMSec = 10000;

const QString c_strReady = QStringLiteral("就绪");
const QString c_strBusy = QStringLiteral("忙碌");

QByteArray Reply(quint8 byStatus)
{
    stStatusReply reply;
    reply.byStatus = byStatus;
    reply.listSupplies = {SuppliesNumber(enSuppliesBlackInk, 50)};
    return EncodeStatusReply(reply);
}

QString PrinterName(int i)
{
    return QStringLiteral("printer%1").arg(i);
}

void WritePrinters(const DriverFolder& folder, int iCount)
{
    QList<stPrinterInfo> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append({PrinterName(i), QStringLiteral("RA7Q"), 0, QStringLiteral("192.168.1.%1").arg(i % 250),
                            QStringLiteral("ipp://%1").arg(i)});
        folder.WriteStatus(PrinterName(i), Reply(0x00));
    }
    folder.WritePrinterList(listPrinter);
}

/// Milliseconds until the condition holds; ends the program when it never does.
double WaitFor(const std::function<bool()>& condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > c_iTimeOutMSec) {
            qFatal("a figure never came");
        }
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

void Report(const char* pFigure, const std::function<double()>& measure, const char* pUnit = "ms")
{
    std::vector<double> listValue;
    for (int i = 0; i < c_iRuns; ++i) {
        listValue.push_back(measure());
    }
    std::sort(listValue.begin(), listValue.end());
    std::printf("%-62s %9.1f %s (worst %.1f)\n", pFigure, listValue[c_iRuns / 2], pUnit, listValue.back());
    std::fflush(stdout);
}

bool IsTableComplete(const Tool& tool, int iCount)
{
    if (tool.RowCount() != iCount) {
        return false;
    }
    for (int i = iCount - 1; i >= 0; --i) {
        if (tool.Cell(i, 3) != c_strReady) {
            return false;
        }
    }
    return true;
}

double StartToCompleteTable()
{
    Tool tool;
    QElapsedTimer timer;
    timer.start();
    tool.Start();
    WaitFor([&] { return IsTableComplete(tool, 20); });
    return static_cast<double>(timer.elapsed());
}

double Exit(Tool& tool)
{
    WaitFor([&] { return tool.TrayIcon().has_value(); });
    QElapsedTimer timer;
    timer.start();
    if (!tool.ChooseFromTrayMenu(3) || !tool.Process().waitForFinished() || tool.Process().exitCode() != 0 ||
        tool.Process().exitStatus() != QProcess::NormalExit) {
        qFatal("no clean exit");
    }
    return static_cast<double>(timer.elapsed());
}

double ExitOf200()
{
    Tool tool;
    tool.Start();
    WaitFor([&] { return IsTableComplete(tool, 200); });
    return Exit(tool);
}

double ExitWithHungCancel(const DriverFolder& folder)
{
    Tool tool;
    tool.Start();
    WaitFor([&] { return tool.Cell(0, 3) == c_strReady; });
    QFile::remove(QStringLiteral("/tmp/cancelling"));
    folder.WriteStatus(PrinterName(0), Reply(0x03));
    WaitFor([&] { return QFile::exists(QStringLiteral("/tmp/cancelling")); });
    const double dExit = Exit(tool);
    folder.WriteStatus(PrinterName(0), Reply(0x00));
    return dExit;
}

/// A `cancel` in front of the system's that never ends.
void MakeCancelHang()
{
    QFile file(QStringLiteral("/tmp/cancel"));
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("cannot write the fake cancel");
    }
    file.write("#!/bin/sh\ntouch /tmp/cancelling\nexec sleep 1000\n");
    file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    qputenv("PATH", "/tmp:" + qgetenv("PATH"));
}

/// A line of /proc/PID/smaps_rollup in MB.
double Memory(qint64 iPid, const char* pKey)
{
    QFile file(QStringLiteral("/proc/%1/smaps_rollup").arg(iPid));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no memory map");
    }
    const QRegularExpression line(QStringLiteral("\\n%1: +(\\d+) kB").arg(QLatin1String(pKey)));
    return line.match(QString::fromLatin1(file.readAll())).captured(1).toDouble() / 1024;
}

/// Without accessibility, which users mostly do not run and which weighs more than the program. What the two programs
/// do after their windows are up is unknown to this test: two seconds are enough for both.
double MemoryOf(const QString& strProgram, const char* pKey)
{
    QProcess process;
    process.start(strProgram, QStringList());
    process.waitForStarted();
    process.waitForFinished(2000);
    const double dMemory = Memory(process.processId(), pKey);
    process.kill();
    process.waitForFinished();
    return dMemory;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const DriverFolder folder(c_strCfgPath);

    WritePrinters(folder, 20);
    Report("start to first complete table, 20 printers", StartToCompleteTable);
    {
        Tool tool;
        tool.Start();
        WaitFor([&] { return IsTableComplete(tool, 20); });
        bool bBusy = false;
        Report("changed status file to table", [&] {
            bBusy = !bBusy;
            folder.WriteStatus(PrinterName(7), Reply(bBusy ? 0x02 : 0x00));
            return WaitFor([&] { return tool.Cell(7, 3) == (bBusy ? c_strBusy : c_strReady); });
        });
        int iCount = 20;
        Report("changed printer list to table", [&] {
            iCount = iCount == 20 ? 19 : 20;
            WritePrinters(folder, iCount);
            return WaitFor([&] { return tool.RowCount() == iCount; });
        });
    }

    WritePrinters(folder, 10);
    for (const char* pKey : {"Rss", "Pss"}) {
        const std::string strKey(pKey);
        Report(("memory with 10 printers, " + strKey).c_str(),
               [&] { return MemoryOf(QStringLiteral(VORA_TOOL), pKey); }, "MB");
        Report(("memory of an empty tray program, " + strKey).c_str(),
               [&] { return MemoryOf(QStringLiteral(VORA_EMPTY_TRAY), pKey); }, "MB");
    }

    MakeCancelHang();
    Report("exit, 10 printers, one inside a hung cancel", [&] { return ExitWithHungCancel(folder); });
    WritePrinters(folder, 200);
    Report("exit, 200 printers (from the click that opens the menu)", ExitOf200);
}
