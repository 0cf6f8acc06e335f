// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AllocationCounter.h"

#include <cstddef>

namespace {
thread_local long s_iAllocations = 0;
} // namespace

// Stand in for the C library's entries in the whole process, Qt and operator new included, and hand on to it.

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names
void* __libc_malloc(std::size_t iSize);
void* __libc_realloc(void* pOld, std::size_t iSize);
void* __libc_calloc(std::size_t iCount, std::size_t iSize);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_malloc(iSize);
}

void* realloc(void* pOld, std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_realloc(pOld, iSize);
}

void* calloc(std::size_t iCount, std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_calloc(iCount, iSize);
}
}

long AllocationCount()
{
    return s_iAllocations;
}
