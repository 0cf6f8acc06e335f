// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "StatusEncoder.h"

#include <QStringList>

#include <utility>

/// A state that a printer takes, and what stands in its row then.
struct stParkState
{
    quint8 byStatus;
    QList<quint16> listErrorCode;
    QList<quint16> listWarningCode;
    QString strText;
    bool bStays; ///< until the printer takes another one
};

const stParkState c_parkReady = {0x00, {}, {}, u"就绪"_s, true};

/// Many simulated network printers that change, and the table that a user must see of them.
class PrinterPark
{
public:
    /// All ready. Throws ToolError when a file cannot be written, like the changes below.
    PrinterPark(const DriverFolder& folder, int iCount) : m_folder(folder)
    {
        for (int i = 0; i < iCount; ++i) {
            const QString strName = u"Printer%1"_s.arg(i);
            m_listInfo.append({strName, u"RA7Q"_s, 0, u"10.0.0.%1"_s.arg(i), u"ipp://"_s + strName});
            m_listState.append(c_parkReady);
            WriteStatus(i);
        }
        m_folder.WritePrinterList(m_listInfo);
    }

    /// Name, connection and state of a row.
    QStringList Row(int iRow) const
    {
        const stPrinterInfo& info = m_listInfo.at(iRow);
        return {info.strPrinterName, u"网络(%1)"_s.arg(info.strPort), m_listState.at(iRow).strText};
    }

    void SetState(int iRow, const stParkState& state)
    {
        m_listState[iRow] = state;
        WriteStatus(iRow);
    }

    /// Swaps the row with the next one, renames its printer or moves it to another port, in turn; returns the rows that
    /// look different then.
    QList<int> ChangeList(int iRow)
    {
        stPrinterInfo& info = m_listInfo[iRow];
        const QString strOldName = info.strPrinterName;
        const int iKind = m_iChanges++ % 3;
        if (iKind == 0) {
            std::swap(info, m_listInfo[iRow + 1]);
            std::swap(m_listState[iRow], m_listState[iRow + 1]);
        } else if (iKind == 1) {
            info.strPrinterName = u"Renamed%1"_s.arg(m_iChanges);
            WriteStatus(iRow); // before the list: a printer without a status file would show as off-line
        } else {
            info.strPort = u"10.1.0.%1"_s.arg(m_iChanges);
        }
        m_folder.WritePrinterList(m_listInfo);
        if (iKind == 1) {
            m_folder.RemoveStatus(strOldName);
        }
        return iKind == 0 ? QList<int>{iRow, iRow + 1} : QList<int>{iRow};
    }

private:
    void WriteStatus(int iRow) const
    {
        const stParkState& state = m_listState.at(iRow);
        stStatusReply reply;
        reply.byStatus = state.byStatus;
        reply.listErrorCode = state.listErrorCode;
        reply.listWarningCode = state.listWarningCode;
        m_folder.WriteStatus(m_listInfo.at(iRow).strPrinterName, EncodeStatusReply(reply));
    }

    const DriverFolder& m_folder;
    QList<stPrinterInfo> m_listInfo;
    QList<stParkState> m_listState;
    int m_iChanges = 0;
};
