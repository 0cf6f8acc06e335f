// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor for the status reader: reads each file named on the command line, and nothing else.

#include <array>

#include <fcntl.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    std::array<char, 2048> buffer{};
    for (int i = 1; i < argc; ++i) {
        const int iFd = open(argv[i], O_RDONLY | O_CLOEXEC);
        if (iFd < 0 || read(iFd, buffer.data(), buffer.size()) < 0) {
            return 1;
        }
        close(iFd);
    }
}
