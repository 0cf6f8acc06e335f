// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "MetricsExport.h"
#include "StatusOptions.h"
#include "StatusRendering.h"
#include "StatusSource.h"
#include "StatusWatch.h"
#include "ToolOutput.h"

#include <QCoreApplication>

namespace {

enExitStatus Run(const QStringList& listArgument)
{
    StatusOptions options;
    options.Parse(listArgument);
    if (options.m_bHelp) {
        PrintStatus({options.HelpText(), {}, enExitGood}, options.m_enLang);
        return enExitGood;
    }
    if (options.m_bVersion) {
        PrintStatus({"vora-status " VORA_VERSION "\n", {}, enExitGood}, options.m_enLang);
        return enExitGood;
    }
    StatusSource source(options);
    if (options.m_enFormat == enFormatPrometheus) {
        ExportMetrics(options, source);
        return enExitGood;
    }
    if (options.m_bWatch) {
        return WatchStatus(options, source);
    }
    const stStatusRendering rendering = RenderStatus(options, source);
    PrintStatus(rendering, options.m_enLang);
    return rendering.enStatus;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"vora-status"_s);
    try {
        return Run(QCoreApplication::arguments());
    } catch (const ToolError& error) {
        WriteError(error);
        return error.ExitStatus();
    }
}
