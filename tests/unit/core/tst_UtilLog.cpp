// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilLog.h"

#include "StatusFolder.h"

#include <QtTest>

#include <array>
#include <atomic>
#include <ctime>
#include <future>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <printf.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int c_iMaxLogSize = 1048576;

const QString c_strFolder = u"/opt/vora/vora-printer-k507/tool"_s;
const QString c_strPosition = u"../VoraPrinterTool/TrdGetPrinterStatus"_s;

/// A test that must not see the second change begins early in one.
bool IsEarlyInASecond()
{
    return QTime::currentTime().msec() < 300;
}

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
    QList<QByteArray> listLine = ReadFile(strPath).split('\n');
    if (listLine.last().isEmpty()) {
        listLine.removeLast();
    }
    for (const QByteArray& line : std::as_const(listLine)) {
        const int iHead = static_cast<int>(line.indexOf("@1 f) "));
        listMessage.append(iHead < 0 ? line : line.mid(iHead + 6));
    }
    return listMessage;
}

void Log(const char* pMessage)
{
    WriteStringLog("f", 1, "f", u"%s"_s, pMessage);
}

std::atomic<bool> s_bFormatting{false};
std::atomic<bool> s_bGoOn{false};

/// Holds whoever formats a text with the placeholder that is bound to it.
int HoldFormatting(FILE*, const printf_info*, const void* const*)
{
    s_bFormatting = true;
    while (!s_bGoOn) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return 0;
}

int TakesADouble(const printf_info*, std::size_t uRoom, int* pTypes, int*)
{
    if (uRoom > 0) {
        *pTypes = PA_DOUBLE;
    }
    return 1;
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

    void init()
    {
        ::alarm(30); // whatever blocks ends the program
    }

    void cleanup()
    {
        ::alarm(0);
        SetLogEnable(false);
        QFile::remove(u"/opt/vora"_s);
        QDir(u"/opt/vora"_s).removeRecursively();
    }

    // stays first
    void isOffAtFirst()
    {
        int iFormatted = -1;
        WriteStringLog("f", 1, "f", u"x%n"_s, &iFormatted);
        QCOMPARE(iFormatted, -1); // there is no file name yet that a line could be written under
        QVERIFY(!QFile::exists(u"/opt/vora"_s));
    }

    void offWritesNoFileAndNoFolder()
    {
        SetLogEnable(false);
        Log("x");
        QVERIFY(!QFile::exists(u"/opt/vora"_s));

        SetLogEnable(true);
        SetLogEnable(false);
        int iFormatted = -1;
        WriteStringLog("f", 1, "f", u"x%n"_s, &iFormatted);
        QCOMPARE(iFormatted, -1); // the arguments are not looked at either
        QCOMPARE(LogFiles(), QStringList());
    }

    void enablingCreatesTheFolderAlone()
    {
        SetLogEnable(true);
        QVERIFY(QFileInfo(c_strFolder).isDir());
        QCOMPARE(LogFiles(), QStringList());
        Log("x");
        QCOMPARE(LogFiles().size(), 1);
    }

    void fileNameHoldsTheTimeOfEnabling()
    {
        const QDateTime before = QDateTime::currentDateTime();
        SetLogEnable(true);
        const QDateTime after = QDateTime::currentDateTime();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() >
                    after.toSecsSinceEpoch()); // the first line comes a second later
        Log("x");

        const QRegularExpression pattern(u"^log_tool_(\\d{8}_\\d{6})_0\\.log$"_s);
        const QRegularExpressionMatch match = pattern.match(LogFiles().join(QLatin1Char(' ')));
        QVERIFY2(match.hasMatch(), qPrintable(LogFiles().join(QLatin1Char(' '))));
        const QDateTime stamp = QDateTime::fromString(match.captured(1), u"yyyyMMdd_hhmmss"_s);
        QVERIFY(stamp.isValid());
        QVERIFY(stamp.toSecsSinceEpoch() >= before.toSecsSinceEpoch());
        QVERIFY(stamp.toSecsSinceEpoch() <= after.toSecsSinceEpoch());
    }

    void lineFormat()
    {
        SetLogEnable(true);
        const QDateTime before = QDateTime::currentDateTime();
        WriteStringLog(qPrintable(c_strPosition), 398, "SlotTaskStart", u"printer[%d]=%s"_s, 0, "Office");
        const QDateTime after = QDateTime::currentDateTime();

        const QString strLine = QString::fromUtf8(ReadFile(OnlyLogFile()));
        const QRegularExpression pattern(
            u"\\A\\[(\\d{4}-\\d{2}-\\d{2} \\d{2}:\\d{2}:\\d{2}\\.\\d{3})\\] "
            "\\(\\.\\./VoraPrinterTool/TrdGetPrinterStatus@398 SlotTaskStart\\) printer\\[0\\]=Office\\n\\z"_s);
        const QRegularExpressionMatch match = pattern.match(strLine);
        QVERIFY2(match.hasMatch(), qPrintable(strLine));
        const QDateTime stamp = QDateTime::fromString(match.captured(1), u"yyyy-MM-dd hh:mm:ss.zzz"_s);
        QVERIFY(stamp >= before);
        QVERIFY(stamp <= after);
    }

    void lineFormatTakesThePositionAsItIs()
    {
        SetLogEnable(true);
        WriteStringLog("50%s.cpp", -1, "operator%d", u"x"_s);
        const QByteArray line = ReadFile(OnlyLogFile());
        QVERIFY2(line.endsWith("] (50%s.cpp@-1 operator%d) x\n"), line.constData());
    }

    void message_data()
    {
        QTest::addColumn<QString>("format");
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QByteArray>("message");
        const auto add = [](const char* pName, const char* pFormat, const char* pText, const char* pMessage) {
            QTest::newRow(pName) << QString::fromUtf8(pFormat) << QByteArray(pText) << QByteArray(pMessage);
        };
        add("empty", "", "", "");
        add("doubled per cent", "100%%", "", "100%");
        add("two doubled per cents", "%%s%%", "", "%s%");
        add("text", "[%s]", "Office", "[Office]");
        add("text with placeholders", "%s", "%s%n%d%%", "%s%n%d%%");
        add("Chinese format", "打印机=%s", "Office", "打印机=Office");
        add("Chinese text", "name=%s", "办公室🖨", "name=办公室🖨");
        add("blanks are kept", "  %s ", " x ", "   x  ");
        add("line feed", "name=%s", "a\n[2026-11-16 03:11:24.517] (f@1 f) b",
            "name=a\\x0A[2026-11-16 03:11:24.517] (f@1 f) b");
        add("line feed of the format", "a\nb", "", "a\\x0Ab");
        add("control characters", "%s", "\t\r\x1B[2J\x7F", "\\x09\\x0D\\x1B[2J\\x7F");
        add("line separator and direction", "%s", "a\u2028b\u202Ec\u0085", "a\\u2028b\\u202Ec\\x85");
        add("backslash", "%s", "a\\x0Ab", "a\\x0Ab");
    }

    void message()
    {
        QFETCH(const QString, format);
        QFETCH(const QByteArray, text);
        QFETCH(const QByteArray, message);
        SetLogEnable(true);
        WriteStringLog("f", 1, "f", format, text.constData());
        WriteStringLog("f", 1, "f", u"%d %lu %c %02x"_s, -7, 18446744073709551615ul, 'c', 10);
        QCOMPARE(Messages(OnlyLogFile()), (QList<QByteArray>{message, "-7 18446744073709551615 c 0a"}));
    }

    void messageIsCutAt1023Bytes_data()
    {
        QTest::addColumn<int>("length");
        QTest::addColumn<int>("written");
        QTest::newRow("1022") << 1022 << 1022;
        QTest::newRow("1023") << 1023 << 1023;
        QTest::newRow("1024") << 1024 << 1023;
        QTest::newRow("100000") << 100000 << 1023;
    }

    void messageIsCutAt1023Bytes()
    {
        QFETCH(const int, length);
        QFETCH(const int, written);
        SetLogEnable(true);
        Log(QByteArray(length, 'x').constData());
        WriteStringLog("f", 1, "f", QString(length, QLatin1Char('y')));
        Log("next");
        QCOMPARE(Messages(OnlyLogFile()),
                 (QList<QByteArray>{QByteArray(written, 'x'), QByteArray(written, 'y'), "next"}));
    }

    void messageIsCutBeforeItIsEscaped()
    {
        SetLogEnable(true);
        Log(QByteArray(1024, '\n').constData());
        QCOMPARE(Messages(OnlyLogFile()), QList<QByteArray>{QByteArray("\\x0A").repeated(1023)});
    }

    void messageCutInsideACharacterKeepsTheLineWhole()
    {
        SetLogEnable(true);
        const QByteArray text =
            'a' + QByteArray("墨").repeated(400); // 1023 bytes are 'a', 340 characters and two bytes
        Log(text.constData());
        Log("next");
        const QList<QByteArray> listMessage = Messages(OnlyLogFile());
        QCOMPARE(listMessage.size(), 2);
        QVERIFY(listMessage.at(0).startsWith(text.left(1 + 340 * 3)));
        QVERIFY(!listMessage.at(0).startsWith(text.left(1 + 341 * 3)));
        QCOMPARE(listMessage.at(1), QByteArray("next"));
    }

    void appendsLineByLine()
    {
        SetLogEnable(true);
        for (const char* pMessage : {"1", "2", "3"}) {
            Log(pMessage);
        }
        QCOMPARE(Messages(OnlyLogFile()), (QList<QByteArray>{"1", "2", "3"}));
    }

    void nothingIsKeptOpen()
    {
        const int iBefore = DescriptorCount();
        SetLogEnable(true);
        Log("1");
        Log("2");
        QCOMPARE(DescriptorCount(), iBefore);
    }

    void rotation_data()
    {
        QTest::addColumn<int>("size");
        QTest::addColumn<int>("index");
        QTest::newRow("one byte below 1 MiB") << 1048575 << 0;
        QTest::newRow("exactly 1 MiB") << 1048576 << 0;
        QTest::newRow("one byte beyond 1 MiB") << 1048577 << 1;
    }

    void rotation()
    {
        QFETCH(const int, size);
        QFETCH(const int, index);
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::resize(strPath, size));

        Log("second");
        QCOMPARE(QFileInfo(strPath).size() > size, index == 0);
        QCOMPARE(LogFiles().size(), 1 + index);
        QVERIFY(ReadFile(WithIndex(strPath, index)).endsWith(" (f@1 f) second\n"));

        Log("third");
        QCOMPARE(LogFiles().size(), 2);
        QVERIFY(ReadFile(WithIndex(strPath, 1)).endsWith(" (f@1 f) third\n"));
        QCOMPARE(Messages(WithIndex(strPath, 1)).size(), 1 + index);
    }

    void rotationTakesOneStepPerLine()
    {
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::resize(strPath, c_iMaxLogSize + 1));
        QVERIFY(QFile::copy(strPath, WithIndex(strPath, 1)));

        Log("second");
        QVERIFY(ReadFile(WithIndex(strPath, 1)).endsWith(" (f@1 f) second\n"));
        QCOMPARE(LogFiles().size(), 2);
        Log("third");
        QCOMPARE(Messages(WithIndex(strPath, 2)), QList<QByteArray>{"third"});
    }

    void enablingStartsAtIndex0()
    {
        SetLogEnable(true);
        Log("first");
        QVERIFY(QFile::resize(OnlyLogFile(), c_iMaxLogSize + 1));
        Log("second");
        QCOMPARE(LogFiles().size(), 2);
        QVERIFY(QDir(c_strFolder).removeRecursively());

        SetLogEnable(true);
        Log("third");
        QVERIFY2(OnlyLogFile().endsWith(u"_0.log"_s), qPrintable(OnlyLogFile()));
    }

    void twoEnablingsWithinASecondShareAFile()
    {
        QTRY_VERIFY(IsEarlyInASecond());
        SetLogEnable(true);
        Log("first");
        SetLogEnable(true);
        Log("second");
        SetLogEnable(false);
        SetLogEnable(true);
        Log("third");
        QCOMPARE(Messages(OnlyLogFile()), (QList<QByteArray>{"first", "second", "third"}));
    }

    void twoEnablingsInDifferentSecondsHaveAFileEach()
    {
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        const qint64 iSecond = QDateTime::currentSecsSinceEpoch();
        QTRY_VERIFY(QDateTime::currentSecsSinceEpoch() > iSecond);
        SetLogEnable(true);
        Log("second");
        QCOMPARE(LogFiles().size(), 2);
        QCOMPARE(Messages(strPath), QList<QByteArray>{"first"});
    }

    void unwritableFolderLosesTheLinesQuietly_data()
    {
        QTest::addColumn<QString>("obstacle");
        QTest::newRow("vora") << u"/opt/vora"_s;
        QTest::newRow("tool") << u"/opt/vora/vora-printer-k507/tool"_s;
    }

    void unwritableFolderLosesTheLinesQuietly()
    {
        QFETCH(const QString, obstacle);
        QVERIFY(WriteFile(obstacle, QByteArray())); // a plain file in the folder's place stops root too

        SetLogEnable(true);
        Log("lost");
        QVERIFY(QFileInfo(obstacle).isFile());
        QCOMPARE(QFileInfo(obstacle).size(), 0);

        QVERIFY(QFile::remove(obstacle));
        QVERIFY(QDir().mkpath(c_strFolder));
        Log("written"); // each line tries again
        QCOMPARE(Messages(OnlyLogFile()), QList<QByteArray>{"written"});
    }

    void folderUnderTheNameLosesTheLinesQuietly()
    {
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::remove(strPath));
        QVERIFY(QDir().mkdir(strPath));
        Log("lost");
        QVERIFY(QDir(strPath).isEmpty());
        QVERIFY(QDir().rmdir(strPath));
        Log("written");
        QCOMPARE(Messages(strPath), QList<QByteArray>{"written"});
    }

    void plantedLinkIsNotFollowed_data()
    {
        QTest::addColumn<bool>("dangling");
        QTest::newRow("to a file") << false;
        QTest::newRow("to nothing") << true;
    }

    void plantedLinkIsNotFollowed()
    {
        QFETCH(const bool, dangling);
        const QTemporaryDir folder;
        const QString strVictim = folder.filePath(u"victim"_s);
        if (!dangling) {
            QVERIFY(WriteFile(strVictim, "theirs"));
        }
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::remove(strPath));
        QVERIFY(QFile::link(strVictim, strPath));
        Log("second");
        QCOMPARE(QFile::exists(strVictim), !dangling);
        QCOMPARE(ReadFile(strVictim), dangling ? QByteArray() : QByteArray("theirs"));
        QVERIFY(QFileInfo(strPath).isSymLink());
    }

    void plantedHardLinkGetsNoLines()
    {
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::remove(strPath));
        const QString strVictim = u"/opt/vora/victim"_s;
        QVERIFY(WriteFile(strVictim, "theirs"));
        QCOMPARE(::link(QFile::encodeName(strVictim).constData(), QFile::encodeName(strPath).constData()), 0);
        Log("second");
        QCOMPARE(ReadFile(strVictim), "theirs");
        QVERIFY(QFile::remove(strVictim));
        Log("third"); // now it is the file's only name
        QVERIFY(ReadFile(strPath).endsWith(" (f@1 f) third\n"));
    }

    void plantedFifoNeitherBlocksNorGetsLines_data()
    {
        QTest::addColumn<bool>("reader");
        QTest::newRow("without reader") << false;
        QTest::newRow("with an idle reader") << true;
    }

    void plantedFifoNeitherBlocksNorGetsLines()
    {
        QFETCH(const bool, reader);
        SetLogEnable(true);
        Log("first");
        const QString strPath = OnlyLogFile();
        QVERIFY(QFile::remove(strPath));
        const QByteArray path = QFile::encodeName(strPath);
        QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        QFile end;
        if (reader) {
            const int iFd = ::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
            QVERIFY(end.open(iFd, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle));
        }
        const int iBefore = DescriptorCount();

        const QByteArray text(1000, 'x');
        for (int i = 0; i < 100; ++i) { // more than a FIFO holds
            Log(text.constData());
        }
        QCOMPARE(reader ? end.readAll() : QByteArray(), QByteArray());
        QCOMPARE(DescriptorCount(), iBefore);
        QCOMPARE(OnlyLogFile(), strPath);
    }

    void threadsNeitherLoseNorMixLines()
    {
        constexpr int c_iThreads = 8;
        constexpr int c_iLines = 500;
        SetLogEnable(true);
        const QByteArray filler(300, '.'); // more than 1 MiB in all, so that the file is changed under way
        std::vector<std::thread> listThread;
        listThread.reserve(c_iThreads);
        for (int iThread = 0; iThread < c_iThreads; ++iThread) {
            listThread.emplace_back([iThread, &filler] {
                for (int iLine = 0; iLine < c_iLines; ++iLine) {
                    WriteStringLog("worker", iLine, "Run", u"thread %d line %d %s end"_s, iThread, iLine,
                                   filler.constData());
                }
            });
        }
        for (std::thread& thread : listThread) {
            thread.join();
        }

        QCOMPARE(LogFiles().size(), 2);
        const QRegularExpression pattern(
            u"^\\[[-0-9]{10} [:0-9]{8}\\.[0-9]{3}\\] \\(worker@(\\d+) Run\\) thread (\\d) line (\\d+) "
            "\\.{300} end$"_s);
        std::array<int, c_iThreads> listNext = {};
        for (const QString& strName : LogFiles()) {
            for (const QByteArray& line : Messages(c_strFolder + QLatin1Char('/') + strName)) {
                const QRegularExpressionMatch match = pattern.match(QString::fromUtf8(line));
                QVERIFY2(match.hasMatch(), line.constData());
                const auto iThread = match.captured(2).toUInt();
                QVERIFY(iThread < listNext.size());
                QCOMPARE(match.captured(1), match.captured(3));
                QCOMPARE(match.captured(3).toInt(), listNext[iThread]++);
            }
        }
        for (const int iNext : listNext) {
            QCOMPARE(iNext, c_iLines);
        }
    }

    void secondWriterWaitsForTheFirst()
    {
        QCOMPARE(::register_printf_specifier('A', HoldFormatting, TakesADouble),
                 0); // a placeholder that sanitizers know
        SetLogEnable(true);
        const auto first = std::async(std::launch::async, [] { WriteStringLog("f", 1, "f", u"first%A"_s, 0.0); });
        QTRY_VERIFY(s_bFormatting);
        const auto second = std::async(std::launch::async, [] { Log("second"); });
        const bool bWaited = second.wait_for(std::chrono::milliseconds(100)) == std::future_status::timeout;
        s_bGoOn = true;
        first.wait();
        second.wait();
        QVERIFY(bWaited);
        QCOMPARE(Messages(OnlyLogFile()), (QList<QByteArray>{"first", "second"}));
    }
};

QTEST_MAIN(tst_UtilLog)

#include "tst_UtilLog.moc"
