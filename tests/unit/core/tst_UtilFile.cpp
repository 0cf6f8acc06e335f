// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilFile.h"

#include "OpenHook.h"
#include "ReadFault.h"
#include "StatusFolder.h"
#include "TestFiles.h"

#include <QtTest>

#include <cerrno>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

class tst_UtilFile : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_pFolder->isValid());
        ::alarm(20); // whatever blocks ends the program
    }

    void cleanup()
    {
        ::alarm(0);
        m_pFolder.reset();
    }

    void readsAFile()
    {
        QVERIFY(WriteFile(Path("a"), "one\r\ntwo\n"));
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::ReadOnly));
        QCOMPARE(file.openMode(), QIODevice::OpenMode(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("one\r\ntwo\n"));
    }

    void readingCreatesNothing()
    {
        QFile file;
        QVERIFY(!OpenWithoutBlocking(file, Path("a"), QIODevice::ReadOnly));
        QVERIFY(!QFile::exists(Path("a")));
    }

    void writingCreatesTheFile()
    {
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly));
        QCOMPARE(file.write("new"), 3);
        file.close();
        QCOMPARE(ReadFile(Path("a")), QByteArray("new"));
    }

    void writingAppends()
    {
        QVERIFY(WriteFile(Path("a"), "old\n"));
        for (const char* pLine : {"1\n", "2\n"}) {
            QFile file;
            QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::Append | QIODevice::Text, O_APPEND));
            QCOMPARE(file.write(pLine), 2);
        }
        QCOMPARE(ReadFile(Path("a")), QByteArray("old\n1\n2\n"));
    }

    void createdFileHasTheUsualMode()
    {
        const mode_t oldMask = ::umask(0027);
        QFile file;
        const bool bOpen = OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly);
        ::umask(oldMask);
        QVERIFY(bOpen);
        struct stat status = {};
        QCOMPARE(::fstat(file.handle(), &status), 0);
        QCOMPARE(status.st_mode, mode_t(S_IFREG | 0640));
    }

    void namesAreLocal8Bit()
    {
        QVERIFY(WriteFile(Path("办公室.dat"), "x"));
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("办公室.dat"), QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("x"));
    }

    void readingAFifoDoesNotBlock()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(Path("fifo")).constData(), 0600), 0);
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("fifo"), QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray());
    }

    void writingToAFifoWithoutReaderFails()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(Path("fifo")).constData(), 0600), 0);
        QFile file;
        QVERIFY(!OpenWithoutBlocking(file, Path("fifo"), QIODevice::WriteOnly));
        QVERIFY(!file.isOpen());
    }

    void appendingToAFifoFailsAndLeavesNoDescriptor()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(Path("fifo")).constData(), 0600), 0);
        QFile reader;
        QVERIFY(OpenWithoutBlocking(reader, Path("fifo"), QIODevice::ReadOnly));
        const QDir descriptors(u"/proc/self/fd"_s);
        const QStringList listBefore = descriptors.entryList(QDir::AllEntries | QDir::System);
        QFile file;
        QVERIFY(!OpenWithoutBlocking(file, Path("fifo"), QIODevice::Append, O_APPEND));
        QVERIFY(!file.isOpen());
        QCOMPARE(QDir(descriptors.path()).entryList(QDir::AllEntries | QDir::System), listBefore);
    }

    void linkIsFollowed()
    {
        QVERIFY(WriteFile(Path("a"), "target"));
        QVERIFY(QFile::link(Path("a"), Path("link")));
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("link"), QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("target"));
    }

    void linkIsRefusedOnDemand_data()
    {
        QTest::addColumn<bool>("dangling");
        QTest::newRow("to a file") << false;
        QTest::newRow("to nothing") << true;
    }

    void linkIsRefusedOnDemand()
    {
        QFETCH(const bool, dangling);
        if (!dangling) {
            QVERIFY(WriteFile(Path("a"), "target"));
        }
        QVERIFY(QFile::link(Path("a"), Path("link")));
        for (const QIODevice::OpenMode mode : {QIODevice::OpenMode(QIODevice::ReadOnly),
                                               QIODevice::OpenMode(QIODevice::WriteOnly | QIODevice::Append)}) {
            QFile file;
            QVERIFY(!OpenWithoutBlocking(file, Path("link"), mode, O_NOFOLLOW));
        }
        QCOMPARE(QFile::exists(Path("a")), !dangling);
        QCOMPARE(ReadFile(Path("a")), dangling ? QByteArray() : QByteArray("target"));
    }

    void failureLeavesTheFileClosed_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("write");
        QTest::newRow("missing file") << u"missing"_s << false;
        QTest::newRow("missing folder, reading") << u"missing/a"_s << false;
        QTest::newRow("missing folder, writing") << u"missing/a"_s << true;
        QTest::newRow("file for a folder") << u"plain/a"_s << true;
        QTest::newRow("folder, writing") << u"."_s << true;
        QTest::newRow("name too long") << QString(300, QLatin1Char('x')) << true;
    }

    void failureLeavesTheFileClosed()
    {
        QFETCH(const QString, name);
        QFETCH(const bool, write);
        QVERIFY(WriteFile(Path("plain"), "x"));
        QFile file;
        QVERIFY(
            !OpenWithoutBlocking(file, m_pFolder->filePath(name), write ? QIODevice::WriteOnly : QIODevice::ReadOnly));
        QVERIFY(!file.isOpen());
        QCOMPARE(QDir(m_pFolder->path()).entryList(QDir::Files), QStringList{u"plain"_s});
    }

    void descriptorIsNotInherited()
    {
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly));
        QVERIFY((::fcntl(file.handle(), F_GETFD) & FD_CLOEXEC) != 0);
    }

    void descriptorIsClosedWithTheFile()
    {
        QFile file;
        QVERIFY(OpenWithoutBlocking(file, Path("a"), QIODevice::WriteOnly));
        const int iFd = file.handle();
        file.close();
        QCOMPARE(::fcntl(iFd, F_GETFD), -1);
    }

    void readsTheFirstBytesOfARegularFile_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("read");
        QTest::newRow("empty") << QByteArray() << QByteArray();
        QTest::newRow("shorter") << QByteArray("abc") << QByteArray("abc");
        QTest::newRow("as long") << QByteArray("abcd") << QByteArray("abcd");
        QTest::newRow("longer") << QByteArray("abcde") << QByteArray("abcd");
        QTest::newRow("zeros") << QByteArray(2, '\0') << QByteArray(2, '\0');
    }

    void readsTheFirstBytesOfARegularFile()
    {
        QFETCH(const QByteArray, content);
        QVERIFY(WriteFile(Path("a"), content));
        QVERIFY(QFile::link(Path("a"), Path("link")));
        for (const char* pName : {"a", "link"}) {
            const stFileContent file = ReadRegularFile(Path(pName), 4);
            QCOMPARE(file.enResult, enFileRead);
            QTEST(file.content, "read");
            QCOMPARE(file.iSize, qint64(content.size()));
        }
    }

    void onlyARegularFileIsRead_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("result");
        const auto add = [](const char* pName, enFileResult enResult) {
            QTest::newRow(pName) << QString::fromLatin1(pName) << int(enResult);
        };
        add("missing", enFileMissing);
        add("missing/a", enFileMissing);
        add("plain/a", enFileMissing);
        add("loop", enFileMissing);
        add("folder", enFileNotRegular);
        add("fifo", enFileNotRegular);
        add("device", enFileNotRegular);
        QTest::newRow("name with a zero") << u"plain"_s + QChar(0) << int(enFileMissing);
    }

    void onlyARegularFileIsRead()
    {
        QFETCH(const QString, name);
        QVERIFY(WriteFile(Path("plain"), "x"));
        QVERIFY(QDir(m_pFolder->path()).mkdir(u"folder"_s));
        QVERIFY(QFile::link(Path("loop"), Path("loop")));
        QVERIFY(QFile::link(u"/dev/zero"_s, Path("device")));
        QCOMPARE(::mkfifo(QFile::encodeName(Path("fifo")).constData(), 0600), 0);
        const stFileContent file = ReadRegularFile(m_pFolder->filePath(name), 4);
        QTEST(int(file.enResult), "result");
        QCOMPARE(file.content, QByteArray());
    }

    void whatTookTheFilesPlaceIsNotRead_data()
    {
        QTest::addColumn<QString>("other");
        QTest::addColumn<int>("result");
        QTest::newRow("FIFO") << QString() << int(enFileNotRegular);
        QTest::newRow("device") << u"/dev/zero"_s << int(enFileNotRegular);
        QTest::newRow("folder") << u"/tmp"_s << int(enFileNotRegular);
        QTest::newRow("nothing") << u"/nowhere"_s << int(enFileUnreadable);
    }

    void whatTookTheFilesPlaceIsNotRead()
    {
        QFETCH(const QString, other);
        QVERIFY(WriteFile(Path("a"), "x"));
        const OpenHook swap(Path("a"), [&] {
            return QFile::remove(Path("a")) &&
                   (other.isEmpty() ? ::mkfifo(QFile::encodeName(Path("a")).constData(), 0600) == 0
                                    : QFile::link(other, Path("a")));
        });
        const stFileContent file = ReadRegularFile(Path("a"), 4);
        QTEST(int(file.enResult), "result");
        QCOMPARE(file.content, QByteArray());
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
        const ReadFault fault(EIO);
        const stFileContent file = ReadRegularFile(Path("a"), 4);
        QCOMPARE(file.enResult, enFileUnreadable);
        QCOMPARE(file.iError, EIO);
        QCOMPARE(file.content, QByteArray());
    }

    void readingLeavesNoDescriptor()
    {
        QVERIFY(WriteFile(Path("a"), "abc"));
        const int iBefore = DescriptorCount();
        ReadRegularFile(Path("a"), 4);
        {
            const ReadFault fault(EIO);
            ReadRegularFile(Path("a"), 4);
        }
        QCOMPARE(DescriptorCount(), iBefore);
    }

private:
    QString Path(const char* pName) const { return m_pFolder->filePath(QString::fromUtf8(pName)); }
    std::unique_ptr<QTemporaryDir> m_pFolder;
};

QTEST_MAIN(tst_UtilFile)

#include "tst_UtilFile.moc"
