// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

/// The folder in which the printer driver package keeps its printer list and status files ("cfg/"), as a writer sees
/// it. Every file is replaced atomically: a reader finds the old one or the new one, never a part.
class DriverFolder
{
public:
    /// strCfgPath is created when it is missing. strWriter, unless it is empty, signs the printer list.
    explicit DriverFolder(const QString& strCfgPath, const QString& strWriter = QString());

    QString Path() const { return m_strCfgPath; }
    QString ListPath() const;
    QString StatusPath(const QString& strName) const;

    /// True when there is a printer list without this writer's signature.
    bool HasForeignList() const;

    // Each returns false, with an error text, when the file could not be written or removed.
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
