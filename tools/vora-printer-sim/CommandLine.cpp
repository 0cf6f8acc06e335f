// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CommandLine.h"

#include "Printable.h"
#include "QtCompat.h"
#include "ToolError.h"
#include "ToolOutput.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>

namespace {
constexpr qint64 c_iMaxInputSize = 16 << 20;
} // namespace

void PrintLine(const QString& strText, const EndSignals* pEndSignals)
{
    Print(Printable(strText).toUtf8() + '\n', pEndSignals);
}

void Print(const QByteArray& bytes, const EndSignals* pEndSignals)
{
    const int iError = WriteOutput(bytes, pEndSignals);
    if (iError != 0 && iError != EINTR) {
        throw ToolError(enExitIo, u"cannot write to standard output: "_s + qt_error_string(iError));
    }
}

bool ParseArguments(QCommandLineParser& parser, const QStringList& listArgument, int iMaxPositional)
{
    const QCommandLineOption help({u"h"_s, u"help"_s}, u"Show this text."_s);
    const QCommandLineOption version({u"v"_s, u"version"_s}, u"Show the version."_s);
    parser.addOptions({help, version});
    if (!parser.parse(listArgument)) {
        throw ToolError(enExitUsage, parser.errorText());
    }
    if (parser.isSet(help)) {
        // The path that the program was started by may be longer than a line, and lacks the subcommand.
        QString strHelp = parser.helpText();
        strHelp.replace(QCoreApplication::arguments().constFirst(), listArgument.constFirst());
        Print(strHelp.trimmed().toUtf8() + '\n');
        return false;
    }
    if (parser.isSet(version)) {
        PrintLine(QCoreApplication::applicationName() + QLatin1Char(' ') + QCoreApplication::applicationVersion());
        return false;
    }
    if (parser.positionalArguments().size() > iMaxPositional) {
        throw ToolError(enExitUsage,
                        u"unexpected argument \"%1\""_s.arg(parser.positionalArguments().at(iMaxPositional)));
    }
    return true;
}

QByteArray ReadInput(const QString& strPath)
{
    QFile file(strPath);
    const bool bOpen = file.open(QIODevice::ReadOnly);
    const QByteArray bytes = bOpen ? file.read(c_iMaxInputSize + 1) : QByteArray();
    if (file.error() != QFileDevice::NoError) {
        throw ToolError(enExitNoInput, u"cannot read %1: %2"_s.arg(strPath, file.errorString()));
    }
    if (bytes.size() > c_iMaxInputSize) {
        throw ToolError(enExitData, u"%1: expected at most 16 MiB"_s.arg(strPath));
    }
    return bytes;
}
