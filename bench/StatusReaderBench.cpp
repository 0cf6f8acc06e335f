// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Benchmarks.h"

#include "BenchPrinters.h"
#include "Desktop.h"
#include "DriverFolder.h"
#include "Figures.h"
#include "HandMadeReply.h"
#include "MeasuredProcess.h"
#include "TestFiles.h"

void BenchStatusReader(bool bQuick)
{
    const int iFiles = bQuick ? 100 : 10000;
    const DriverFolder folder(c_strCfgPath);
    QStringList listPath;
    for (int i = 0; i < iFiles; ++i) {
        WriteBenchStatus(i, HandMadeReply());
        listPath.append(folder.StatusPath(BenchPrinterName(i)));
    }
    const QString strReader = QStringLiteral(VORA_STATUS);
    const QString strText = u"/tmp/text.txt"_s; // what it writes for one file
    if (!WriteFile(strText, Desktop::Run(strReader, {u"--fields"_s, listPath.first()}).toUtf8())) {
        qFatal("cannot write the text");
    }

    Samples reader;
    Samples floor;
    const auto cpuMSec = [&](const QString& strProgram, const QString& strArgument) {
        return MeasuredProcess(strProgram, QStringList(strArgument) + listPath).WaitForEnd();
    };
    TakeInTurns(bQuick ? 1 : 10, {[&] { reader.push_back(cpuMSec(strReader, u"--fields"_s)); },
                                  [&] { floor.push_back(cpuMSec(QStringLiteral(VORA_READ_FILES), strText)); }});
    PrintFigure(enStatusReader, reader, floor);
}
