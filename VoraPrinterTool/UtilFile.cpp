// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include <fcntl.h>

bool OpenWithoutBlocking(QFile& file, const QString& strPath, QIODevice::OpenMode mode, int iFlags)
{
    const int iAccess = mode.testFlag(QIODevice::WriteOnly) ? O_WRONLY | O_CREAT : O_RDONLY;
    const int iFd = ::open(QFile::encodeName(strPath).constData(), iAccess | O_NONBLOCK | O_CLOEXEC | iFlags, 0666);
    return iFd >= 0 && file.open(iFd, mode, QFileDevice::AutoCloseHandle);
}

bool CreateAnew(const QString& strPath)
{
    QFile::remove(strPath);
    return QFile(strPath).open(QIODevice::WriteOnly | QIODevice::NewOnly);
}
