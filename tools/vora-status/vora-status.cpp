// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusOptions.h"
#include "StatusOutput.h"
#include "StatusRendering.h"
#include "StatusSource.h"
#include "StatusWatch.h"

#include <QCoreApplication>

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    StatusOptions options;
    if (!options.Parse(QCoreApplication::arguments())) {
        WriteMessages(MessageLine(options.m_strError.toStdString()));
        return enExitUsage;
    }
    if (options.m_bHelp) {
        return WriteOutput(options.HelpText()) ? enExitGood : enExitFailure;
    }
    StatusSource source(options);
    if (options.m_bWatch) {
        return WatchStatus(options, source);
    }
    StatusRendering rendering(options, source);
    rendering.Print();
    return rendering.ExitStatus();
}
