// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "BenchPrinters.h"

#include "DriverFolder.h"
#include "StatusEncoder.h"

QString BenchPrinterName(int i)
{
    return QStringLiteral("printer%1").arg(i);
}

stPrinterInfo BenchPrinter(int i)
{
    return {BenchPrinterName(i), QStringLiteral("RA7Q"), 0, QStringLiteral("192.168.1.%1").arg(i % 250),
            QStringLiteral("ipp://%1").arg(i)};
}

QByteArray PlainReply(quint8 byStatus)
{
    stStatusReply reply;
    reply.byStatus = byStatus;
    reply.listSupplies = {MakeSuppliesRecord(enSuppliesBlackInk, 50)};
    return EncodeStatusReply(reply);
}

QByteArray RichReply()
{
    stStatusReply reply;
    reply.vendorName = "Vora";
    reply.productName = "Vora RA7QX Series";
    reply.serialNumber = "RA7QX20261104000187";
    reply.byStatus = 0x10;
    reply.firmwareVersion = "2.14.03.20260918";
    reply.listErrorCode = {0x6105, 0x6100, 0x6110};
    reply.listWarningCode = {0x6160, 0x6161};
    reply.listSupplies.append({enSuppliesSerialNumber, "CRG-0099887766"});
    for (const enSuppliesKey enKey : c_enSuppliesNumberList) {
        reply.listSupplies.append(MakeSuppliesRecord(enKey, 77));
    }
    return EncodeStatusReply(reply);
}

void WriteBenchPrinters(int iCount)
{
    const DriverFolder folder(c_strCfgPath);
    QList<stPrinterInfo> listPrinter;
    for (int i = 0; i < iCount; ++i) {
        listPrinter.append(BenchPrinter(i));
        WriteBenchStatus(i, PlainReply(0x00));
    }
    folder.WritePrinterList(listPrinter);
}

void WriteBenchStatus(int i, const QByteArray& reply)
{
    static const DriverFolder s_folder(c_strCfgPath);
    s_folder.WriteStatus(BenchPrinterName(i), reply);
}
