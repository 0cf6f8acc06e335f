// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UnitBenchmarks.h"

#include "BenchOptions.h"
#include "BenchPrinters.h"
#include "Figures.h"
#include "Sampling.h"
#include "TrdGetPrinterStatus.h"

#include <QThread>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds c_rewriteTime(900);
constexpr int c_iPerCent = 99;

/// One worker in its thread, and when it last reported.
struct stFollower
{
    TrdGetPrinterStatus worker;
    QThread thread;
    Clock::time_point reported;
    std::atomic<int> iReports{0};
};

/// The workers of many printers, without a window.
class Followers
{
public:
    explicit Followers(int iCount)
    {
        for (int i = 0; i < iCount; ++i) {
            m_listPrinter.append({BenchPrinter(i), {}});
        }
        for (int i = 0; i < iCount; ++i) {
            m_listFollower.push_back(std::make_unique<stFollower>());
            Start(i, *m_listFollower.back());
        }
    }

    ~Followers()
    {
        for (const auto& pFollower : m_listFollower) {
            pFollower->worker.SlotThreadQuit();
            pFollower->thread.quit();
        }
        for (const auto& pFollower : m_listFollower) {
            pFollower->thread.wait();
        }
    }

    Followers(const Followers&) = delete;
    Followers& operator=(const Followers&) = delete;

    void WaitForReports(int iReports) const
    {
        WaitUntil(
            [&] {
                return std::all_of(m_listFollower.begin(), m_listFollower.end(),
                                   [&](const auto& pFollower) { return pFollower->iReports >= iReports; });
            },
            "a report of each worker");
    }

    Clock::time_point Reported(int i) const { return m_listFollower[static_cast<std::size_t>(i)]->reported; }

private:
    void Start(int i, stFollower& follower)
    {
        follower.worker.Init(i, &m_listPrinter);
        follower.worker.moveToThread(&follower.thread);
        QObject::connect(&follower.worker, &TrdGetPrinterStatus::SgnUpdatePrinterStatus, [&follower] {
            follower.reported = Clock::now();
            ++follower.iReports;
        });
        QObject::connect(&follower.thread, &QThread::started, &follower.worker, &TrdGetPrinterStatus::SlotTaskStart);
        follower.thread.start();
    }

    QList<stPrinterManager> m_listPrinter;
    std::vector<std::unique_ptr<stFollower>> m_listFollower;
};

/// Rewrites all files, evenly over the time; when each was.
std::vector<Clock::time_point> RewriteAll(int iCount, quint8 byStatus)
{
    const QByteArray reply = PlainReply(byStatus);
    std::vector<Clock::time_point> listWritten;
    const Clock::time_point start = Clock::now();
    for (int i = 0; i < iCount; ++i) {
        std::this_thread::sleep_until(start + c_rewriteTime * i / iCount);
        listWritten.push_back(Clock::now());
        WriteBenchStatus(i, reply);
    }
    return listWritten;
}

} // namespace

void BenchChangedFile(const BenchOptions& options, Figures& figures)
{
    const int iPrinters = options.FullOrQuick(1000, 20);
    WriteBenchPrinters(iPrinters);
    const Followers followers(iPrinters);
    int iReports = 1;
    followers.WaitForReports(iReports);
    const auto rewrite = [&] {
        const auto listWritten = RewriteAll(iPrinters, iReports % 2 == 0 ? 0x00 : 0x02);
        followers.WaitForReports(++iReports);
        std::vector<double> listSeconds;
        listSeconds.reserve(listWritten.size());
        for (int i = 0; i < iPrinters; ++i) {
            listSeconds.push_back(
                std::chrono::duration<double>(followers.Reported(i) - listWritten[static_cast<std::size_t>(i)])
                    .count());
        }
        std::sort(listSeconds.begin(), listSeconds.end());
        return listSeconds[(listSeconds.size() - 1) * c_iPerCent / 100];
    };
    figures.Add({u"changed-file"_s,
                 u"changed file to signal, 99 % of %1 printers"_s.arg(iPrinters),
                 u"s"_s,
                 MedianOf(options.m_iRuns, rewrite),
                 {},
                 stBudget{stBudget::enValue, 1.1}});
}
