// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

QByteArray SystemPath(const QString& strPath)
{
    return strPath.contains(QChar(0)) ? QByteArray() : QFile::encodeName(strPath);
}

FileStamp StampOfFile(const QString& strPath)
{
    struct stat fileStat = {};
    (void)::stat(SystemPath(strPath).constData(), &fileStat);
    return {static_cast<qint64>(fileStat.st_ino),
            fileStat.st_size,
            fileStat.st_mtim.tv_sec,
            fileStat.st_mtim.tv_nsec,
            fileStat.st_ctim.tv_sec,
            fileStat.st_ctim.tv_nsec};
}

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
