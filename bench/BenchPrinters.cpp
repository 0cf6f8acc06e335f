// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "BenchPrinters.h"

#include "DriverFolder.h"
#include "StatusEncoder.h"

QString BenchPrinterName(int i)
{
    return u"printer%1"_s.arg(i);
}

void WriteBenchPrinters(int iCount)
{
    stStatusReply reply;
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 50)};
    QList<stPrinterInfo> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append({BenchPrinterName(i), u"RA7Q"_s, 0, u"192.168.1.%1"_s.arg(i % 250), u"ipp://%1"_s.arg(i)});
        WriteBenchStatus(i, EncodeStatusReply(reply));
    }
    DriverFolder(c_strCfgPath).WritePrinterList(listPrinter);
}

void WriteBenchStatus(int i, const QByteArray& reply)
{
    static const DriverFolder s_folder(c_strCfgPath);
    s_folder.WriteStatus(BenchPrinterName(i), reply);
}
