// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <functional>

/// While it lives, open(2) of one path, or of any when it is empty, first runs a function, which may throw; the file is
/// opened when that returns true and refused with EACCES when it returns false. One at a time, in any thread. Works
/// without regard to the user's rights: root can open what nobody else can.
class OpenHook
{
public:
    OpenHook(const QString& strPath, std::function<bool()> beforeOpen);
    ~OpenHook();
    OpenHook(const OpenHook&) = delete;
    OpenHook& operator=(const OpenHook&) = delete;

    const QByteArray m_path;
    const std::function<bool()> m_beforeOpen;
};
