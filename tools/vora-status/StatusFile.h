// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "UtilStatusQuery.h"

#include <QByteArray>
#include <QString>

enum enStatusFileResult
{
    enStatusFileRead,
    enStatusFileMissing,
    enStatusFileNotRegular,
    enStatusFileUnreadable
};

/// One status file, read as the program reads it: regular files only, at most c_iMaxLength bytes.
class StatusFile
{
public:
    static constexpr int c_iMaxLength = std::tuple_size_v<StatusBuffer>;

    explicit StatusFile(const QString& strPath) : m_strPath(strPath) {}

    /// Fills the members below; the content stays empty unless the file was read.
    enStatusFileResult Read();

    QByteArray m_content;
    qint64 m_iSize = 0;        ///< of the file, which may hold more than is read
    QString m_strErrorMessage; ///< the system's words when the file is unreadable

private:
    QString m_strPath;
};
