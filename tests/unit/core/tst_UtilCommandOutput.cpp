// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilCommandOutput.h"

#include "StatusFolder.h"
#include "TestFiles.h"
#include "UtilShell.h"

#include <QtTest>

#include <memory>

#include <sys/stat.h>
#include <unistd.h>

class tst_UtilCommandOutput : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(m_pFolder->isValid());
        QVERIFY(WriteFile(Path("victim"), "precious"));
        ::alarm(20); // whatever blocks ends the program
    }

    void cleanup()
    {
        ::alarm(0);
        QCOMPARE(ReadFile(Path("victim")), QByteArray("precious"));
        QVERIFY(!QFile::exists(Path("missing")));
    }

    void takesWhatACommandWrites()
    {
        const int iBefore = DescriptorCount();
        {
            const UtilCommandOutput output(Path("a"));
            QVERIFY(output.IsOpen());
            QVERIFY(QFileInfo(Path("a")).isFile());
            QCOMPARE(output.Read(100), QByteArray());
            RunShellCommand("printf 'first\\nsecond' > " + output.ShellPath());
            QCOMPARE(output.Read(100), QByteArray("first\nsecond"));
            QCOMPARE(ReadFile(Path("a")), QByteArray("first\nsecond"));
        }
        QVERIFY(!QFile::exists(Path("a")));
        QCOMPARE(DescriptorCount(), iBefore);
    }

    void replacesWhatStandsThere_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* pKind : {"file", "link", "link to nothing", "link to a device", "hard link", "FIFO"}) {
            QTest::newRow(pKind) << QString::fromLatin1(pKind);
        }
    }

    void replacesWhatStandsThere()
    {
        QFETCH(const QString, kind);
        QVERIFY(Plant(kind, Path("a")));
        const UtilCommandOutput output(Path("a"));
        QVERIFY(output.IsOpen());
        RunShellCommand("echo ours > " + output.ShellPath());
        QCOMPARE(output.Read(100), QByteArray("ours\n"));
        QVERIFY(QFileInfo(Path("a")).isFile() && !QFileInfo(Path("a")).isSymLink());
    }

    void othersCanNeitherReadNorWrite()
    {
        const mode_t iOldMask = ::umask(0);
        const UtilCommandOutput output(Path("a"));
        ::umask(iOldMask);
        struct stat status = {};
        QCOMPARE(::stat(QFile::encodeName(Path("a")).constData(), &status), 0);
        QCOMPARE(int(status.st_mode & 0777), 0600);
    }

    void readsNoMoreThanAsked()
    {
        const UtilCommandOutput output(Path("a"));
        RunShellCommand("printf 12345 > " + output.ShellPath());
        QCOMPARE(output.Read(4), QByteArray("1234"));
        QCOMPARE(output.Read(5), QByteArray("12345"));
        QCOMPARE(output.Read(6), QByteArray("12345"));
    }

    void laterPlantIsNeitherWrittenNorRead_data() { replacesWhatStandsThere_data(); }

    void laterPlantIsNeitherWrittenNorRead()
    {
        QFETCH(const QString, kind);
        {
            const UtilCommandOutput output(Path("a"));
            QVERIFY(QFile::remove(Path("a")));
            QVERIFY(Plant(kind, Path("a")));
            RunShellCommand("echo ours > " + output.ShellPath());
            QCOMPARE(output.Read(100), QByteArray("ours\n"));
        }
        QVERIFY(IsPlanted(kind, Path("a"))); // what is not ours is left where it is
    }

    void linkThatCannotBeRemovedStays()
    {
        QVERIFY(QDir(m_pFolder->path()).mkdir(u"closed"_s));
        QVERIFY(QFile::link(Path("victim"), Path("closed/link")));
        QCOMPARE(::chmod(QFile::encodeName(m_pFolder->path()).constData(), 0755), 0);
        QCOMPARE(::chmod(QFile::encodeName(Path("victim")).constData(), 0666), 0);
        QCOMPARE(::chmod(QFile::encodeName(Path("closed")).constData(), 0555), 0);
        const bool bRoot = ::geteuid() == 0; // who can remove everything
        QVERIFY(!bRoot || ::seteuid(65534) == 0);
        const bool bOpen = UtilCommandOutput(Path("closed/link")).IsOpen();
        QVERIFY(!bRoot || ::seteuid(0) == 0);
        QCOMPARE(::chmod(QFile::encodeName(Path("closed")).constData(), 0755), 0);
        QVERIFY(!bOpen);
    }

    void isNotOpenWhenNoFileCanBeMade_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("folder") << u"folder"_s;
        QTest::newRow("missing folder") << u"missing/a"_s;
        QTest::newRow("file for a folder") << u"victim/a"_s;
    }

    void isNotOpenWhenNoFileCanBeMade()
    {
        QFETCH(const QString, name);
        QVERIFY(QDir(m_pFolder->path()).mkdir(u"folder"_s));
        QVERIFY(!UtilCommandOutput(m_pFolder->filePath(name)).IsOpen());
        QVERIFY(QFileInfo(Path("folder")).isDir());
    }

private:
    QString Path(const char* pName) const { return m_pFolder->filePath(QString::fromUtf8(pName)); }
    bool Plant(const QString& strKind, const QString& strPath) const
    {
        const QByteArray path = QFile::encodeName(strPath);
        if (strKind == QLatin1String("file")) {
            return WriteFile(strPath, "theirs");
        }
        if (strKind == QLatin1String("link")) {
            return QFile::link(Path("victim"), strPath);
        }
        if (strKind == QLatin1String("link to nothing")) {
            return QFile::link(Path("missing"), strPath);
        }
        if (strKind == QLatin1String("link to a device")) {
            return QFile::link(u"/dev/zero"_s, strPath);
        }
        if (strKind == QLatin1String("hard link")) {
            return ::link(QFile::encodeName(Path("victim")).constData(), path.constData()) == 0;
        }
        return ::mkfifo(path.constData(), 0666) == 0;
    }

    bool IsPlanted(const QString& strKind, const QString& strPath) const
    {
        struct stat status = {};
        if (::lstat(QFile::encodeName(strPath).constData(), &status) != 0) {
            return false;
        }
        if (strKind.startsWith(QLatin1String("link"))) {
            return S_ISLNK(status.st_mode);
        }
        return strKind == QLatin1String("FIFO") ? S_ISFIFO(status.st_mode) : S_ISREG(status.st_mode);
    }

    std::unique_ptr<QTemporaryDir> m_pFolder;
};

QTEST_MAIN(tst_UtilCommandOutput)

#include "tst_UtilCommandOutput.moc"
