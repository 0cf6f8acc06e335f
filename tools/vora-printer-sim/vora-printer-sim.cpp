// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EncodeCommand.h"
#include "PlayCommand.h"
#include "QtCompat.h"
#include "ToolError.h"
#include "ToolOutput.h"

#include <QCoreApplication>

#include <csignal>

namespace {

int Run(QStringList listArgument)
{
    try {
        listArgument[0] = QCoreApplication::applicationName();
        if (listArgument.value(1) == QLatin1String("encode")) {
            listArgument[0] += QLatin1Char(' ') + listArgument.takeAt(1);
            RunEncode(listArgument);
        } else {
            RunPlay(listArgument);
        }
    } catch (const ToolError& error) {
        WriteError(error);
        return error.ExitStatus();
    }
    return enExitGood;
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"vora-printer-sim"_s);
    QCoreApplication::setApplicationVersion(QStringLiteral(VORA_VERSION));
    std::signal(SIGPIPE, SIG_IGN); // a reader of our output that goes away is no reason to leave files behind
    return Run(QCoreApplication::arguments());
}
