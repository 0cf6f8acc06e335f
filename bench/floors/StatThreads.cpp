// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor for idle CPU: a thread for each file named on the command line, which asks for the file's time once a
// second and sleeps in two slices; no Qt, and nothing else.

#include <thread>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    constexpr int c_iSliceUSec = 500 * 1000;
    std::vector<std::thread> listThread;
    for (int i = 1; i < argc; ++i) {
        listThread.emplace_back([pPath = argv[i]] {
            while (true) {
                struct stat status = {};
                (void)stat(pPath, &status);
                usleep(c_iSliceUSec);
                usleep(c_iSliceUSec);
            }
        });
    }
    for (std::thread& thread : listThread) {
        thread.join();
    }
}
