// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLog.h"

#include "OpenHook.h"
#include "Plant.h"
#include "Rows.h"
#include "StatusFolder.h"
#include "UtilFile.h"

#include <atomic>
#include <ctime>
#include <future>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

const QString c_strFolder = u"/opt/vora/vora-printer-k507/tool"_s;
const QString c_strVictim = u"/opt/vora/victim"_s;

QStringList LogFiles()
{
    return QDir(c_strFolder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QString OnlyLogFile()
{
    const QStringList listFile = LogFiles();
    return listFile.size() == 1 ? c_strFolder + QLatin1Char('/') + listFile.first()
                                : u"not one file but: "_s + listFile.join(QLatin1Char(' '));
}

QString WithIndex(QString strPath, int iIndex)
{
    return strPath.replace(u"_0.log"_s, QString::asprintf("_%d.log", iIndex));
}

/// The messages of a log file, without time and position; a line of another shape is kept whole.
QList<QByteArray> Messages(const QString& strPath)
{
    QList<QByteArray> listMessage;
    for (const QByteArray& line : ReadFile(strPath).split('\n')) {
        const int iHead = static_cast<int>(line.indexOf("@1 f) "));
        listMessage.append(iHead < 0 ? line : line.mid(iHead + 6));
    }
    if (listMessage.last().isEmpty()) { // behind the last line's end
        listMessage.removeLast();
    }
    return listMessage;
}

void Log(const char* pMessage)
{
    WriteStringLog("f", 1, "f", u"%s"_s, pMessage);
}

/// Switches the log on and writes the first line; the file's path.
QString StartLog()
{
    SetLogEnable(true);
    Log("first");
    return OnlyLogFile();
}

} // namespace

class tst_UtilLog : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        QVERIFY2(QDir(u"/opt"_s).isEmpty(), "wants an /opt of its own, see tests/Sandbox.cmake");
        qputenv("TZ", "UTC-8"); // so that local time is another than UTC
        ::tzset();
    }

    void cleanup()
    {
        SetLogEnable(false);
        QFile::remove(u"/opt/vora"_s);
        QDir(u"/opt/vora"_s).removeRecursively();
    }

    // stays first
    void offWritesNoFileAndNoFolder()
    {
        int iFormatted = -1;
        WriteStringLog("f", 1, "f", u"x%n"_s, &iFormatted); // off at first
        SetLogEnable(false);
        WriteStringLog("f", 1, "f", u"x%n"_s, &iFormatted);
        QVERIFY(!QFile::exists(u"/opt/vora"_s));
        SetLogEnable(true);
        SetLogEnable(false);
        WriteStringLog("f", 1, "f", u"x%n"_s, &iFormatted);
        QCOMPARE(LogFiles(), QStringList());
        QCOMPARE(iFormatted, -1); // the arguments are not looked at either
    }

    void nameHoldsTheTimeOfEnablingAndALineItsOwn()
    {
        const QDateTime before = QDateTime::currentDateTime();
        SetLogEnable(true);
        const QDateTime after = QDateTime::currentDateTime();
        QVERIFY(QFileInfo(c_strFolder).isDir());
        QCOMPARE(LogFiles(), QStringList());
        // The first line comes a second later.
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > after.toSecsSinceEpoch());
        const QDateTime beforeLine = QDateTime::currentDateTime();
        WriteStringLog("../50%s.cpp", 398, "operator%d", u"printer[%d]=%s"_s, 0, "Office");

        const QString strName = LogFiles().join(QLatin1Char(' '));
        const QDateTime enabled = QDateTime::fromString(strName, u"'log_tool_'yyyyMMdd_hhmmss'_0.log'"_s);
        QVERIFY2(enabled.isValid(), qPrintable(strName));
        QVERIFY(enabled.toSecsSinceEpoch() >= before.toSecsSinceEpoch());
        QVERIFY(enabled.toSecsSinceEpoch() <= after.toSecsSinceEpoch());
        const QString strLine = QString::fromUtf8(ReadFile(OnlyLogFile()));
        QVERIFY2(strLine.endsWith(u"] (../50%s.cpp@398 operator%d) printer[0]=Office\n"_s), qPrintable(strLine));
        const QDateTime written =
            QDateTime::fromString(strLine.section(QLatin1Char(' '), 0, 1), u"'['yyyy-MM-dd hh:mm:ss.zzz']'"_s);
        QVERIFY(written >= beforeLine && written <= QDateTime::currentDateTime());
    }

    void message_data()
    {
        AddRows(u"log-messages.json"_s, {"format", "text", "message"});
        for (const int iLength : {1022, 1023, 1024, 100000}) {
            const QString strText(iLength, QLatin1Char('x'));
            QTest::addRow("%d bytes", iLength) << u"%s"_s << strText << strText.left(1023);
            QTest::addRow("%d bytes of format", iLength) << strText << QString() << strText.left(1023);
        }
        QTest::newRow("cut before it is escaped")
            << u"%s"_s << QString(1024, QLatin1Char('\n')) << u"\\x0A"_s.repeated(1023);
    }

    void message()
    {
        QFETCH(const QString, format);
        QFETCH(const QString, text);
        QFETCH(const QString, message);
        const int iBefore = DescriptorCount();
        SetLogEnable(true);
        WriteStringLog("f", 1, "f", format, text.toUtf8().constData());
        WriteStringLog("f", 1, "f", u"%d %lu %c %02x"_s, -7, 18446744073709551615ul, 'c', 10);
        QCOMPARE(Messages(OnlyLogFile()), (QList<QByteArray>{message.toUtf8(), "-7 18446744073709551615 c 0a"}));
        QCOMPARE(DescriptorCount(), iBefore);
    }

    void messageCutInsideACharacterKeepsTheLineWhole()
    {
        SetLogEnable(true);
        const QByteArray text = 'a' + QByteArray("墨").repeated(400); // 340 characters and two bytes are kept
        Log(text.constData());
        Log("next");
        const QList<QByteArray> listMessage = Messages(OnlyLogFile());
        QCOMPARE(listMessage.size(), 2);
        QVERIFY(listMessage.at(0).startsWith(text.left(1 + 340 * 3)));
        QVERIFY(!listMessage.at(0).startsWith(text.left(1 + 341 * 3)));
        QCOMPARE(listMessage.at(1), QByteArray("next"));
    }

    void rotation()
    {
        for (const int iSize : {1048575, 1048576, 1048577}) {
            const int iIndex = iSize == 1048577 ? 1 : 0;
            const QString strPath = StartLog();
            QVERIFY(QFile::resize(strPath, iSize));
            Log("second");
            QVERIFY(ReadFile(WithIndex(strPath, iIndex)).endsWith(" (f@1 f) second\n"));
            Log("third");
            QCOMPARE(LogFiles().size(), 2);
            QCOMPARE(Messages(WithIndex(strPath, 1)), (QList<QByteArray>{"second", "third"}.mid(1 - iIndex)));
            QVERIFY(QDir(c_strFolder).removeRecursively());
        }
    }

    void rotationTakesOneStepPerLineAndEnablingStartsAnew()
    {
        const QString strPath = StartLog();
        QVERIFY(QFile::resize(strPath, 1048577));
        QVERIFY(QFile::copy(strPath, WithIndex(strPath, 1)));
        Log("second");
        QVERIFY(ReadFile(WithIndex(strPath, 1)).endsWith(" (f@1 f) second\n"));
        QCOMPARE(LogFiles().size(), 2);
        Log("third");
        QCOMPARE(Messages(WithIndex(strPath, 2)), QList<QByteArray>{"third"});

        const qint64 iSecond = QDateTime::currentSecsSinceEpoch();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > iSecond);
        SetLogEnable(true);
        Log("fourth");
        QCOMPARE(LogFiles().size(), 4);
        QVERIFY2(LogFiles().last().endsWith(u"_0.log"_s), qPrintable(LogFiles().last()));
        QCOMPARE(Messages(c_strFolder + QLatin1Char('/') + LogFiles().last()), QList<QByteArray>{"fourth"});
    }

    void twoEnablingsWithinASecondShareAFile()
    {
        QTRY_VERIFY(QTime::currentTime().msec() < 300); // so that the second does not change meanwhile
        const QString strPath = StartLog();
        SetLogEnable(true);
        Log("second");
        SetLogEnable(false);
        SetLogEnable(true);
        Log("third");
        QCOMPARE(OnlyLogFile(), strPath);
        QCOMPARE(Messages(strPath), (QList<QByteArray>{"first", "second", "third"}));
    }

    void unwritableFolderLosesTheLinesQuietly()
    {
        for (const QString& strObstacle : {u"/opt/vora"_s, c_strFolder}) {
            QVERIFY(WriteFile(strObstacle, QByteArray())); // a plain file in the folder's place stops root too
            SetLogEnable(true);
            Log("lost");
            QCOMPARE(ReadFile(strObstacle), QByteArray(""));
            QVERIFY(QFile::remove(strObstacle));
            QVERIFY(QDir().mkpath(c_strFolder));
            Log("written"); // each line tries again
            QCOMPARE(Messages(OnlyLogFile()), QList<QByteArray>{"written"});
            QVERIFY(QDir(u"/opt/vora"_s).removeRecursively());
        }
    }

    void whatTookTheFilesPlaceGetsNoLines()
    {
        // Links to a file, to nothing and to a device, a hard link, a folder and a FIFO.
        for (const QString& strTarget :
             {c_strVictim, u"/opt/vora/missing"_s, u"/dev/zero"_s, u"="_s + c_strVictim, u"."_s, QString()}) {
            const QString strPath = StartLog();
            QVERIFY(WriteFile(c_strVictim, "theirs"));
            QVERIFY(Plant(strPath, strTarget));
            const int iBefore = DescriptorCount();
            Log("lost");
            QFile end; // of a FIFO, which also has a reader from now on
            QVERIFY(!strTarget.isEmpty() || OpenWithoutBlocking(end, strPath, QIODevice::ReadOnly));
            for (int i = 0; i < 100; ++i) { // more than a FIFO holds
                Log(QByteArray(1000, 'x').constData());
            }
            QVERIFY(!end.isOpen() || end.readAll().isEmpty());
            end.close();
            QCOMPARE(DescriptorCount(), iBefore);
            QCOMPARE(ReadFile(c_strVictim), "theirs");
            QVERIFY(!QFile::exists(u"/opt/vora/missing"_s));
            QCOMPARE(OnlyLogFile(), strPath);

            // Then a hard link is its file's only name.
            const QString strObstacle = strTarget.startsWith(QLatin1Char('=')) ? c_strVictim : strPath;
            QVERIFY(QFile::remove(strObstacle) || QDir().rmdir(strObstacle));
            Log("written");
            QVERIFY(ReadFile(strPath).endsWith(" (f@1 f) written\n"));
            QVERIFY(QDir(u"/opt/vora"_s).removeRecursively());
        }
    }

    void threadsNeitherLoseNorMixLines()
    {
        SetLogEnable(true);
        QList<QByteArray> listExpected;
        std::vector<std::thread> listThread;
        for (char chThread = 'a'; chThread <= 'h'; ++chThread) {
            QList<QByteArray> listLine;
            for (int iLine = 0; iLine < 500; ++iLine) { // more than 1 MiB in all, so that the file is changed under way
                listLine.append(chThread + QByteArray::number(iLine) + QByteArray(300, '.'));
            }
            listExpected += listLine;
            listThread.emplace_back([listLine] {
                for (const QByteArray& line : listLine) {
                    Log(line.constData());
                }
            });
        }
        for (std::thread& thread : listThread) {
            thread.join();
        }
        QCOMPARE(LogFiles().size(), 2);
        QList<QByteArray> listFound;
        for (const QString& strName : LogFiles()) {
            listFound += Messages(c_strFolder + QLatin1Char('/') + strName);
        }
        // Each thread's lines are in their order.
        std::stable_sort(listFound.begin(), listFound.end(),
                         [](const QByteArray& left, const QByteArray& right) { return left.left(1) < right.left(1); });
        QCOMPARE(listFound, listExpected);
    }

    void secondWriterWaitsForTheFirst()
    {
        const QString strPath = StartLog();
        std::atomic<int> iWriters{0};
        std::atomic<bool> bGoOn{false};
        const OpenHook hold(c_strFolder + u"//"_s + LogFiles().first(), [&] { // as the log has it
            ++iWriters;
            return QTest::qWaitFor([&bGoOn] { return bGoOn.load(); }, 10000);
        });
        const auto first = std::async(std::launch::async, [] { Log("second"); });
        QTRY_COMPARE(iWriters.load(), 1);
        const auto second = std::async(std::launch::async, [] { Log("third"); });
        const bool bWaited = !QTest::qWaitFor([&iWriters] { return iWriters == 2; }, 100);
        bGoOn = true;
        first.wait();
        second.wait();
        QVERIFY(bWaited);
        QCOMPARE(Messages(strPath), (QList<QByteArray>{"first", "second", "third"}));
    }
};

QTEST_MAIN(tst_UtilLog)

#include "tst_UtilLog.moc"
