// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilFile.h"
#include "UtilStatusQuery.h"

/// So many bytes are read of a status file at most.
constexpr int c_iMaxStatusLength = std::tuple_size_v<StatusBuffer>;

/// What a status file holds.
inline stFileContent ReadStatusFile(const QString& strPath)
{
    return ReadRegularFile(strPath, c_iMaxStatusLength);
}
