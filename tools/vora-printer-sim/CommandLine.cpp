// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "CommandLine.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <cstdio>

namespace {
constexpr qint64 c_iMaxInputSize = 16 << 20;
} // namespace

void Print(FILE* pFile, const QString& strText)
{
    const QByteArray line = strText.toUtf8() + '\n';
    const bool bWritten = std::fputs(line.constData(), pFile) >= 0 && std::fflush(pFile) == 0;
    if (!bWritten && pFile == stdout) {
        throw stEnd{enSimExitIo, QStringLiteral("cannot write to standard output: ") + qt_error_string(errno)};
    }
}

void ParseArguments(QCommandLineParser& parser, const QStringList& listArgument, int iMaxPositional)
{
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Show this text."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Show the version."));
    parser.addOptions({help, version});
    if (!parser.parse(listArgument)) {
        throw stEnd{enSimExitUsage, parser.errorText()};
    }
    const QString strProgram = QCoreApplication::applicationName();
    if (parser.isSet(help)) {
        // The path that the program was started by may be longer than a line, and lacks the subcommand.
        QString strHelp = parser.helpText();
        Print(stdout, strHelp.replace(QCoreApplication::arguments().constFirst(), listArgument.constFirst()).trimmed());
        throw stEnd{enSimExitOk, QString()};
    }
    if (parser.isSet(version)) {
        Print(stdout, strProgram + QLatin1Char(' ') + QCoreApplication::applicationVersion());
        throw stEnd{enSimExitOk, QString()};
    }
    if (parser.positionalArguments().size() > iMaxPositional) {
        throw stEnd{enSimExitUsage,
                    QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().at(iMaxPositional))};
    }
}

QByteArray ReadInput(const QString& strPath)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly)) {
        throw stEnd{enSimExitNoInput, QStringLiteral("cannot read %1: %2").arg(strPath, file.errorString())};
    }
    const QByteArray bytes = file.read(c_iMaxInputSize + 1);
    if (file.error() != QFileDevice::NoError) {
        throw stEnd{enSimExitNoInput, QStringLiteral("cannot read %1: %2").arg(strPath, file.errorString())};
    }
    if (bytes.size() > c_iMaxInputSize) {
        throw stEnd{enSimExitData, QStringLiteral("%1: expected at most 16 MiB").arg(strPath)};
    }
    return bytes;
}
