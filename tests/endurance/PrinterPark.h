// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "StatusEncoder.h"

#include <QStringList>

/// Many simulated network printers that change, and the table that a user must see of them.
class PrinterPark
{
public:
    PrinterPark(const DriverFolder& folder, int iCount);

    /// A state that a printer takes, and what stands in its row then.
    struct stState
    {
        quint8 byStatus;
        QList<quint16> listErrorCode;
        QList<quint16> listWarningCode;
        QString strText;
    };

    int Count() const { return static_cast<int>(m_listPrinter.size()); }
    QString Name(int iRow) const { return m_listPrinter.at(iRow).info.strPrinterName; }
    int RowOf(const QString& strName) const;

    /// Name, connection and state of a row.
    QStringList Row(int iRow) const;

    // Throw ToolError when a file cannot be written, like the changes below.
    void WriteAll() const;
    void SetState(int iRow, const stState& state);

    // Changes of the list that do not shrink it; each returns the rows that look different then.
    QList<int> SwapWithNext(int iRow);
    QList<int> Rename(int iRow);
    QList<int> Move(int iRow); ///< to another port

private:
    struct stPrinter
    {
        stPrinterInfo info;
        stState state;
    };

    void WriteStatus(const stPrinter& printer) const;
    void WriteList() const;

    const DriverFolder& m_folder;
    QList<stPrinter> m_listPrinter;
    int m_iRenamed = 0;
    int m_iMoved = 0;
};
