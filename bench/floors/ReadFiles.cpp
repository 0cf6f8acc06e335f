// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The floor for the status reader: reads each file but the first that is named on the command line, and writes for each
// the first one's text.

#include <array>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

namespace {

using Buffer = std::array<char, 4096>;

ssize_t Read(const char* pPath, Buffer& buffer)
{
    const int iFd = open(pPath, O_RDONLY | O_CLOEXEC);
    const ssize_t iLength = iFd < 0 ? -1 : read(iFd, buffer.data(), buffer.size());
    close(iFd);
    return iLength;
}

} // namespace

int main(int argc, char** argv)
{
    Buffer text;
    Buffer reply;
    const ssize_t iText = argc > 1 ? Read(argv[1], text) : -1;
    if (iText < 0) {
        return 2;
    }
    for (int i = 2; i < argc; ++i) {
        if (Read(argv[i], reply) < 0 || std::fwrite(text.data(), static_cast<std::size_t>(iText), 1, stdout) != 1) {
            return 2;
        }
    }
}
