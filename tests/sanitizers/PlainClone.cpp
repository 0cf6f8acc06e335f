// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Part of every test with the thread sanitizer. Qt starts a program by a child that runs in its parent's memory until
// the program takes over. The sanitizer takes each clone() for one that copies the memory: the child tells it to look
// away from now on, and it is the parent that it looks away from. The C library's own clone() tells it nothing.

#include <cstdarg>

#include <dlfcn.h>
#include <sys/types.h>

extern "C" int clone(int (*pFunction)(void*), void* pStack, int iFlags, void* pArgument, ...)
{
    using CloneFunction = int (*)(int (*)(void*), void*, int, void*, ...);
    static const auto s_realClone = reinterpret_cast<CloneFunction>(::dlsym(::dlopen("libc.so.6", RTLD_NOW), "clone"));
    va_list arguments;
    va_start(arguments, pArgument);
    auto* pParentId = va_arg(arguments, pid_t*);
    auto* pThreadStorage = va_arg(arguments, void*);
    auto* pChildId = va_arg(arguments, pid_t*);
    va_end(arguments);
    return s_realClone(pFunction, pStack, iFlags, pArgument, pParentId, pThreadStorage, pChildId);
}
