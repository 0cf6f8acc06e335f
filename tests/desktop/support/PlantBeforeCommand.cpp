// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Preloaded into the program: /opt/vora/planted, when there is one, takes the process list's name before the shell
// command that writes the list.

#include <cstdio>
#include <cstdlib>

#include <dlfcn.h>

extern "C" int system(const char* pCommand) // NOLINT(readability-inconsistent-declaration-parameter-name)
{
    (void)std::rename("/opt/vora/planted", "/opt/vora/vora-printer-k507/tool/pslist.tmp");
    return reinterpret_cast<int (*)(const char*)>(::dlsym(RTLD_NEXT, "system"))(pCommand);
}
