// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include "NoStandardInput.h"
#include "OpenHook.h"
#include "Plant.h"
#include "StatusFolder.h"

#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {
bool s_bSlow = false;
int s_iDescriptorFlags = 0; // of the last one that was read
} // namespace

/// While it is slow: a byte at a time, and interrupted before each.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" ssize_t pread(int iFd, void* pBytes, size_t iSize, off_t iOffset)
{
    static int s_iCalls = 0;
    s_iDescriptorFlags = ::fcntl(iFd, F_GETFD);
    if (s_bSlow && ++s_iCalls % 2 != 0) {
        errno = EINTR;
        return -1;
    }
    return ::syscall(SYS_pread64, iFd, pBytes, s_bSlow ? std::min(iSize, size_t(1)) : iSize, iOffset);
}

class tst_UtilFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_pFolder->isValid());
        m_iDescriptors = DescriptorCount();
    }

    void cleanup()
    {
        m_pFolder.reset();
        QCOMPARE(DescriptorCount(), m_iDescriptors);
    }

    void readsAFile()
    {
        const QString strPath = Path("办公室.dat");
        QVERIFY(WriteFile(strPath, "one\r\ntwo\n"));
        QVERIFY(Plant(Path("link"), strPath));
        for (const QString& strName : {strPath, Path("link")}) {
            QFile file;
            QVERIFY(OpenWithoutBlocking(file, strName, QIODevice::ReadOnly));
            QCOMPARE(file.openMode(), QIODevice::OpenMode(QIODevice::ReadOnly));
            QCOMPARE(file.readAll(), QByteArray("one\r\ntwo\n"));
        }
    }

    void writingCreatesTheFileWithTheUsualModeOrAppends()
    {
        const mode_t oldMask = ::umask(0027);
        QFile file;
        const bool bOpen = OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly);
        ::umask(oldMask);
        QVERIFY(bOpen);
        struct stat status = {};
        QCOMPARE(::fstat(file.handle(), &status), 0);
        QCOMPARE(status.st_mode, mode_t(S_IFREG | 0640));
        QVERIFY((::fcntl(file.handle(), F_GETFD) & FD_CLOEXEC) != 0);
        QCOMPARE(file.write("new"), 3);
        file.close();
        for (const char* pLine : {"1\n", "2\n"}) {
            QFile longer;
            QVERIFY(OpenWithoutBlocking(longer, Path("a"), QIODevice::Append | QIODevice::Text, O_APPEND));
            QCOMPARE(longer.write(pLine), 2);
        }
        QCOMPARE(ReadFile(Path("a")), QByteArray("new1\n2\n"));
    }

    void refusedFileStaysClosed()
    {
        const QIODevice::OpenMode read = QIODevice::ReadOnly;
        const QIODevice::OpenMode write = QIODevice::WriteOnly;
        const QIODevice::OpenMode append = QIODevice::Append;
        QVERIFY(WriteFile(Path("plain"), "x"));
        QVERIFY(Plant(Path("link"), Path("plain")) && Plant(Path("dangling"), Path("missing")));
        const auto isRefused = [this](const char* pName, QIODevice::OpenMode mode, int iFlags = 0) {
            QFile file;
            const int iBefore = DescriptorCount();
            const bool bOpen = OpenWithoutBlocking(file, Path(pName), mode, iFlags) || file.isOpen();
            return !bOpen && DescriptorCount() == iBefore;
        };
        QVERIFY(isRefused("missing", read) && isRefused("missing/a", read) && isRefused("missing/a", write));
        QVERIFY(isRefused("plain/a", write) && isRefused(".", write) && isRefused(QByteArray(300, 'x'), write));
        QVERIFY(isRefused("link", read, O_NOFOLLOW) && isRefused("link", write | append, O_NOFOLLOW));
        QVERIFY(isRefused("dangling", read, O_NOFOLLOW) && isRefused("dangling", write | append, O_NOFOLLOW));
        QCOMPARE(ReadFile(Path("plain")), QByteArray("x"));
        QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files), (QStringList{u"link"_s, u"plain"_s}));

        QVERIFY(Plant(Path("fifo"), QString()));
        QVERIFY(isRefused("fifo", write)); // nobody reads
        QFile reader;
        QVERIFY(OpenWithoutBlocking(reader, Path("fifo"), read));
        QCOMPARE(reader.readAll(), QByteArray());
        QVERIFY(isRefused("fifo", append, O_APPEND));
    }

    void readsTheFirstBytesOfARegularFile()
    {
        QVERIFY(Plant(Path("link"), Path("a")));
        for (const QByteArray& content :
             {QByteArray(), QByteArray("abc"), QByteArray("abcd"), QByteArray("abcde"), QByteArray(2, '\0')}) {
            QVERIFY(WriteFile(Path("a"), content));
            QVERIFY(SetModificationTime(Path("a"), QDateTime::fromMSecsSinceEpoch(1700000000123)));
            QCOMPARE(StampOfFile(Path("link")), StampOfFile(Path("a")));
            for (const char* pName : {"a", "link"}) {
                const stFileContent file = ReadRegularFile(Path(pName), 4);
                QCOMPARE(file.enResult, enFileRead);
                QCOMPARE(file.content, content.left(4));
                QCOMPARE(file.iSize, qint64(content.size()));
                QCOMPARE(file.iModified, qint64(1700000000123));
                QCOMPARE(file.iError, 0);
            }
        }
    }

    void onlyARegularFileIsRead()
    {
        QVERIFY(WriteFile(Path("plain"), "x"));
        QVERIFY(Plant(Path("folder"), u"."_s));
        QVERIFY(Plant(Path("loop"), Path("loop")));
        QVERIFY(Plant(Path("device"), u"/dev/zero"_s));
        QVERIFY(Plant(Path("fifo"), QString()));
        const QStringList listMissing = {u"missing"_s, u"missing/a"_s,        u"plain/a"_s,
                                         u"loop"_s,    u"plain"_s + QChar(0), QString(300, QLatin1Char('x'))};
        const QStringList listNotRegular = {u"folder"_s, u"fifo"_s, u"device"_s};
        bool bOpened = false;
        const OpenHook hook(QString(), [&bOpened] { return bOpened = true; });
        for (const QString& strName : listMissing + listNotRegular) {
            const stFileContent file = ReadRegularFile(m_pFolder->filePath(strName), 4);
            QCOMPARE(file.enResult, listMissing.contains(strName) ? enFileMissing : enFileNotRegular);
            QVERIFY(file.content.isEmpty() && file.iSize == 0 && file.iModified == 0);
            QCOMPARE(file.iError == 0, listNotRegular.contains(strName));
        }
        QVERIFY(!bOpened); // opening alone makes some devices act
    }

    void whatTookTheFilesPlaceIsNotRead()
    {
        for (const QString& strTarget : {QString(), u"/dev/zero"_s, u"/dev/ptmx"_s, u"/tmp"_s, u"/nowhere"_s}) {
            QFile::remove(Path("a"));
            QVERIFY(WriteFile(Path("a"), "x"));
            const OpenHook swap(Path("a"), [&] { return Plant(Path("a"), strTarget); });
            const stFileContent file = ReadRegularFile(Path("a"), 4);
            QCOMPARE(file.enResult, strTarget == u"/nowhere"_s ? enFileUnreadable : enFileNotRegular);
            QCOMPARE(file.content, QByteArray());
            QCOMPARE(file.iError, strTarget == u"/nowhere"_s ? ENOENT : 0);
        }
    }

    void slowFileIsReadToItsEnd()
    {
        QVERIFY(WriteFile(Path("a"), "abcd"));
        s_bSlow = true;
        const QByteArray part = ReadRegularFile(Path("a"), 3).content;
        const QByteArray all = ReadRegularFile(Path("a"), 10).content;
        s_bSlow = false;
        QCOMPARE(part, QByteArray("abc"));
        QCOMPARE(all, QByteArray("abcd"));
        QCOMPARE(s_iDescriptorFlags, FD_CLOEXEC);
    }

    void fileThatCannotBeReadTellsWhy()
    {
        QVERIFY(WriteFile(Path("a"), "abc"));
        {
            const OpenHook refuse(Path("a"), [] { return false; });
            const stFileContent file = ReadRegularFile(Path("a"), 4);
            QCOMPARE(file.enResult, enFileUnreadable);
            QCOMPARE(file.iError, EACCES);
        }
        const QByteArray folder = QFile::encodeName(m_pFolder->path());
        QCOMPARE(::chmod(folder.constData(), 0), 0);
        const bool bRoot = ::geteuid() == 0; // who can look everywhere
        QVERIFY(!bRoot || ::seteuid(65534) == 0);
        const stFileContent hidden = ReadRegularFile(Path("a"), 4);
        QVERIFY(!bRoot || ::seteuid(0) == 0);
        QCOMPARE(::chmod(folder.constData(), 0700), 0);
        QCOMPARE(hidden.enResult, enFileUnreadable);
        QCOMPARE(hidden.iError, EACCES);

        // Regular, and opens; nothing lies at this process's address 0.
        const stFileContent file = ReadRegularFile(u"/proc/self/mem"_s, 4);
        QCOMPARE(file.enResult, enFileUnreadable);
        QCOMPARE(file.iError, EIO);
        QCOMPARE(file.content, QByteArray());
    }

    void descriptorZeroIsAsGoodAsAny()
    {
        const NoStandardInput none;
        {
            QFile file;
            QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly));
            QCOMPARE(file.handle(), STDIN_FILENO);
        }
        QCOMPARE(ReadRegularFile(Path("a"), 4).enResult, enFileRead);
        QCOMPARE(::fcntl(STDIN_FILENO, F_GETFD), -1); // closed again
    }

private:
    QString Path(const char* pName) const { return m_pFolder->filePath(QString::fromUtf8(pName)); }

    std::unique_ptr<QTemporaryDir> m_pFolder;
    int m_iDescriptors = 0;
};

QTEST_MAIN(tst_UtilFile)

#include "tst_UtilFile.moc"
