// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFile.h"

#include "UtilFile.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

enStatusFileResult StatusFile::Read()
{
    const QByteArray path = SystemPath(m_strPath);
    struct stat status = {};
    if (::stat(path.constData(), &status) != 0) {
        return enStatusFileMissing;
    }
    if (!S_ISREG(status.st_mode)) {
        return enStatusFileNotRegular;
    }
    m_iSize = status.st_size;

    // Not by QFile, which takes twice the system calls. No FIFO that took the file's place meanwhile blocks.
    StatusBuffer buffer;
    const int iFd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    const ssize_t iLength = iFd < 0 ? -1 : ::read(iFd, buffer.data(), buffer.size());
    const int iError = errno;
    if (iFd >= 0) {
        ::close(iFd);
    }
    if (iLength < 0) {
        m_strErrorMessage = qt_error_string(iError);
        return enStatusFileUnreadable;
    }
    m_content = QByteArray(reinterpret_cast<const char*>(buffer.data()), static_cast<int>(iLength));
    return enStatusFileRead;
}
