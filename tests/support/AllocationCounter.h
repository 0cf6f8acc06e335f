// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

/// How often the calling thread has taken memory from the heap.
long AllocationCount();
