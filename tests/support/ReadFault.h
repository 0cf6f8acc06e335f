// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

/// While it lives, pread(2) of this process fails with that error. One at a time, in any thread.
class ReadFault
{
public:
    explicit ReadFault(int iError);
    ~ReadFault();
    ReadFault(const ReadFault&) = delete;
    ReadFault& operator=(const ReadFault&) = delete;
};
