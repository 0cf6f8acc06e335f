// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#undef _FILE_OFFSET_BITS // with which the one function below would be the other

#include "OpenHook.h"

#include <QFile>

#include <atomic>
#include <cerrno>
#include <cstdarg>

#include <dlfcn.h>
#include <fcntl.h>

namespace {

std::atomic<const OpenHook*> s_pOpenHook{nullptr};

} // namespace

OpenHook::OpenHook(const QString& strPath, std::function<bool()> beforeOpen)
    : m_path(QFile::encodeName(strPath)), m_beforeOpen(std::move(beforeOpen))
{
    s_pOpenHook = this;
}

OpenHook::~OpenHook()
{
    s_pOpenHook = nullptr;
}

// The program's own definitions come before the C library's.

// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" int open64(const char* pPath, int iFlags, ...)
{
    const OpenHook* pHook = s_pOpenHook;
    if (pHook != nullptr && (pHook->m_path.isEmpty() || pHook->m_path == pPath) && !pHook->m_beforeOpen()) {
        errno = EACCES;
        return -1;
    }
    va_list arguments;
    va_start(arguments, iFlags);
    const mode_t iMode = (iFlags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const auto realOpen = reinterpret_cast<int (*)(const char*, int, ...)>(::dlsym(RTLD_NEXT, "open64"));
    return realOpen(pPath, iFlags, iMode);
}

extern "C" int open(const char* pPath, int iFlags, ...) __attribute__((alias("open64")));
// NOLINTEND(readability-inconsistent-declaration-parameter-name)
