// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"
#include "ToolError.h"

/// Puts a new file in the place of whatever stands at strPath, a link itself and not its target. Readers find the old
/// one or the new one, never a part. Throws ToolError: with enFailure when nothing can be put there, with enExitIo when
/// it cannot be written.
void ReplaceFile(const QString& strPath, const QByteArray& content, enExitStatus enFailure = enExitCannotCreate);

/// The folder in which the printer driver package keeps its printer list and status files ("cfg/"), as a writer sees
/// it. Files are written as by ReplaceFile. Used by one thread at a time.
class DriverFolder
{
public:
    /// strCfgPath is created when it is missing; when that fails, the first write tells. strWriter, unless it is empty,
    /// signs the printer list.
    explicit DriverFolder(const QString& strCfgPath, const QString& strWriter = QString());

    QString Path() const { return m_strCfgPath; }
    QString ListPath() const;
    /// The status file of the queue strName, taken as it is: a "/" in it leads elsewhere.
    QString StatusPath(const QString& strName) const;

    /// Whether anything stands in the status file's place, even a link to nothing.
    bool HasStatus(const QString& strName) const;
    /// Whether that is a regular file of this process's user.
    bool HasPlainStatus(const QString& strName) const;

    /// Whether anything stands in the printer list's place, even a link to nothing.
    bool HasList() const;
    /// Whether that is a regular file of this process's user with this writer's signature.
    bool HasOwnList() const;

    // Throw ToolError as ReplaceFile does.
    void WritePrinterList(const QList<stPrinterInfo>& listPrinter, enExitStatus enFailure = enExitCannotCreate) const;
    void WriteStatus(const QString& strName, const QByteArray& reply,
                     enExitStatus enFailure = enExitCannotCreate) const;
    // Throw ToolError with enExitIo. A file that is not there has been removed.
    void RemoveStatus(const QString& strName) const;
    void RemovePrinterList() const;

private:
    QString m_strCfgPath;
    QString m_strWriter;
};
