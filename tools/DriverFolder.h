// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

/// The folder in which the printer driver package keeps its printer list and status files ("cfg/"), as a writer sees it.
/// Every file is replaced atomically: a reader finds the old one or the new one, never a part.
class DriverFolder
{
public:
    /// strCfgPath is created when it is missing.
    explicit DriverFolder(const QString& strCfgPath);

    QString Path() const { return m_strCfgPath; }
    QString ListPath() const;
    QString StatusPath(const QString& strName) const;

    // Each returns false when the file could not be written or removed.
    bool WritePrinterList(const QList<stPrinterInfo>& listPrinter) const;
    bool WriteStatus(const QString& strName, const QByteArray& reply) const;
    bool RemoveStatus(const QString& strName) const;
    bool RemovePrinterList() const;

private:
    QString m_strCfgPath;
};
