// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilCommandOutput.h"

#include "UtilFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

int MakeEmptyFile(const QByteArray& path)
{
    ::unlink(path.constData());
    return ::open(path.constData(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
}

} // namespace

UtilCommandOutput::UtilCommandOutput(const QString& strPath) : m_path(SystemPath(strPath)), m_iFd(MakeEmptyFile(m_path))
{
}

UtilCommandOutput::~UtilCommandOutput()
{
    if (!IsOpen()) {
        return;
    }
    struct stat named = {};
    struct stat own = {};
    if (::lstat(m_path.constData(), &named) == 0 && ::fstat(m_iFd, &own) == 0 && named.st_dev == own.st_dev &&
        named.st_ino == own.st_ino) {
        ::unlink(m_path.constData());
    }
    ::close(m_iFd);
}

QByteArray UtilCommandOutput::ShellPath() const
{
    return "/proc/" + QByteArray::number(::getpid()) + "/fd/" + QByteArray::number(m_iFd);
}

QByteArray UtilCommandOutput::Read(int iMaxLength) const
{
    return ReadBytes(m_iFd, iMaxLength).value_or(QByteArray());
}
