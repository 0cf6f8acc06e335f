// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Preloaded into the program: leaves a file when the program destroys its global objects at its end.

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

[[gnu::destructor]] void TellDestruction()
{
    if (std::strcmp(program_invocation_short_name, "VoraPrinterTool") == 0) { // not those that it starts
        ::close(::open("/tmp/globals-destroyed", O_WRONLY | O_CREAT | O_CLOEXEC, 0644));
    }
}

} // namespace
