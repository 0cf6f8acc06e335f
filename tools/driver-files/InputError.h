// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <stdexcept>

/// What somebody wrote is not what was expected; the message names the place and what was expected there.
class InputError : public std::runtime_error
{
public:
    explicit InputError(const QString& strMessage) : std::runtime_error(strMessage.toUtf8().constData()) {}

    QString Message() const { return QString::fromUtf8(what()); }
};
