// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "TestFiles.h"

#include <QDateTime>

/// The folder in which the program looks for status files.
inline DriverFolder StatusFolder()
{
    return DriverFolder(u"/opt/vora/vora-printer-k507/cfg"_s);
}

/// Puts a reply into a queue's status file. A file's time moves in ticks of some milliseconds; within one tick the new
/// file would pass for the old one.
inline void WriteNewStatus(const QString& strName, const QByteArray& reply)
{
    const QString strPath = StatusFolder().StatusPath(strName);
    const QDateTime dtBefore = QFileInfo(strPath).lastModified();
    do {
        StatusFolder().WriteStatus(strName, reply);
    } while (QFileInfo(strPath).lastModified() == dtBefore);
}

inline QString ToolPath()
{
    return u"/opt/vora/vora-printer-k507/tool/"_s;
}

/// What all log files hold together.
inline QByteArray LogText()
{
    QByteArray text;
    for (const QFileInfo& info : QDir(ToolPath()).entryInfoList({u"log_tool_*.log"_s})) {
        text += ReadFile(info.filePath());
    }
    return text;
}

/// How many descriptors this process has open.
inline int DescriptorCount()
{
    return static_cast<int>(
        QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size());
}
