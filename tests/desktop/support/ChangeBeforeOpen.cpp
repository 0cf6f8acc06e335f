// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Preloaded into the program: between the moment when the program has looked at a status file named Changing.dat and
// the moment when it opens it, the file goes away (while there is /tmp/vanish) or becomes a FIFO (while there is
// /tmp/become-fifo); the printer list too while there is /tmp/list-too.

#undef _FILE_OFFSET_BITS // with which the one function below would be the other

#include <cstdarg>
#include <cstring>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" int open(const char* pPath, int iFlags, ...)
{
    if (std::strstr(pPath, "/Changing.dat") != nullptr ||
        (std::strstr(pPath, "/printerlist.ini") != nullptr && ::access("/tmp/list-too", F_OK) == 0)) {
        if (::access("/tmp/vanish", F_OK) == 0) {
            ::unlink(pPath);
        }
        if (::access("/tmp/become-fifo", F_OK) == 0) {
            ::unlink(pPath);
            ::mkfifo(pPath, 0666);
        }
    }
    va_list arguments;
    va_start(arguments, iFlags);
    const mode_t iMode = (iFlags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const auto realOpen = reinterpret_cast<int (*)(const char*, int, ...)>(::dlsym(RTLD_NEXT, "open64"));
    return realOpen(pPath, iFlags, iMode);
}

extern "C" int open64(const char* pPath, int iFlags, ...) __attribute__((alias("open")));
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
