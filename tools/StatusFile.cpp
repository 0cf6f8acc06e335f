// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFile.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

enStatusFileResult StatusFile::Read()
{
    const QByteArray path = QFile::encodeName(m_strPath);
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0) {
        return enStatusFileMissing;
    }
    if (!S_ISREG(status.st_mode)) {
        return enStatusFileNotRegular;
    }
    m_iSize = status.st_size;

    // Not by QFile, which takes twice the system calls. No FIFO that took the file's place meanwhile blocks.
    const int iFd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    m_content.resize(c_iMaxLength);
    const ssize_t iLength = iFd < 0 ? -1 : ::read(iFd, m_content.data(), c_iMaxLength);
    if (iLength < 0) {
        m_strErrorMessage = qt_error_string(errno);
    }
    if (iFd >= 0) {
        ::close(iFd);
    }
    m_content.truncate(std::max(static_cast<int>(iLength), 0));
    if (iLength < 0) {
        return enStatusFileUnreadable;
    }
    return enStatusFileRead;
}

QByteArray FileStamp(const QString& strPath)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(strPath).constData(), &status) != 0) {
        return QByteArray();
    }
    // The change time moves with the contents, the mode and the owner.
    const std::array<qint64, 4> stamp = {static_cast<qint64>(status.st_ino), status.st_size, status.st_ctim.tv_sec,
                                         status.st_ctim.tv_nsec};
    return QByteArray(reinterpret_cast<const char*>(stamp.data()), sizeof(stamp));
}
