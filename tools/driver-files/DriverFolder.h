// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

/// The folder in which the printer driver package keeps its printer list and status files ("cfg/"), as a writer sees
/// it. Every file is replaced atomically: a reader finds the old one or the new one, never a part. Used by one thread
/// at a time, although the functions are const: a failure leaves its text.
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

    /// True when what stands in the printer list's place does not bear this writer's signature: somebody else's list,
    /// one that cannot be read, a folder, a link to nothing. False when nothing stands there.
    bool HasForeignList() const;

    // Each returns false, with an error text, when the file could not be written or removed; one that is not there
    // cannot be removed.
    bool WritePrinterList(const QList<stPrinterInfo>& listPrinter) const;
    bool WriteStatus(const QString& strName, const QByteArray& reply) const;
    bool RemoveStatus(const QString& strName) const;
    bool RemovePrinterList() const;

    /// What the last failure was about, for a person.
    QString ErrorString() const { return m_strError; }

private:
    bool Remove(const QString& strPath) const;

    QString m_strCfgPath;
    QString m_strWriter;
    mutable QString m_strError;
};
