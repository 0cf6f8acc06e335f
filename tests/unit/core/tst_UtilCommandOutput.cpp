// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilCommandOutput.h"

#include "NoStandardInput.h"
#include "Plant.h"
#include "StatusFolder.h"
#include "UtilShell.h"

#include <QtTest>

#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

struct stat LinkStat(const QString& strPath)
{
    struct stat status = {};
    ::lstat(QFile::encodeName(strPath).constData(), &status);
    return status;
}

} // namespace

class tst_UtilCommandOutput : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pFolder = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_pFolder->path()));
        QVERIFY(WriteFile(Path("victim"), "precious"));
        QVERIFY(QDir(m_pFolder->path()).mkdir(u"folder"_s));
        m_iDescriptors = DescriptorCount();
    }

    void cleanup()
    {
        QCOMPARE(DescriptorCount(), m_iDescriptors);
        QCOMPARE(ReadFile(Path("victim")), QByteArray("precious"));
        QVERIFY(QFileInfo(Path("folder")).isDir());
        QVERIFY(!QFile::exists(Path("missing")));
    }

    void takesWhatACommandWrites()
    {
        {
            const UtilCommandOutput output(Path("a"));
            QVERIFY(output.IsOpen());
            QCOMPARE(::fcntl(output.ShellPath().split('/').last().toInt(), F_GETFD), FD_CLOEXEC);
            QVERIFY(QFileInfo(Path("a")).isFile());
            QCOMPARE(output.Read(100), QByteArray());
            RunShellCommand("printf '1\\n345' > " + output.ShellPath());
            QCOMPARE(output.Read(100), QByteArray("1\n345"));
            QCOMPARE(output.Read(4), QByteArray("1\n34"));
            QCOMPARE(output.Read(5), QByteArray("1\n345"));
            QCOMPARE(ReadFile(Path("a")), QByteArray("1\n345"));
        }
        QVERIFY(!QFile::exists(Path("a")));
    }

    void replacesWhatStandsThere_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* pKind : {"=victim", "victim", "missing", "/dev/zero", ""}) {
            QTest::newRow(pKind) << QString::fromLatin1(pKind);
        }
    }

    void replacesWhatStandsThere()
    {
        QFETCH(const QString, kind);
        QVERIFY(Plant(Path("a"), kind));
        const UtilCommandOutput output(Path("a"));
        QVERIFY(output.IsOpen());
        RunShellCommand("echo ours > " + output.ShellPath());
        QCOMPARE(output.Read(100), QByteArray("ours\n"));
        QVERIFY(S_ISREG(LinkStat(Path("a")).st_mode));
    }

    void laterPlantIsNeitherWrittenNorRead_data() { replacesWhatStandsThere_data(); }
    void laterPlantIsNeitherWrittenNorRead()
    {
        QFETCH(const QString, kind);
        ino_t iPlanted = 0;
        {
            const UtilCommandOutput output(Path("a"));
            QVERIFY(Plant(Path("a"), kind));
            iPlanted = LinkStat(Path("a")).st_ino;
            RunShellCommand("echo ours > " + output.ShellPath());
            QCOMPARE(output.Read(100), QByteArray("ours\n"));
        }
        QCOMPARE(LinkStat(Path("a")).st_ino, iPlanted); // what is not ours is left where it is
    }

    void othersCanNeitherReadNorWrite()
    {
        const mode_t iOldMask = ::umask(0);
        const UtilCommandOutput output(Path("a"));
        ::umask(iOldMask);
        QCOMPARE(LinkStat(Path("a")).st_mode, mode_t(S_IFREG | 0600));
    }

    void linkThatCannotBeRemovedStays()
    {
        const QByteArray folder = QFile::encodeName(Path("folder"));
        QVERIFY(Plant(Path("folder/link"), Path("victim")));
        QCOMPARE(::chmod(QFile::encodeName(m_pFolder->path()).constData(), 0755), 0);
        QCOMPARE(::chmod(QFile::encodeName(Path("victim")).constData(), 0666), 0);
        QCOMPARE(::chmod(folder.constData(), 0555), 0);
        const bool bRoot = ::geteuid() == 0; // who can remove everything
        QVERIFY(!bRoot || ::seteuid(65534) == 0);
        const bool bOpen = UtilCommandOutput(Path("folder/link")).IsOpen();
        QVERIFY(!bRoot || ::seteuid(0) == 0);
        QCOMPARE(::chmod(folder.constData(), 0755), 0);
        QVERIFY(!bOpen);
    }

    void descriptorZeroIsAsGoodAsAny()
    {
        const NoStandardInput none;
        QVERIFY(UtilCommandOutput(Path("a")).IsOpen());
    }

    void isNotOpenWhenNoFileCanBeMade()
    {
        for (const char* pName : {"folder", "missing/a", "victim/a"}) {
            QVERIFY2(!UtilCommandOutput(Path(pName)).IsOpen(), pName);
        }
    }

private:
    QString Path(const char* pName) const { return m_pFolder->filePath(QString::fromUtf8(pName)); }

    std::unique_ptr<QTemporaryDir> m_pFolder;
    int m_iDescriptors = 0;
};

QTEST_MAIN(tst_UtilCommandOutput)

#include "tst_UtilCommandOutput.moc"
