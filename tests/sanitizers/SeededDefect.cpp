// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Has the defect that its argument names, so that a sanitizer build can show that it reports it. "guarded" has none,
// "later-race" has its race after a program was started beside another thread.

#include <QByteArray>
#include <QCoreApplication>
#include <QProcess>
#include <QThread>

#include <atomic>
#include <mutex>
#include <thread>

namespace {

std::mutex s_mutex;
int s_iShared = 0;
std::atomic<int> s_iArrived{0};

/// Driven as our workers are: without parent, in a thread of its own, by a queued call.
class Counter : public QObject
{
public:
    explicit Counter(bool bGuarded) : m_bGuarded(bGuarded) {}

    void Count() const
    {
        // Both at once: a wake-up between the two would order them. A relaxed counter orders nothing.
        s_iArrived.fetch_add(1, std::memory_order_relaxed);
        while (s_iArrived.load(std::memory_order_relaxed) < 2) {
            std::this_thread::yield();
        }
        for (int i = 0; i < 1000; ++i) {
            std::unique_lock lock(s_mutex, std::defer_lock);
            if (m_bGuarded) {
                lock.lock();
            }
            ++s_iShared;
        }
    }

private:
    const bool m_bGuarded;
};

int CountInTwoThreads(bool bGuarded)
{
    Counter worker(bGuarded);
    QThread thread;
    worker.moveToThread(&thread);
    QObject::connect(&thread, &QThread::started, &worker, &Counter::Count);
    thread.start();
    const Counter window(bGuarded);
    window.Count();
    thread.quit();
    thread.wait();
    return 0;
}

void StartAProgram()
{
    std::atomic<bool> bStarted{false};
    std::thread other([&] {
        while (!bStarted) {
            std::this_thread::yield();
        }
    });
    QProcess::execute(QStringLiteral("true"), QStringList());
    bStarted = true;
    other.join();
}

[[gnu::noinline]] int Leak()
{
    int* volatile pLost = new int[8];
    pLost = nullptr;
    return pLost != nullptr ? 1 : 0;
}

[[gnu::noinline]] int Overflow(int iLength)
{
    char* volatile pText = new char[8]();
    const int iBeyond = pText[iLength];
    delete[] pText;
    return iBeyond;
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
    if (kind == "later-race") {
        StartAProgram();
        return CountInTwoThreads(false);
    }
    if (kind == "race" || kind == "guarded") {
        return CountInTwoThreads(kind == "guarded");
    }
    if (kind == "leak") {
        return Leak();
    }
    if (kind == "overflow") {
        return Overflow(argc + 6);
    }
    return Undefined(argc + 38) == 0 ? 0 : 1;
}
