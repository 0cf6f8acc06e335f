// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndingSignal.h"
#include "HandMadeReply.h"
#include "OpenHook.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QtTest>

#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString c_strName = u"Queue"_s;

QString StatusPath()
{
    return StatusFolder().StatusPath(c_strName);
}

QDateTime ModificationTime()
{
    return QFileInfo(StatusPath()).lastModified();
}

} // namespace

class tst_StatusTransports : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        QVERIFY(QDir(StatusFolder().Path()).removeRecursively());
        QVERIFY(QDir().mkpath(StatusFolder().Path()));
        m_worker.m_printerManager = stPrinterManager();
        m_worker.m_dtLastModified = QDateTime();
        m_worker.m_buffer.fill(0xEE);
    }

    void unchangedFileIsNotReadAgain()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);
        QCOMPARE(m_state.strFWVersion, u"2.1.7"_s);
        QCOMPARE(m_worker.m_dtLastModified, ModificationTime());

        m_state.strFWVersion = u"kept"_s;
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);
        QCOMPARE(m_state.strFWVersion, u"kept"_s);
    }

    void forcedReadDecodesAgain()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), 0);
        m_state.strFWVersion = u"replaced"_s;
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), 0);
        QCOMPARE(m_state.strFWVersion, u"2.1.7"_s);
        // The forced read has noted the time as well.
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);
    }

    void anyOtherTimeStampIsRead_data()
    {
        QTest::addColumn<int>("iMSec");
        QTest::newRow("later") << 1;
        QTest::newRow("earlier") << -3600000;
    }

    void anyOtherTimeStampIsRead()
    {
        QFETCH(int, iMSec);
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);
        QVERIFY(SetModificationTime(StatusPath(), ModificationTime().addMSecs(iMSec)));
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);
    }

    void deletedFileIsReadAgainInSpiteOfItsTimeStamp()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const QDateTime dtModified = QDateTime(QDate(2026, 3, 1), QTime(12, 0));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);

        // Replaced while nobody looked: the time is all that counts.
        StatusFolder().WriteStatus(c_strName, ReplyInState(0x02));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);

        StatusFolder().RemoveStatus(c_strName);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        QVERIFY(m_worker.m_dtLastModified.isNull());
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), -1);
        QCOMPARE(m_state.enCurrentStatus, 8);

        StatusFolder().WriteStatus(c_strName, ReplyInState(0x02));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);
        QCOMPARE(m_state.enCurrentStatus, 5);
    }

    void rejectedFileIsUnchangedTheNextTime_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("7 bytes") << HandMadeReply().left(7);
        QTest::newRow("truncated") << HandMadeReply().chopped(1);
        QTest::newRow("text") << QByteArray("No status available\n");
        QTest::newRow("longer than what is read") << ReplyOfSize(2049);
    }

    void rejectedFileIsUnchangedTheNextTime()
    {
        QFETCH(QByteArray, content);
        m_state.strFWVersion = u"kept"_s;
        StatusFolder().WriteStatus(c_strName, content);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), -1);
        QCOMPARE(m_state.strFWVersion, u"kept"_s);
    }

    void largeFileIsReadUpTo2048Bytes_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<qint64>("iFileSize");
        QTest::newRow("2048 bytes") << ReplyOfSize(2048) << qint64(2048);
        QTest::newRow("2049 bytes") << ReplyOfSize(2048) << qint64(2049);
        QTest::newRow("5 GiB") << ReplyOfSize(100) << qint64(5) * 1024 * 1024 * 1024;
    }

    void largeFileIsReadUpTo2048Bytes()
    {
        QFETCH(QByteArray, reply);
        QFETCH(qint64, iFileSize);
        StatusFolder().WriteStatus(c_strName, reply);
        QVERIFY(QFile::resize(StatusPath(), iFileSize));
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 0);
        QCOMPARE(m_state.dwBlackInkRemainer, 42UL);
        QCOMPARE(m_worker.m_dtLastModified, ModificationTime());
    }

    void bufferIsClearedBeforeEachRead()
    {
        StatusFolder().WriteStatus(c_strName, "short");
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        const QByteArray buffer(reinterpret_cast<char*>(m_worker.m_buffer.data()), 2048);
        QCOMPARE(buffer, "short" + QByteArray(2043, '\0'));
    }

    void onlyRegularFilesAreRead_data()
    {
        QTest::addColumn<QString>("strKind");
        QTest::addColumn<QString>("strTarget");
        QTest::newRow("missing") << QString() << QString();
        QTest::newRow("FIFO") << u"fifo"_s << QString();
        QTest::newRow("directory") << u"directory"_s << QString();
        QTest::newRow("link to zeros without end") << u"link"_s << u"/dev/zero"_s;
        QTest::newRow("link to a terminal") << u"link"_s << u"/dev/ptmx"_s;
        QTest::newRow("link to nothing") << u"link"_s << u"/nowhere"_s;
        QTest::newRow("link to itself") << u"link"_s << StatusPath();
    }

    void onlyRegularFilesAreRead()
    {
        QFETCH(QString, strKind);
        QFETCH(QString, strTarget);
        if (strKind == QLatin1String("fifo")) {
            QCOMPARE(::mkfifo(QFile::encodeName(StatusPath()).constData(), 0666), 0);
        } else if (strKind == QLatin1String("directory")) {
            QVERIFY(QDir().mkpath(StatusPath()));
        } else if (strKind == QLatin1String("link")) {
            QVERIFY(QFile::link(strTarget, StatusPath()));
        }
        bool bOpened = false;
        const OpenHook hook(StatusPath(), [&bOpened] { return bOpened = true; });
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), -1);
        QVERIFY(!bOpened); // opening alone makes some devices act
        QVERIFY(timer.elapsed() < 1000);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void fifoThatTakesTheFilesPlaceDoesNotBlock()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const OpenHook replace(StatusPath(), [] {
            return QFile::remove(StatusPath()) && ::mkfifo(QFile::encodeName(StatusPath()).constData(), 0666) == 0;
        });
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        struct stat status
        {
        };
        QCOMPARE(::stat(QFile::encodeName(StatusPath()).constData(), &status), 0);
        QVERIFY(S_ISFIFO(status.st_mode));
    }

    void unreadableFileFails()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const OpenHook refuse(StatusPath(), [] { return false; });
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        QCOMPARE(m_worker.m_dtLastModified, ModificationTime());
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), -1);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void readErrorFails()
    {
        QVERIFY(QFile::link(u"/proc/self/mem"_s, StatusPath())); // a regular file whose first byte is unmapped
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), -1);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void nameIsTakenLiterally_data()
    {
        QTest::addColumn<QString>("strName");
        const QStringList listName = {u"RA7QX"_s,   u"two words"_s,   u" "_s,       u"it's \"so\""_s, u"$(reboot)"_s,
                                      u"a;b&c|d"_s, u"100%s%n%1"_s,   u"Off,ice"_s, u"星原 一号"_s,   u"*?[a]"_s,
                                      u"-a"_s,      u"line\nbreak"_s, u"~`\\"_s,    QString()};
        for (const QString& strName : listName) {
            QTest::newRow(qPrintable(strName)) << strName;
        }
    }

    void nameIsTakenLiterally()
    {
        QFETCH(QString, strName);
        QVERIFY(WriteFile(u"/opt/vora/vora-printer-k507/cfg/"_s + strName + u".dat"_s, HandMadeReply()));
        QCOMPARE(m_worker.GetPrinterStatusFile(strName, false), 0);
        QCOMPARE(m_state.strFWVersion, u"2.1.7"_s);
        QCOMPARE(m_worker.GetPrinterStatusFile(strName + QLatin1Char('x'), false), -1);
    }

    void zeroInANameLeadsToNoOtherFile()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const QString strName = c_strName + u".dat"_s + QChar(0) + QLatin1Char('x');
        QCOMPARE(m_worker.GetPrinterStatusFile(strName, false), -1);
    }

    void usbReadsTheWorkersOwnPrinter()
    {
        const QString strOther = u"Other"_s;
        m_worker.m_printerManager.printerInfo.strPrinterName = c_strName;
        StatusFolder().WriteStatus(strOther, ReplyInState(0x02));
        QCOMPARE(m_worker.GetPrinterStatusUSB(strOther), -1);

        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(m_worker.GetPrinterStatusUSB(strOther), 0);
        QCOMPARE(m_state.enCurrentStatus, 8);
        // Never forced, off-line or not; and both ways of reading share the time.
        m_state.enCurrentStatus = 2;
        QCOMPARE(m_worker.GetPrinterStatusUSB(QString()), 1);
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, false), 1);
        QCOMPARE(m_state.enCurrentStatus, 2);

        StatusFolder().RemoveStatus(c_strName);
        QCOMPARE(m_worker.GetPrinterStatusUSB(strOther), -1);
        QVERIFY(m_worker.m_dtLastModified.isNull());
    }

    void exceptionCountsAsDecoded_data()
    {
        QTest::addColumn<bool>("bUsb");
        QTest::addColumn<QByteArray>("logEnd");
        QTest::newRow("file") << false
                              << QByteArray("/TrdGetPrinterStatus.cpp@247 GetPrinterStatusFile) throw error\n");
        QTest::newRow("USB") << true << QByteArray("/TrdGetPrinterStatus.cpp@203 GetPrinterStatusUSB) throw error\n");
    }

    void exceptionCountsAsDecoded()
    {
        QFETCH(bool, bUsb);
        QFETCH(QByteArray, logEnd);
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        m_worker.m_printerManager.printerInfo.strPrinterName = c_strName;
        m_state.strFWVersion = u"kept"_s;
        const OpenHook fail(StatusPath(), []() -> bool { throw std::runtime_error("no file today"); });
        SetLogEnable(true);
        const int iResult =
            bUsb ? m_worker.GetPrinterStatusUSB(c_strName) : m_worker.GetPrinterStatusFile(c_strName, false);
        SetLogEnable(false);
        QCOMPARE(iResult, 0);
        QCOMPARE(m_state.strFWVersion, u"kept"_s);
        QVERIFY2(LogText().endsWith(logEnd), LogText().constData());
    }

    void exceptionOfTheLogStaysInTheWorker_data()
    {
        QTest::addColumn<bool>("bUsb");
        QTest::newRow("file") << false;
        QTest::newRow("USB") << true;
    }

    void exceptionOfTheLogStaysInTheWorker()
    {
        QFETCH(bool, bUsb);
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        m_worker.m_printerManager.printerInfo.strPrinterName = c_strName;
        QCOMPARE(EndingSignal([&] {
                     SetLogEnable(true);
                     int iOpened = 0;
                     const OpenHook fail(QString(), [&iOpened]() -> bool {
                         ++iOpened;
                         throw std::runtime_error("nothing opens today");
                     });
                     const int iResult = bUsb ? m_worker.GetPrinterStatusUSB(c_strName)
                                              : m_worker.GetPrinterStatusFile(c_strName, false);
                     if (iResult != 0 || iOpened != 2) { // the status file and the log
                         std::raise(SIGUSR1);
                     }
                 }),
                 0);
    }

    void fatalReplyNamesItsPrinterAndFile_data()
    {
        QTest::addColumn<QString>("strName");
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("Office") << u"Office"_s
                                << QByteArray("VoraPrinterTool: ended by the status reply of printer \"Office\" "
                                              "(/opt/vora/vora-printer-k507/cfg/Office.dat): a supplies record of more "
                                              "than 65 bytes\n");
        QTest::newRow("line feed") << u"a\nb"_s
                                   << QByteArray("VoraPrinterTool: ended by the status reply of printer \"a\\x0Ab\" "
                                                 "(/opt/vora/vora-printer-k507/cfg/a\\x0Ab.dat): a supplies record of "
                                                 "more than 65 bytes\n");
    }

    void fatalReplyNamesItsPrinterAndFile()
    {
        QFETCH(QString, strName);
        stStatusReply reply;
        reply.listSupplies = {{0x7777, QByteArray(66, 'x')}};
        StatusFolder().WriteStatus(strName, EncodeStatusReply(reply));
        const QByteArray output = "/tmp/standard-error";
        QCOMPARE(EndingSignal([&] {
                     const int iFd = ::open(output.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
                     ::dup2(iFd, STDERR_FILENO);
                     m_worker.GetPrinterStatusFile(strName, false);
                 }),
                 SIGABRT);
        QTEST(ReadFile(QString::fromLatin1(output)), "line");
    }

    void fileIsClosed()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const int iBefore = DescriptorCount();
        QCOMPARE(m_worker.GetPrinterStatusFile(c_strName, true), 0);
        QCOMPARE(DescriptorCount(), iBefore);
    }

private:
    TrdGetPrinterStatus m_worker;
    stPrinterState& m_state = m_worker.m_printerManager.printerState;
};

QTEST_APPLESS_MAIN(tst_StatusTransports)

#include "tst_StatusTransports.moc"
