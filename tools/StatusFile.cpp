// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFile.h"

#include "UtilFile.h"

#include <QFileInfo>

#include <array>
#include <cerrno>

#include <sys/stat.h>

enStatusFileResult StatusFile::Read()
{
    const QFileInfo fileInfo(m_strPath);
    if (!fileInfo.exists()) {
        return enStatusFileMissing;
    }
    if (!fileInfo.isFile()) {
        return enStatusFileNotRegular;
    }
    m_iSize = fileInfo.size();

    QFile file;
    errno = 0;
    if (!OpenWithoutBlocking(file, m_strPath, QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        m_strErrorMessage = qt_error_string(errno);
        return enStatusFileUnreadable;
    }
    m_content.resize(c_iMaxLength);
    const qint64 iLength = file.read(m_content.data(), m_content.size());
    if (iLength < 0 || file.error() != QFileDevice::NoError) {
        m_content.clear();
        m_strErrorMessage = file.errorString();
        return enStatusFileUnreadable;
    }
    m_content.truncate(static_cast<int>(iLength));
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
