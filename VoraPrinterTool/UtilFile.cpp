// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// Neither waits for a FIFO's other end nor takes a terminal for its own.
constexpr int c_iSafeFlags = O_NONBLOCK | O_CLOEXEC | O_NOCTTY;

/// Closes a descriptor in every path.
class OpenFile
{
public:
    explicit OpenFile(const QByteArray& path) : m_iFd(::open(path.constData(), O_RDONLY | c_iSafeFlags)) {}
    ~OpenFile()
    {
        if (m_iFd >= 0) {
            ::close(m_iFd);
        }
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    int Fd() const { return m_iFd; }

private:
    const int m_iFd;
};

/// Whether there is nothing to be had under a name, other than for a fault of the moment.
bool IsMissing(int iError)
{
    return iError == ENOENT || iError == ENOTDIR || iError == ELOOP || iError == ENAMETOOLONG;
}

} // namespace

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
    const int iFd = ::open(QFile::encodeName(strPath).constData(), iAccess | c_iSafeFlags | iFlags, 0666);
    if (iFd >= 0 && !file.open(iFd, mode, QFileDevice::AutoCloseHandle)) {
        ::close(iFd); // such as a FIFO, which cannot be appended to
    }
    return file.isOpen();
}

std::optional<QByteArray> ReadBytes(int iFd, int iMaxLength)
{
    // The compiler's checks of copies to memory know its size, which they do not of a QByteArray.
    const auto iSize = static_cast<std::size_t>(iMaxLength);
    const std::unique_ptr<char[]> content(new char[iSize]);
    std::size_t iLength = 0;
    ssize_t iRead = 0;
    do {
        iRead = ::pread(iFd, content.get() + iLength, iSize - iLength, static_cast<off_t>(iLength));
        iLength += static_cast<std::size_t>(qMax<ssize_t>(iRead, 0));
    } while (iRead > 0 || (iRead < 0 && errno == EINTR));
    if (iRead < 0) {
        return std::nullopt;
    }
    return QByteArray(content.get(), static_cast<int>(iLength));
}

stFileContent ReadRegularFile(const QString& strPath, int iMaxLength)
{
    stFileContent file;
    const auto failure = [&file](enFileResult enResult, int iError) {
        file.enResult = enResult;
        file.iError = iError;
        return file;
    };
    const QByteArray path = SystemPath(strPath);
    struct stat fileStat = {};
    if (::stat(path.constData(), &fileStat) != 0) {
        return failure(IsMissing(errno) ? enFileMissing : enFileUnreadable, errno);
    }
    if (!S_ISREG(fileStat.st_mode)) { // to open a device may have an effect
        return failure(enFileNotRegular, 0);
    }
    const OpenFile opened(path);
    if (opened.Fd() < 0 || ::fstat(opened.Fd(), &fileStat) != 0) {
        return failure(enFileUnreadable, errno);
    }
    if (!S_ISREG(fileStat.st_mode)) { // another took its place meanwhile
        return failure(enFileNotRegular, 0);
    }
    file.iSize = fileStat.st_size;
    file.iModified = qint64{fileStat.st_mtim.tv_sec} * 1000 + fileStat.st_mtim.tv_nsec / 1000000;
    const std::optional<QByteArray> content = ReadBytes(opened.Fd(), iMaxLength);
    if (!content) {
        return failure(enFileUnreadable, errno);
    }
    file.enResult = enFileRead;
    file.content = *content;
    return file;
}
