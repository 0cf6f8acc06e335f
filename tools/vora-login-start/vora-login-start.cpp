// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// What the desktop starts at login: waits until there is a tray and then becomes the tool, with its window hidden. The
// toolkit decides once, at start, which kind of tray it uses, so that a tool started before the panel could stay
// without an icon and, hidden, out of reach.

#include "TrayWatcher.h"

#include <QCoreApplication>
#include <QTimer>

#include <cstdio>

#include <unistd.h>

namespace {

// Longer than the slowest desktop takes to show its panel; a desktop that has none then gets the tool all the same.
constexpr int c_iPatienceMSec = 60000;

void BecomeTool()
{
    const QByteArray path = (QCoreApplication::applicationDirPath() + QStringLiteral("/VoraPrinterTool")).toLocal8Bit();
    execl(path.constData(), path.constData(), "-hide", nullptr);
    perror(path.constData());
    _exit(127);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const TrayWatcher watcher;
    const auto startWhenThere = [&watcher] {
        if (watcher.IsTrayThere()) {
            BecomeTool();
        }
    };
    QObject::connect(&watcher, &TrayWatcher::SgnTrayMayBeThere, startWhenThere);
    QObject::connect(&watcher, &TrayWatcher::SgnDisplayGone, &application, &QCoreApplication::quit);
    QTimer::singleShot(c_iPatienceMSec, BecomeTool);
    startWhenThere();
    return QCoreApplication::exec();
}
