// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrinterPark.h"

#include <algorithm>

PrinterPark::PrinterPark(const DriverFolder& folder, int iCount) : m_folder(folder)
{
    for (int i = 0; i < iCount; ++i) {
        const QString strName = u"Printer%1"_s.arg(i);
        const stPrinterInfo info = {strName, u"RA7Q"_s, 0, u"10.0.0.%1"_s.arg(i), u"ipp://"_s + strName};
        m_listPrinter.append(stPrinter{info, {0x00, {}, {}, u"就绪"_s}});
    }
}

int PrinterPark::RowOf(const QString& strName) const
{
    const auto found = std::find_if(m_listPrinter.begin(), m_listPrinter.end(),
                                    [&](const stPrinter& printer) { return printer.info.strPrinterName == strName; });
    return static_cast<int>(found - m_listPrinter.begin());
}

QStringList PrinterPark::Row(int iRow) const
{
    const stPrinter& printer = m_listPrinter.at(iRow);
    return {printer.info.strPrinterName, u"网络(%1)"_s.arg(printer.info.strPort), printer.state.strText};
}

void PrinterPark::WriteAll() const
{
    for (const stPrinter& printer : m_listPrinter) {
        WriteStatus(printer);
    }
    WriteList();
}

void PrinterPark::SetState(int iRow, const stState& state)
{
    m_listPrinter[iRow].state = state;
    WriteStatus(m_listPrinter.at(iRow));
}

QList<int> PrinterPark::SwapWithNext(int iRow)
{
    std::swap(m_listPrinter[iRow], m_listPrinter[iRow + 1]);
    WriteList();
    return {iRow, iRow + 1};
}

QList<int> PrinterPark::Rename(int iRow)
{
    stPrinter& printer = m_listPrinter[iRow];
    const QString strOldName = printer.info.strPrinterName;
    printer.info.strPrinterName = u"Renamed%1"_s.arg(m_iRenamed++);
    // The list last: a printer whose status file is not there yet would show as off-line.
    WriteStatus(printer);
    WriteList();
    m_folder.RemoveStatus(strOldName);
    return {iRow};
}

QList<int> PrinterPark::Move(int iRow)
{
    m_listPrinter[iRow].info.strPort = u"10.1.0.%1"_s.arg(m_iMoved++);
    WriteList();
    return {iRow};
}

void PrinterPark::WriteStatus(const stPrinter& printer) const
{
    stStatusReply reply;
    reply.byStatus = printer.state.byStatus;
    reply.listErrorCode = printer.state.listErrorCode;
    reply.listWarningCode = printer.state.listWarningCode;
    m_folder.WriteStatus(printer.info.strPrinterName, EncodeStatusReply(reply));
}

void PrinterPark::WriteList() const
{
    QList<stPrinterInfo> listInfo;
    for (const stPrinter& printer : m_listPrinter) {
        listInfo.append(printer.info);
    }
    m_folder.WritePrinterList(listInfo);
}
