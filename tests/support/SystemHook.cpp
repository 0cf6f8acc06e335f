// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "SystemHook.h"

#include <cstdlib>

#include <dlfcn.h>

namespace {
const SystemHook* s_pSystemHook = nullptr;
} // namespace

SystemHook::SystemHook(std::function<void(const QByteArray&)> beforeCommand) : m_beforeCommand(std::move(beforeCommand))
{
    s_pSystemHook = this;
}

SystemHook::~SystemHook()
{
    s_pSystemHook = nullptr;
}

// The program's own definition comes before the C library's.
extern "C" int system(const char* pCommand) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    if (s_pSystemHook != nullptr) {
        s_pSystemHook->m_beforeCommand(pCommand);
    }
    return reinterpret_cast<int (*)(const char*)>(::dlsym(RTLD_NEXT, "system"))(pCommand);
}
