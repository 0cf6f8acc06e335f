// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>

#include <functional>

/// While it lives, a function runs before each shell command, which it is told. One at a time.
class SystemHook
{
public:
    explicit SystemHook(std::function<void(const QByteArray&)> beforeCommand);
    ~SystemHook();
    SystemHook(const SystemHook&) = delete;
    SystemHook& operator=(const SystemHook&) = delete;

    const std::function<void(const QByteArray&)> m_beforeCommand;
};
