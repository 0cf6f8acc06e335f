// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "UdpResponder.h"
#include "VoraStatusWatcher.h"

#include <csignal>

namespace {

/// Makes the file so many seconds old.
bool SetAge(const QString& strPath, qint64 iSeconds)
{
    return SetModificationTime(strPath, QDateTime::currentDateTime().addSecs(-iSeconds));
}

/// The program on a terminal, the last line ends of which are not the program's.
QString OnTerminal(const QString& strArguments, const QString& strNoColor = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(u"NO_COLOR"_s);
    if (!strNoColor.isNull()) {
        environment.insert(u"NO_COLOR"_s, strNoColor);
    }
    const QStringList listArgument{u"-qec"_s, c_strProgram + QLatin1Char(' ') + strArguments, u"/dev/null"_s};
    return QString::fromUtf8(RunCommand(u"script"_s, listArgument, environment).output).remove(QLatin1Char('\r'));
}

QByteArray WithInk(quint32 dwBlack, quint32 dwCyan)
{
    return WithSupplies(
        {MakeSuppliesRecord(enSuppliesBlackInk, dwBlack), MakeSuppliesRecord(enSuppliesBlueInk, dwCyan)});
}

} // namespace

class tst_vora_status_overview : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void printers()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList(
            {Printer(u"Office"_s, u"RA7QX"_s, 1, u"usb"_s), Printer(u"Hall"_s, u"RA7QX"_s, 0, u"10.0.0.9"_s),
             Printer(u"Store"_s, u"RB9X"_s, 2, QString()), Printer(u"Cut"_s, u"RB9X"_s, 2, QString()),
             Printer(u"Low"_s, u"RB9X"_s, 2, QString())});
        folder.WriteStatus(u"Office"_s, HandMadeReply());
        folder.WriteStatus(u"Hall"_s, ReplyInState(0x11));
        folder.WriteStatus(u"Cut"_s, EncodeStatusReply(Ready()).left(12));
        folder.WriteStatus(u"Low"_s, WithErrors({}, {0x6160, 0x6163}));
        for (const char* pName : {"Office", "Hall", "Cut", "Low"}) {
            QVERIFY(SetAge(folder.StatusPath(QString::fromLatin1(pName)), 200));
        }
        const stRun run = Run({});
        QCOMPARE(
            QString::fromUtf8(run.output),
            uR"(QUEUE   CONNECTION  STATE                                      CYAN  MAGENTA  YELLOW  BLACK    AGE  MORE
    Office  USB         A paper jam occurs at the paper feed tray   51%      52%     53%    50%  3 min     2
    Hall    10.0.0.9    Scanning                                      -        -       -      -  3 min     0
    Store   network     there is no such file                         -        -       -      -      -     -
    Cut     network     reply rejected                                -        -       -      -  3 min     -
    Low     network     Ready                                         -        -       -      -  3 min     2
    )"_s);
        QCOMPARE(
            run.messages,
            QByteArray("vora-status: Store: there is no such file\n"
                       "vora-status: Cut: reply rejected: it ends at byte 12, but the field at byte 12 (length of the "
                       "vendor name) has 2 bytes\n"));
        QCOMPARE(run.iExit, 2);
    }

    void printersInChinese()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList(
            {Printer(u"前台"_s, u"RA7Q"_s, 2, QString()), Printer(u"Cut"_s, u"RA7Q"_s, 1, u"10.0.0.9"_s)});
        folder.WriteStatus(u"前台"_s, HandMadeReply());
        folder.WriteStatus(u"Cut"_s, "short");
        QVERIFY(SetAge(folder.StatusPath(u"前台"_s), 200));
        QVERIFY(SetAge(folder.StatusPath(u"Cut"_s), 200));
        const stRun run = Run({u"--lang=zh"_s});
        QCOMPARE(QString::fromUtf8(run.output),
                 uR"(队列  连接方式  状态                        青  品红   黄   黑   时间  其他
    前台  网络      进纸托盘处卡纸,请取出纸张  51%   52%  53%  50%  3分钟     2
    Cut   USB       应答被拒绝                   -     -    -    -  3分钟     -
    )"_s);
        QCOMPARE(run.iExit, 2);
    }

    void files()
    {
        Write(ReplyInState(0x10), u"one.dat"_s);
        QVERIFY(SetAge(u"one.dat"_s, 200));
        const stRun run = Run({u"one.dat"_s, u"/dev/null"_s});
        QCOMPARE(run.output,
                 QByteArray("QUEUE      CONNECTION  STATE               CYAN  MAGENTA  YELLOW  BLACK    AGE  MORE\n"
                            "one.dat    -           Printing               -        -       -      -  3 min     0\n"
                            "/dev/null  -           not a regular file     -        -       -      -      -     -\n"));
        QCOMPARE(run.messages, QByteArray("vora-status: /dev/null: not a regular file\n"));
        QCOMPARE(run.iExit, 2);
        Write(WithErrors({0x6100}), u"two.dat"_s);
        QCOMPARE(Run({u"one.dat"_s, u"two.dat"_s}).iExit, 1);
        QCOMPARE(Run({u"one.dat"_s}).iExit, 0);
    }

    void withoutPrinters()
    {
        StatusFolder().WritePrinterList({});
        const stRun run = Run({});
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.messages,
                 QByteArray("vora-status: /opt/vora/vora-printer-k507/cfg/printerlist.ini lists no printers\n"));
        QCOMPARE(run.iExit, 0);
    }

    void wideAndCombiningCharacters()
    {
        // Two columns each; the mark stands above the letter before it; four columns together.
        for (const char* pName : {"前台", "abcd", "ｗx1", "e\u0301lan", "\U0001F5BC\U0001F600x"}) {
            Write(ReplyInState(0x00), QString::fromUtf8(pName));
        }
        const stRun run = Run({u"前台"_s, u"abcd"_s, u"ｗx1"_s, u"e\u0301lan"_s, u"\U0001F5BC\U0001F600x"_s});
        for (const char* pLine : {"QUEUE  CONN", "前台   -    ", "abcd   -    ", "ｗx1   -    ", "e\u0301lan   -    ",
                                  "\U0001F5BC\U0001F600x   -    "}) {
            QVERIFY2(('\n' + run.output).contains('\n' + QByteArray(pLine)), run.output);
        }
    }

    void inEveryLocale()
    {
        Write(ReplyInState(0x00), u"前台"_s);
        Write(ReplyInState(0x00), u"abcdef"_s);
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"LC_ALL"_s, u"C"_s);
        const stRun run = RunCommand(c_strProgram, {u"abcdef"_s, u"前台"_s}, environment);
        QVERIFY2(run.output.contains("\n前台    -"), run.output);
    }

    void controlCharacters()
    {
        const QString strName = u"a\033[2J\u202Eb\\"_s;
        const QString strPort = u"\0337\n"_s;
        StatusFolder().WritePrinterList({Printer(strName, u"RA7Q"_s, 2, strPort)});
        const stRun run = Run({});
        QVERIFY2(run.output.contains("\na\\x1B[2J\\u202Eb\\\\  \\x1B7\\x0A   there is no such file  "), run.output);
        QCOMPARE(run.output.count('\n'), 2);
    }

    void errorTexts_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QByteArray>("english");
        QTest::addColumn<QByteArray>("chinese");

        QTest::newRow("both") << 0x6110 << QByteArray("A paper jam occurs at the paper feed tray")
                              << QByteArray("进纸托盘处卡纸,请取出纸张");
        QTest::newRow("English alone") << 0x6163 << QByteArray("Cyan Ink Level is Low.")
                                       << QByteArray("0x6163 [Cyan Ink Level is Low.]");
        QTest::newRow("none") << 0x6800 << QByteArray("0x6800") << QByteArray("0x6800");
        QTest::newRow("unknown") << 0x0001 << QByteArray("0x0001 Unknown error status")
                                 << QByteArray("0x0001 错误状态未知");
    }

    void errorTexts()
    {
        QFETCH(const int, code);
        QFETCH(const QByteArray, english);
        QFETCH(const QByteArray, chinese);

        Write(WithErrors({static_cast<quint16>(code), 0x6100}));
        const QByteArray inEnglish = Run({u"reply.dat"_s}).output;
        QVERIFY2(inEnglish.contains("\nreply.dat  -           " + english + "  "), inEnglish);
        const QByteArray inChinese = Run({u"--lang=zh"_s, u"reply.dat"_s}).output;
        QVERIFY2(inChinese.contains("\nreply.dat  -         " + chinese + "  "), inChinese);
    }

    void ages_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::addColumn<QByteArray>("english");
        QTest::addColumn<QByteArray>("chinese");

        QTest::newRow("in the future") << qint64{-500} << QByteArray(" 0 s") << QByteArray(" 0秒");
        QTest::newRow("a minute") << qint64{60} << QByteArray(" 1 min") << QByteArray(" 1分钟");
        QTest::newRow("nearly an hour") << qint64{3540} << QByteArray(" 59 min") << QByteArray(" 59分钟");
        QTest::newRow("an hour") << qint64{3600} << QByteArray(" 1 h") << QByteArray(" 1小时");
        QTest::newRow("nearly a day") << qint64{86399 - 600} << QByteArray(" 23 h") << QByteArray(" 23小时");
        QTest::newRow("a year") << qint64{365 * 86400} << QByteArray(" 365 d") << QByteArray(" 365天");
    }

    void ages()
    {
        QFETCH(const qint64, seconds);
        QFETCH(const QByteArray, english);
        QFETCH(const QByteArray, chinese);

        QVERIFY(SetAge(Write(ReplyInState(0x00)), seconds));
        const QByteArray inEnglish = Run({u"reply.dat"_s}).output;
        QVERIFY2(inEnglish.contains(english + "     0\n"), inEnglish);
        const QByteArray inChinese = Run({u"--lang=zh"_s, u"reply.dat"_s}).output;
        QVERIFY2(inChinese.contains(chinese + "     0\n"), inChinese);
    }

    void inkOutOfRange()
    {
        Write(WithInk(300, 0));
        const QByteArray output = Run({u"reply.dat"_s}).output;
        QVERIFY2(output.contains("  Ready    0%        -       -   300%  "), output);
    }

    void largeFile()
    {
        const QByteArray good = EncodeStatusReply(Ready());
        Write(good + QByteArray(2049 - good.size(), 'x'));
        const stRun run = Run({u"reply.dat"_s});
        QCOMPARE(run.messages, QByteArray("vora-status: reply.dat: has 2049 bytes, only the first 2048 are read\n"));
        QCOMPARE(run.output.count('\n'), 2);
    }

    void udp()
    {
        const UdpResponder printer({HandMadeReply()});
        const QStringList listUdp{u"--udp"_s, u"127.0.0.1"_s};
        const stRun run = Run(listUdp);
        QCOMPARE(run.output,
                 QByteArray(
                     "QUEUE      CONNECTION  STATE                                      CYAN  MAGENTA  YELLOW  BLACK  "
                     "AGE  MORE\n"
                     "127.0.0.1  network     A paper jam occurs at the paper feed tray   51%      52%     53%    50%  "
                     "0 s     2\n"));
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 1);
        const stRun silent = Run(listUdp);
        QVERIFY2(silent.output.contains("\n127.0.0.1  network     no reply of at least 8 bytes within one second  "),
                 silent.output);
        QCOMPARE(silent.messages,
                 QByteArray("vora-status: 127.0.0.1: no reply of at least 8 bytes within one second\n"));
        QCOMPARE(silent.iExit, 2);
    }

    void colors()
    {
        Write(WithErrors({0x6100}), u"error"_s);
        Write(WithErrors({}, {0x6160}), u"warning"_s);
        Write(WithInk(15, 16), u"ink"_s);
        const QString strText = OnTerminal(u"error warning ink gone 2>&1"_s);
        QVERIFY2(strText.startsWith(QLatin1String("\033[1mQUEUE\033[0m    \033[1mCONNECTION\033[0m  ")),
                 qPrintable(strText));
        QVERIFY2(strText.contains(QLatin1String("\nerror    -           \033[31mNo Paper At The Input Tray\033[0m  ")),
                 qPrintable(strText));
        QVERIFY2(strText.contains(QLatin1String("\nwarning  -           \033[33mReady\033[0m        ")),
                 qPrintable(strText));
        QVERIFY2(strText.contains(QLatin1String("\ngone     -           \033[31mthere is no such file\033[0m   ")),
                 qPrintable(strText));
        QVERIFY2(strText.contains(QLatin1String("   16%        -       -    \033[33m15%\033[0m  ")),
                 qPrintable(strText));
    }

    void colorsOnlyWhereWanted_data()
    {
        QTest::addColumn<QString>("noColor");
        QTest::addColumn<bool>("colored");

        QTest::newRow("not set") << QString() << true;
        QTest::newRow("empty") << "" << true;
        QTest::newRow("set") << "1" << false;
    }

    void colorsOnlyWhereWanted()
    {
        QFETCH(const QString, noColor);
        QFETCH(const bool, colored);

        Write(WithErrors({0x6100}));
        const QString strText = OnTerminal(u"reply.dat"_s, noColor);
        QCOMPARE(strText.contains(QLatin1Char('\033')), colored);
        QVERIFY(strText.contains(QLatin1String("No Paper")));
        QVERIFY(!Run({u"reply.dat"_s}).output.contains('\033'));
        QVERIFY(!OnTerminal(u"--fields reply.dat"_s, noColor).contains(QLatin1Char('\033')));
    }

    void isNeverCut()
    {
        const QString strName(200, QLatin1Char('n'));
        Write(WithErrors({0x615A}), strName);
        const QByteArray line = strName.toLatin1() +
                                "  -           Black Ink Has Run Out, Printing Will Continue to Be "
                                "Composed of Color Ink     -";
        QVERIFY(Run({strName}).output.contains(line));
        QVERIFY(OnTerminal(strName, u"1"_s).contains(QString::fromLatin1(line)));
    }

    void watch()
    {
        QVERIFY(SetAge(Write(ReplyInState(0x00)), 86400));
        Watcher watcher({u"-qec"_s, c_strProgram + u" --watch reply.dat"_s, u"/dev/null"_s}, u"script"_s);
        const QByteArray wiped = "\033[H\033[2J\033[1mQUEUE";
        QTRY_COMPARE_WITH_TIMEOUT(watcher.Output().count(wiped), 1, c_iPatience);
        Write(WithErrors({0x6100}));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("No Paper At The Input Tray"), c_iPatience);
        QCOMPARE(watcher.Output().count("QUEUE"), watcher.Output().count(wiped));
    }

    void watchesAges()
    {
        Write(ReplyInState(0x00));
        Watcher watcher({u"--watch"_s, u"reply.dat"_s});
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains(" 0\n\nQUEUE"), c_iPatience);
        QVERIFY(SetAge(u"reply.dat"_s, 200));
        QTRY_VERIFY_WITH_TIMEOUT(watcher.Output().contains("  3 min "), c_iPatience);
        QCOMPARE(watcher.EndBy(SIGINT), 0);
    }

    void version()
    {
        const stRun run = Run({u"--version"_s});
        QCOMPARE(run.output, QByteArray("vora-status 1.0.0\n"));
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 0);
    }
};

QTEST_GUILESS_MAIN(tst_vora_status_overview)

#include "tst_vora_status_overview.moc"
