// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"

#include "BenchPrinters.h"
#include "Desktop.h"
#include "Figures.h"
#include "MeasuredProcess.h"
#include "PrintServer.h"

#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <memory>

#include <signal.h>

namespace {

const QString c_strApplet = u"system-config-printer-applet"_s;
const QString c_strSystemBus = u"/tmp/system-bus"_s;
constexpr int c_iPrinters = 10;

/// A program that tells its user of printers, and what it costs.
struct stPeer
{
    QString strText;
    QString strProgram;
    bool bService = false; ///< the applet's, which the session bus starts to show the icon, is a part of it
    Samples startMSec = {};
    Samples memoryMB = {};
    Samples idleMSec = {}; ///< CPU time in a minute
};

void Print(const stPeer& peer)
{
    if (peer.startMSec.empty()) {
        PrintRow({peer.strText, u"not installed"_s, QString(), QString()});
        return;
    }
    PrintRow({peer.strText, SpreadText(peer.startMSec, u"ms"_s),
              peer.memoryMB.empty() ? u"none between calls"_s : SpreadText(peer.memoryMB, u"MB"_s),
              SpreadText(peer.idleMSec, u"ms"_s)});
}

/// Such a program that has started and has nothing to do. Ends with this object.
class RunningPeer
{
public:
    RunningPeer(const stPeer& peer, int iQuietMSec) : m_process(peer.strProgram)
    {
        QElapsedTimer sinceStart;
        sinceStart.start();
        m_process.WaitUntilIdle(iQuietMSec);
        if (peer.bService) {
            const QStringList listArgument{u"-f"_s, u"scp-dbus-service"_s};
            WaitUntil([&] { return (m_service = Desktop::Run(u"pgrep"_s, listArgument).toInt()) > 0; }, "the service");
            WaitUntilIdle(m_service, sinceStart, iQuietMSec);
        }
    }

    ~RunningPeer() { Kill(); }

    RunningPeer(const RunningPeer&) = delete;
    RunningPeer& operator=(const RunningPeer&) = delete;

    double MemoryMB() const { return PssMB(m_process.Pid()) + (m_service > 0 ? PssMB(m_service) : 0); }
    double OwnCpuMSec() const { return CpuMSec(m_process.Pid()) + (m_service > 0 ? CpuMSec(m_service) : 0); }

    /// Returns the CPU time, that of children too.
    double Kill()
    {
        double dMSec = m_process.Kill();
        if (m_service > 0) {
            dMSec += CpuMSec(m_service);
            ::kill(m_service, SIGKILL);
            m_service = 0;
        }
        return dMSec;
    }

private:
    MeasuredProcess m_process;
    pid_t m_service = 0;
};

/// Asks the print server once a second for so long; returns the CPU time of all calls, milliseconds.
double Poll(stPeer& lpstat, int iSeconds)
{
    double dSumMSec = 0;
    for (int i = 0; i < iSeconds; ++i) {
        const double dMSec = MeasuredProcess(lpstat.strProgram, {u"-p"_s}).WaitForEnd();
        lpstat.startMSec.push_back(dMSec);
        dSumMSec += dMSec;
        QThread::sleep(1);
    }
    return dSumMSec;
}

/// The starts of the programs in turns, then their idle time, that of all at once, while lpstat polls.
void Compare(const std::vector<stPeer*>& listPeer, stPeer& lpstat, bool bQuick)
{
    const int iQuietMSec = bQuick ? 150 : 1000;
    std::vector<std::function<void()>> listStart;
    for (stPeer* pPeer : listPeer) {
        listStart.push_back([=] {
            RunningPeer running(*pPeer, iQuietMSec);
            pPeer->memoryMB.push_back(running.MemoryMB());
            pPeer->startMSec.push_back(running.Kill());
        });
    }
    TakeInTurns(bQuick ? 1 : 4, listStart);

    std::vector<std::unique_ptr<RunningPeer>> listRunning;
    for (const stPeer* pPeer : listPeer) {
        listRunning.push_back(std::make_unique<RunningPeer>(*pPeer, iQuietMSec));
    }
    for (int i = 0; i < (bQuick ? 1 : 3); ++i) {
        Samples before;
        for (const auto& pRunning : listRunning) {
            before.push_back(pRunning->OwnCpuMSec());
        }
        QElapsedTimer window;
        window.start();
        const double dPollsMSec = Poll(lpstat, bQuick ? 1 : 20);
        const double dMinutes = static_cast<double>(window.elapsed()) / 60000;
        lpstat.idleMSec.push_back(dPollsMSec / dMinutes);
        for (std::size_t iPeer = 0; iPeer < listPeer.size(); ++iPeer) {
            const double dMSec = listRunning[iPeer]->OwnCpuMSec() - before[iPeer];
            listPeer[iPeer]->idleMSec.push_back(dMSec / dMinutes);
        }
    }
}

} // namespace

void BenchPeers(bool bQuick)
{
    WriteBenchPrinters(c_iPrinters);
    PrintServer server;
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + c_strSystemBus.toLocal8Bit());
    Desktop::Run(u"dbus-update-activation-environment"_s, {u"CUPS_SERVER"_s, u"DBUS_SYSTEM_BUS_ADDRESS"_s});
    const MeasuredProcess systemBus(u"dbus-daemon"_s,
                                    {u"--session"_s, u"--nofork"_s, u"--address=unix:path="_s + c_strSystemBus});
    WaitUntil([] { return QFile::exists(c_strSystemBus); }, "a system bus");
    bool bReady = server.Start();
    for (int i = 0; i < c_iPrinters; ++i) {
        bReady = bReady && server.AddPrintingQueue(BenchPrinterName(i));
    }

    stPeer tool{u"VoraPrinterTool: window and icon"_s, QStringLiteral(VORA_TOOL)};
    stPeer lpstat{u"`lpstat -p` once a second"_s, u"lpstat"_s};
    stPeer applet{c_strApplet + u" without jobs: no icon"_s, c_strApplet};
    stPeer busyApplet{c_strApplet + u" while a job prints: icon"_s, c_strApplet, true};
    const bool bApplet = !QStandardPaths::findExecutable(c_strApplet).isEmpty();
    Compare(bApplet ? std::vector{&tool, &applet} : std::vector{&tool}, lpstat, bQuick);
    bReady = bReady && server.AddJob(BenchPrinterName(0)) > 0;
    Compare(bApplet ? std::vector{&tool, &busyApplet} : std::vector{&tool}, lpstat, bQuick);
    if (!bReady) {
        qFatal("the print server does not work");
    }
    PrintHeader(
        {u"with %1 printers"_s.arg(c_iPrinters), u"start, CPU time"_s, u"memory (Pss)"_s, u"idle, CPU a minute"_s});
    for (const stPeer* pPeer : {&tool, &applet, &busyApplet, &lpstat}) {
        Print(*pPeer);
    }
}
