// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Has the defect that its argument names, so that a sanitizer build can show that it reports it. "guarded" has none,
// "later-race" has its race after a program was started beside another thread.

#include <QByteArray>
#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <atomic>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace {

std::mutex s_mutex;
int s_iShared = 0;
bool s_bGuarded = false;
std::atomic<int> s_iArrived{0};

void Count()
{
    // Both at once: a wake-up between the two would order them. A relaxed counter orders nothing.
    s_iArrived.fetch_add(1, std::memory_order_relaxed);
    while (s_iArrived.load(std::memory_order_relaxed) < 2) {
        std::this_thread::yield();
    }
    for (int i = 0; i < 1000; ++i) {
        const auto lock = s_bGuarded ? std::unique_lock(s_mutex) : std::unique_lock<std::mutex>();
        ++s_iShared;
    }
}

/// The worker is driven as ours are: without parent, in a thread of its own, by a queued call.
void CountInTwoThreads()
{
    QObject worker;
    QThread thread;
    worker.moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, &worker, &Count);
    thread.start();
    Count();
    thread.quit();
    thread.wait();
}

void StartAProgramBesideAThread()
{
    std::promise<void> started;
    std::thread other([&] { started.get_future().wait(); });
    QProcess::execute(QStringLiteral("true"), QStringList());
    started.set_value();
    other.join();
}

[[gnu::noinline]] void Leak()
{
    [[maybe_unused]] char* volatile pLost = new char[8];
    pLost = nullptr;
}

[[gnu::noinline]] int Overflow(int iLength)
{
    const std::vector<char> text(8);
    return text.data()[iLength];
}

[[gnu::noinline]] int Undefined(int iBits)
{
    return 1 << iBits;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray kind(argc > 1 ? argv[1] : "");
    if (kind == "overflow") {
        return Overflow(argc + 6);
    }
    if (kind == "undefined") {
        return Undefined(argc + 38);
    }
    if (kind == "leak") {
        Leak();
        return 0;
    }
    if (kind == "later-race") {
        StartAProgramBesideAThread();
    }
    s_bGuarded = kind == "guarded";
    CountInTwoThreads();
    return 0;
}
