// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include <fcntl.h>
#include <unistd.h>

bool OpenWithoutBlocking(QFile& file, const QString& strPath, QIODevice::OpenMode mode, int iFlags)
{
    const bool bWrite = (mode & (QIODevice::WriteOnly | QIODevice::Append)) != 0;
    const int iAccess = bWrite ? O_WRONLY | O_CREAT : O_RDONLY;
    const int iFd = ::open(QFile::encodeName(strPath).constData(), iAccess | O_NONBLOCK | O_CLOEXEC | iFlags, 0666);
    if (iFd >= 0 && !file.open(iFd, mode, QFileDevice::AutoCloseHandle)) {
        ::close(iFd); // such as a FIFO, which cannot be appended to
    }
    return file.isOpen();
}

bool CreateAnew(const QString& strPath)
{
    QFile::remove(strPath);
    return QFile(strPath).open(QIODevice::WriteOnly | QIODevice::NewOnly);
}
