// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "EndingSignal.h"
#include "HandMadeReply.h"
#include "OpenHook.h"
#include "Plant.h"
#include "PrinterText.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "UtilLog.h"

#include <QtTest>

#include <stdexcept>

#include <fcntl.h>
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
        m_worker.m_printerManager.printerInfo.strPrinterName = c_strName;
        m_worker.m_dtLastModified = QDateTime();
        m_worker.m_buffer.fill(0xEE);
        m_iDescriptors = DescriptorCount();
    }

    void cleanup() { QCOMPARE(DescriptorCount(), m_iDescriptors); }

    void newTimeOrForceReadsTheFile()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(Read(), 0);
        QCOMPARE(Text(m_state), c_strHandMadeState);
        QCOMPARE(m_worker.m_dtLastModified, ModificationTime());

        m_state.strFWVersion = u"kept"_s;
        QCOMPARE(Read(), 1);
        QCOMPARE(m_state.strFWVersion, u"kept"_s);
        for (const int iMSec : {1, -3600000}) {
            QVERIFY(SetModificationTime(StatusPath(), ModificationTime().addMSecs(iMSec)));
            QCOMPARE(Read(), 0);
        }
        m_state.strFWVersion = u"replaced"_s;
        m_worker.m_dtLastModified = QDateTime();
        QCOMPARE(ReadForced(), 0);
        QCOMPARE(Text(m_state), c_strHandMadeState);
        QCOMPARE(Read(), 1); // the forced read has noted the time as well
        QCOMPARE(ReadForced(), 0);
    }

    void deletedFileIsReadAgainInSpiteOfItsTimeStamp()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const QDateTime dtModified = QDateTime(QDate(2026, 3, 1), QTime(12, 0));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(Read(), 0);

        // Replaced while nobody looked: the time is all that counts.
        StatusFolder().WriteStatus(c_strName, ReplyInState(0x02));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(Read(), 1);

        StatusFolder().RemoveStatus(c_strName);
        QCOMPARE(Read(), -1);
        QVERIFY(m_worker.m_dtLastModified.isNull());
        QCOMPARE(ReadForced(), -1);
        QCOMPARE(m_state.enCurrentStatus, 8);

        StatusFolder().WriteStatus(c_strName, ReplyInState(0x02));
        QVERIFY(SetModificationTime(StatusPath(), dtModified));
        QCOMPARE(Read(), 0);
        QCOMPARE(m_state.enCurrentStatus, 5);
    }

    void rejectedFileIsUnchangedTheNextTime()
    {
        m_state.strFWVersion = u"kept"_s;
        for (const QByteArray& content : {QByteArray(), HandMadeReply().chopped(1), ReplyOfSize(2049)}) {
            WriteNewStatus(c_strName, content);
            QCOMPARE(Read(), -1);
            QCOMPARE(Read(), 1);
            QCOMPARE(ReadForced(), -1);
            QCOMPARE(m_state.strFWVersion, u"kept"_s);
        }
    }

    void largeFileIsReadUpTo2048Bytes()
    {
        for (const qint64 iSize : {Q_INT64_C(2048), Q_INT64_C(2049), Q_INT64_C(5) << 30}) {
            m_state.dwBlackInkRemainer = 0;
            WriteNewStatus(c_strName, ReplyOfSize(2048));
            QVERIFY(QFile::resize(StatusPath(), iSize));
            QCOMPARE(ReadForced(), 0);
            QCOMPARE(m_state.dwBlackInkRemainer, 42UL);
            QCOMPARE(m_worker.m_dtLastModified, ModificationTime());
        }
    }

    void bufferIsClearedBeforeEachRead()
    {
        StatusFolder().WriteStatus(c_strName, "short");
        QCOMPARE(Read(), -1);
        const QByteArray buffer(reinterpret_cast<char*>(m_worker.m_buffer.data()), 2048);
        QCOMPARE(buffer, "short" + QByteArray(2043, '\0'));
    }

    void onlyRegularFilesAreRead()
    {
        QCOMPARE(Read(), -1); // none at all
        for (const QString& strTarget : {QString(), u"."_s, u"/dev/zero"_s, u"/dev/ptmx"_s, u"/nowhere"_s}) {
            QVERIFY(Plant(StatusPath(), strTarget));
            m_worker.m_dtLastModified = QDateTime();
            bool bOpened = false;
            const OpenHook hook(StatusPath(), [&bOpened] { return bOpened = true; });
            QCOMPARE(Read(), -1);
            QCOMPARE(ReadForced(), -1);
            QVERIFY(!bOpened); // opening alone makes some devices act
            QVERIFY(QFile::remove(StatusPath()) || QDir().rmdir(StatusPath()));
        }
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void fifoThatTakesTheFilesPlaceDoesNotBlock()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const OpenHook swap(StatusPath(), [] { return Plant(StatusPath(), QString()); });
        QCOMPARE(Read(), -1);
    }

    void unreadableFileFails()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const OpenHook refuse(StatusPath(), [] { return false; });
        QCOMPARE(Read(), -1);
        QCOMPARE(m_worker.m_dtLastModified, ModificationTime());
        QCOMPARE(Read(), 1);
        QCOMPARE(ReadForced(), -1);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void nameIsTakenLiterally()
    {
        for (const QString& strName :
             u"RA7QX~two words~ ~it's \"so\"~$(reboot)~a;b&c|d~100%s%n%1~Off,ice~星原 一号~*?[a]~-a~line\nbreak~`\\~"_s
                 .split(QLatin1Char('~'))) {
            QVERIFY(WriteFile(u"/opt/vora/vora-printer-k507/cfg/"_s + strName + u".dat"_s, HandMadeReply()));
            QVERIFY2(m_worker.GetPrinterStatusFile(strName, false) == 0, qPrintable(strName));
            QCOMPARE(m_worker.GetPrinterStatusFile(strName + QLatin1Char('x'), false), -1);
            // Behind a zero nothing would count.
            QCOMPARE(m_worker.GetPrinterStatusFile(strName + u".dat"_s + QChar(0) + QLatin1Char('x'), false), -1);
        }
    }

    void usbReadsTheWorkersOwnPrinter()
    {
        const QString strOther = u"Other"_s;
        StatusFolder().WriteStatus(strOther, ReplyInState(0x02));
        QCOMPARE(m_worker.GetPrinterStatusUSB(strOther), -1);

        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        QCOMPARE(m_worker.GetPrinterStatusUSB(strOther), 0);
        QCOMPARE(Text(m_state), c_strHandMadeState);
        // Never forced, off-line or not; and both ways of reading share the time.
        m_state.enCurrentStatus = 2;
        QCOMPARE(m_worker.GetPrinterStatusUSB(QString()), 1);
        QCOMPARE(Read(), 1);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void exceptionCountsAsDecoded()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        const OpenHook fail(StatusPath(), []() -> bool { throw std::runtime_error("no file today"); });
        for (const QByteArray position : {"247 GetPrinterStatusFile", "203 GetPrinterStatusUSB"}) {
            m_worker.m_dtLastModified = QDateTime();
            SetLogEnable(true);
            const int iResult = position.endsWith("USB") ? m_worker.GetPrinterStatusUSB(QString()) : Read();
            SetLogEnable(false);
            QCOMPARE(iResult, 0);
            QCOMPARE(Text(m_state), c_strResetState);
            const QByteArray end = "/TrdGetPrinterStatus.cpp@" + position + ") throw error\n";
            QVERIFY2(LogText().endsWith(end), LogText().constData());
        }
    }

    void exceptionOfTheLogStaysInTheWorker()
    {
        StatusFolder().WriteStatus(c_strName, HandMadeReply());
        for (const bool bUsb : {false, true}) {
            const auto read = [&] {
                SetLogEnable(true);
                int iOpened = 0;
                const OpenHook fail(QString(), [&iOpened]() -> bool {
                    ++iOpened;
                    throw std::runtime_error("nothing opens today");
                });
                const int iResult = bUsb ? m_worker.GetPrinterStatusUSB(QString()) : Read();
                if (iResult != 0 || iOpened != 2) { // the status file and the log
                    std::raise(SIGUSR1);
                }
            };
            QCOMPARE(EndingSignal(read), 0);
        }
    }

    void fatalReplyNamesItsPrinterAndFile()
    {
        const QString strName = u"书\nb"_s;
        StatusFolder().WriteStatus(strName, ReplyWithSupplies({{0x7777, QByteArray(66, 'x')}}));
        const auto read = [&] {
            ::dup2(::open("/tmp/standard-error", O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600), STDERR_FILENO);
            m_worker.GetPrinterStatusFile(strName, false);
        };
        QCOMPARE(EndingSignal(read), SIGABRT);
        // An emulator of another machine says something, too.
        QCOMPARE(ReadFile(u"/tmp/standard-error"_s).split('\n').first(),
                 "VoraPrinterTool: ended by the status reply of printer \"书\\x0Ab\" "
                 "(/opt/vora/vora-printer-k507/cfg/书\\x0Ab.dat): a supplies record of more than 65 bytes");
    }

private:
    int Read() { return m_worker.GetPrinterStatusFile(c_strName, false); }
    int ReadForced() { return m_worker.GetPrinterStatusFile(c_strName, true); }

    TrdGetPrinterStatus m_worker;
    stPrinterState& m_state = m_worker.m_printerManager.printerState;
    int m_iDescriptors = 0;
};

QTEST_APPLESS_MAIN(tst_StatusTransports)

#include "tst_StatusTransports.moc"
