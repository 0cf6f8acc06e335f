// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "GoldenTable.h"
#include "HandMadeReply.h"
#include "ReplyFields.h"
#include "ReplyLabels.h"
#include "UtilStatusIdParser.h"
#include "VoraStatusTest.h"

#include <QRegularExpression>

#include <numeric>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const QString c_strDocument = QStringLiteral(VORA_GOLDEN_TABLE);
const QString c_strManPage = QStringLiteral(VORA_MAN_PAGE);

/// The program with words before it, such as "setpriv".
stRun RunBehind(const QStringList& listBefore, const QStringList& listArgument)
{
    return RunCommand(listBefore.first(), listBefore.mid(1) + QStringList(c_strProgram) + listArgument);
}

/// Columns that a terminal needs: two for an ideograph or a full-width character.
int Columns(const QString& strLine)
{
    return static_cast<int>(std::accumulate(strLine.begin(), strLine.end(), 0, [](int iSum, QChar character) {
        return iSum + (character.unicode() >= 0x2E80 || character.unicode() == 0x201C || character.unicode() == 0x201D
                           ? 2
                           : 1);
    }));
}

} // namespace

class tst_vora_status : public VoraStatusTest
{
    Q_OBJECT

private slots:
    void textInEnglish()
    {
        Write(HandMadeReply());
        const stRun run = RunFields({u"--lang"_s, u"en"_s, u"reply.dat"_s});
        QCOMPARE(run.output, QByteArray("reply.dat: 145 bytes\n"
                                        "  not examined: \"564f5241000102\"\n"
                                        "  header byte: 0xA1\n"
                                        "  header field 1: 0xB1B2\n"
                                        "  header field 2: 0xC1C2\n"
                                        "  vendor name: \"Vora\"\n"
                                        "  product name: \"RA7QX\"\n"
                                        "  printer serial number: \"SN1234\"\n"
                                        "  field after the serial number: 0xD1D2\n"
                                        "  state: 0x10 Printing\n"
                                        "  firmware version: \"2.1.7\"\n"
                                        "  fifth string: \"xyz\"\n"
                                        "  error: 0x6110 A paper jam occurs at the paper feed tray\n"
                                        "  error: 0x6156 Color Ink is Empty,please operate in printer.\n"
                                        "  warning: 0x6160 Black Ink Level is Low.\n"
                                        "  byte before the supplies: 0xE1\n"
                                        "  field 1 before the supplies: 0xF1F2\n"
                                        "  field 2 before the supplies: 0xF3F4\n"
                                        "  supply serial number (0x0000): \"INK42\"\n"
                                        "  supply type (0x0001): 66051\n"
                                        "  toner or ink left over all (0x1000): 300\n"
                                        "  waste toner or ink (0x1001): 7\n"
                                        "  rotations of the drum (0x1002): 4660\n"
                                        "  pages (0x1003): 256\n"
                                        "  prints (0x1004): 5\n"
                                        "  printed dots (0x1100): 1000\n"
                                        "  pages of the printer (0x1101): 65536\n"
                                        "  prints of the printer (0x1102): 16909060\n"
                                        "  black ink left, per cent (0x4043): 50\n"
                                        "  cyan ink left, per cent (0x4143): 51\n"
                                        "  magenta ink left, per cent (0x4243): 52\n"
                                        "  yellow ink left, per cent (0x4343): 53\n"));
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 1);
    }

    void textInChinese()
    {
        Write(HandMadeReply());
        const stRun run = RunFields({u"--lang=zh"_s, u"reply.dat"_s});
        QCOMPARE(run.output, QByteArray("reply.dat：145字节\n"
                                        "  不检查：\"564f5241000102\"\n"
                                        "  头字节：0xA1\n"
                                        "  头字段1：0xB1B2\n"
                                        "  头字段2：0xC1C2\n"
                                        "  厂商名称：\"Vora\"\n"
                                        "  产品名称：\"RA7QX\"\n"
                                        "  打印机序列号：\"SN1234\"\n"
                                        "  序列号后的字段：0xD1D2\n"
                                        "  状态：0x10 正在打印\n"
                                        "  固件版本：\"2.1.7\"\n"
                                        "  第五个字符串：\"xyz\"\n"
                                        "  错误：0x6110 进纸托盘处卡纸,请取出纸张\n"
                                        "  错误：0x6156 黄色墨水空，请及时更换墨水瓶\n"
                                        "  警告：0x6160 墨水量低\n"
                                        "  耗材前的字节：0xE1\n"
                                        "  耗材前的字段1：0xF1F2\n"
                                        "  耗材前的字段2：0xF3F4\n"
                                        "  耗材序列号 (0x0000)：\"INK42\"\n"
                                        "  耗材类型 (0x0001)：66051\n"
                                        "  剩余墨粉或墨水总量 (0x1000)：300\n"
                                        "  废墨粉或废墨水 (0x1001)：7\n"
                                        "  感光鼓转数 (0x1002)：4660\n"
                                        "  页数 (0x1003)：256\n"
                                        "  打印次数 (0x1004)：5\n"
                                        "  打印点数 (0x1100)：1000\n"
                                        "  打印机页数 (0x1101)：65536\n"
                                        "  打印机打印次数 (0x1102)：16909060\n"
                                        "  黑色墨水剩余百分比 (0x4043)：50\n"
                                        "  青色墨水剩余百分比 (0x4143)：51\n"
                                        "  品红色墨水剩余百分比 (0x4243)：52\n"
                                        "  黄色墨水剩余百分比 (0x4343)：53\n"));
    }

    void emptyTexts_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");

        QTest::newRow("cyan") << 0x6163 << "0x6163 Cyan Ink Level is Low."
                              << "0x6163 [Cyan Ink Level is Low.]";
        QTest::newRow("magenta") << 0x6164 << "0x6164 Magenta Ink Level is Low."
                                 << "0x6164 [Magenta Ink Level is Low.]";
        QTest::newRow("yellow") << 0x6165 << "0x6165 Yellow Ink Level is Low."
                                << "0x6165 [Yellow Ink Level is Low.]";
        QTest::newRow("no text") << 0x6800 << "0x6800"
                                 << "0x6800";
        QTest::newRow("unknown code") << 0x0001 << "0x0001 Unknown error status" << u"0x0001 错误状态未知"_s;
    }

    void emptyTexts()
    {
        QFETCH(const int, code);
        QFETCH(const QString, english);
        QFETCH(const QString, chinese);

        const QString strPath = Write(WithErrors({}, {static_cast<quint16>(code)}));
        const stRun inEnglish = RunFields({u"--lang=en"_s, strPath});
        QVERIFY2(inEnglish.Lines().contains(u"  warning: "_s + english), inEnglish.output);
        QVERIFY2(inEnglish.Lines().contains(u"  error: none"_s), inEnglish.output);
        const stRun inChinese = RunFields({u"--lang=zh"_s, strPath});
        QVERIFY2(inChinese.Lines().contains(u"  警告："_s + chinese), inChinese.output);
        QVERIFY2(inChinese.Lines().contains(u"  错误：无"_s), inChinese.output);

        const stRun hex = Run({u"--lang=zh"_s, u"--hex"_s, strPath});
        QVERIFY2(hex.output.contains(u"警告 1：%1\n"_s.arg(chinese).toUtf8()), hex.output);
    }

    void absentSupplies()
    {
        const QString strPath =
            Write(WithSupplies({MakeSuppliesRecord(enSuppliesNumberOfPages, 9), {enSuppliesBlackInk, ""}}));
        const stRun run = RunFields({strPath});
        QVERIFY2(run.Lines().contains(u"  supply serial number (0x0000): \"\" (not in the reply)"_s), run.output);
        QVERIFY2(run.Lines().contains(u"  cyan ink left, per cent (0x4143): 0 (not in the reply)"_s), run.output);
        QVERIFY2(run.Lines().contains(u"  pages (0x1003): 9"_s), run.output);
        QVERIFY2(run.Lines().contains(u"  prints (0x1004): 9"_s), run.output);
        QVERIFY2(run.Lines().contains(u"  black ink left, per cent (0x4043): 0"_s), run.output);
        const stRun chinese = RunFields({u"--lang=zh"_s, strPath});
        QVERIFY2(chinese.Lines().contains(u"  青色墨水剩余百分比 (0x4143)：0（应答中没有）"_s), chinese.output);
    }

    void controlCharacters()
    {
        stStatusReply reply = Ready();
        reply.productName = "\033[2J\"\\\x9B";
        const QString strName = u"a\033[2J\u202Eb.dat"_s;
        const stRun run = RunFields({Write(EncodeStatusReply(reply), strName)});
        QVERIFY2(run.Lines().contains(u"  product name: \"\\x1B[2J\\\"\\\\\\x9B\""_s), run.output);
        QVERIFY2(run.output.contains("a\\x1B[2J\\u202Eb.dat: "), run.output);
        const stRun hex = Run({u"--hex"_s, Path(strName)});
        QVERIFY2(hex.output.contains("product name: \"\\x1B[2J\\\"\\\\\\x9B\""), hex.output);
        const stRun missing = RunFields({u"m\033.dat"_s});
        QCOMPARE(missing.messages, QByteArray("vora-status: m\\x1B.dat: there is no such file\n"));
    }

    void jsonControlCharacters()
    {
        stStatusReply reply = Ready();
        reply.productName = "\033\x9B\x7F\xE9\xAD";
        const QString strName = u"a\u202e前"_s + QString::fromUcs4(U"\U000E0001", 1) + u".dat"_s;
        Write(EncodeStatusReply(reply), strName);
        const stRun run = Run({u"--json"_s, strName});
        QVERIFY2(run.output.contains("\"product\": \"\\u001b\\u009b\\u007fé\\u00ad\""), run.output);
        QVERIFY2(run.output.contains("\"name\": \"a\\u202e前\\udb40\\udc01.dat\""), run.output);
        QCOMPARE(run.Report().value(u"name"_s).toString(), strName);
        QCOMPARE(run.Report().value(u"reply"_s).toObject().value(u"product"_s).toString(),
                 QString::fromLatin1(reply.productName));
        // In a text it is the same, as people read it.
        QVERIFY(RunFields({strName}).output.startsWith("a\\u202E前\\U000E0001.dat: "));
    }

    void hexGood()
    {
        stStatusReply reply = Ready();
        reply.productName = "Vora RA7QX";
        reply.byStatus = c_iNoState;
        reply.listErrorCode = {0x6143};
        reply.listWarningCode = {0x6163};
        reply.listSupplies = {{0x0000, "INK"},
                              {0x4043, QByteArray::fromHex("0032")},
                              {0x4143, QByteArray()},
                              {0x7777, QByteArray::fromHex("0102")}};
        Write(EncodeStatusReply(reply) + "ninebytes");
        const stRun run = Run({u"--hex"_s, u"reply.dat"_s});
        QCOMPARE(run.output,
                 QByteArray("reply.dat: 79 bytes\n"
                            "     0  00 00 00 00 00 00 00     not examined\n"
                            "     7  00                       header byte: 0x00\n"
                            "     8  00 00                    header field 1: 0x0000\n"
                            "    10  00 00                    header field 2: 0x0000\n"
                            "    12  00 04                    length of the vendor name: 4\n"
                            "    14  56 6F 72 61              vendor name: \"Vora\"\n"
                            "    18  00 0A                    length of the product name: 10\n"
                            "    20  56 6F 72 61 20 52 41 37  product name: \"Vora RA7QX\"\n"
                            "    28  51 58\n"
                            "    30  00 00                    length of the printer serial number: 0\n"
                            "    32                           printer serial number: \"\"\n"
                            "    32  00 00                    field after the serial number: 0x0000\n"
                            "    34  FF                       state: 0xFF Unknown\n"
                            "    35  00 00                    length of the firmware version: 0\n"
                            "    37                           firmware version: \"\"\n"
                            "    37  00 00                    length of the fifth string: 0\n"
                            "    39                           fifth string: \"\"\n"
                            "    39  01                       number of errors: 1\n"
                            "    40  61 43                    error 1: 0x6143 Black Print Head Is Damaged.\n"
                            "    42  01                       number of warnings: 1\n"
                            "    43  61 63                    warning 1: 0x6163 Cyan Ink Level is Low.\n"
                            "    45  00                       byte before the supplies: 0x00\n"
                            "    46  00 00                    field 1 before the supplies: 0x0000\n"
                            "    48  00 00                    field 2 before the supplies: 0x0000\n"
                            "    50  04                       number of supplies records: 4\n"
                            "    51  00 00                    supplies key 1: 0x0000 supply serial number\n"
                            "    53  03                       supplies data length 1: 3\n"
                            "    54  49 4E 4B                 supplies data 1: \"INK\"\n"
                            "    57  40 43                    supplies key 2: 0x4043 black ink left, per cent\n"
                            "    59  02                       supplies data length 2: 2\n"
                            "    60  00 32                    supplies data 2: 50\n"
                            "    62  41 43                    supplies key 3: 0x4143 cyan ink left, per cent\n"
                            "    64  00                       supplies data length 3: 0\n"
                            "    65                           supplies data 3: 0\n"
                            "    65  77 77                    supplies key 4: 0x7777 unknown, skipped\n"
                            "    67  02                       supplies data length 4: 2\n"
                            "    68  01 02                    supplies data 4\n"
                            "    70  6E 69 6E 65 62 79 74 65  ignored\n"
                            "    78  73\n"));
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 1);
    }

    void hexInChinese()
    {
        Write(WithErrors({0x6143}));
        const stRun run = Run({u"--hex"_s, u"--lang=zh"_s, u"reply.dat"_s});
        QVERIFY2(run.output.startsWith("reply.dat：39字节\n     0  00 00 00 00 00 00 00     不检查\n"), run.output);
        QVERIFY2(run.output.contains("    30  61 43                    错误 1：0x6143 故障#6143，重启或联系客服\n"),
                 run.output);
    }

    void hexRejected_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("heading");
        QTest::addColumn<QByteArray>("end");
        QTest::addColumn<QByteArray>("reason");

        QTest::newRow("empty") << QByteArray() << QByteArray("reply.dat: 0 bytes\n")
                               << QByteArray("bytes\n     0                           not examined\n")
                               << QByteArray(
                                      "reply rejected: it ends at byte 0, but the field at byte 0 (not examined) has 7 "
                                      "bytes\n");
        QTest::newRow("in a text") << EncodeStatusReply(Ready()).left(16) << QByteArray("reply.dat: 16 bytes\n")
                                   << QByteArray("    12  00 04                    length of the vendor name: 4\n"
                                                 "    14  56 6F                    vendor name\n")
                                   << QByteArray(
                                          "reply rejected: it ends at byte 16, but the field at byte 14 (vendor name) "
                                          "has 4 bytes\n");
        QTest::newRow("between fields") << EncodeStatusReply(Ready()).left(12) << QByteArray("reply.dat: 12 bytes\n")
                                        << QByteArray("    10  00 00                    header field 2: 0x0000\n"
                                                      "    12                           length of the vendor name\n")
                                        << QByteArray(
                                               "reply rejected: it ends at byte 12, but the field at byte 12 (length "
                                               "of the vendor name) has 2 bytes\n");
        QTest::newRow("in a code") << WithErrors({0x6100, 0x6143}).left(32) << QByteArray("reply.dat: 32 bytes\n")
                                   << QByteArray(
                                          "    29  02                       number of errors: 2\n"
                                          "    30  61 00                    error 1: 0x6100 No Paper At The Input "
                                          "Tray\n"
                                          "    32                           error 2\n")
                                   << QByteArray(
                                          "reply rejected: it ends at byte 32, but the field at byte 32 (error) has 2 "
                                          "bytes\n");
        QTest::newRow("fatal") << WithSupplies({{0x4043, QByteArray(66, 'x')}}) << QByteArray("reply.dat: 106 bytes\n")
                               << QByteArray(
                                      "    37  40 43                    supplies key 1: 0x4043 black ink left, per "
                                      "cent\n"
                                      "    39  42                       supplies data length 1: 66\n")
                               << QByteArray(
                                      "reply rejected: byte 39 (supplies data length) announces 66 data bytes, more "
                                      "than the 65 on which the program does not end\n");
    }

    void hexRejected()
    {
        QFETCH(const QByteArray, reply);
        QFETCH(const QByteArray, heading);
        QFETCH(const QByteArray, end);
        QFETCH(const QByteArray, reason);

        Write(reply);
        const stRun run = Run({u"--hex"_s, u"reply.dat"_s});
        QVERIFY2(run.output.startsWith(heading), run.output);
        QVERIFY2(run.output.endsWith(end + reason), run.output);
        QCOMPARE(run.messages, "vora-status: reply.dat: " + reason);
        QCOMPARE(run.iExit, 2);

        const stRun text = RunFields({u"reply.dat"_s});
        QCOMPARE(text.output, QByteArray());
        QCOMPARE(text.messages, "vora-status: reply.dat: " + reason);
        QCOMPARE(text.iExit, 2);
    }

    void json()
    {
        stStatusReply reply = Ready();
        reply.unexamined = QByteArray::fromHex("A5000C50E07408");
        reply.byHeader = 1;
        reply.wHeaderField1 = 0x0203;
        reply.wHeaderField2 = 0x0405;
        reply.serialNumber = "SN\xE9";
        reply.wAfterSerialNumber = 0x0607;
        reply.byStatus = 0x10;
        reply.firmwareVersion = "1.02";
        reply.fifthString = "five";
        reply.listErrorCode = {0x6100};
        reply.listWarningCode = {0x6163, 0x6800};
        reply.byBeforeSupplies = 8;
        reply.wBeforeSupplies1 = 0x090A;
        reply.wBeforeSupplies2 = 0x0B0C;
        reply.listSupplies = {{0x0000, "INK"},
                              MakeSuppliesRecord(enSuppliesPrinterNumOfPages, 0xFFFFFFFF),
                              MakeSuppliesRecord(enSuppliesBlackInk, 50)};
        Write(EncodeStatusReply(reply));
        const QByteArray expected = R"({"format": 1, "reports": [{
            "source": "file", "name": "reply.dat", "printer": null, "length": 72, "failure": null,
            "reply": {
                "unexamined": "a5000c50e07408", "header": 1, "header-field-1": 515, "header-field-2": 1029,
                "vendor": "Vora", "product": "", "serial": "SNé", "after-serial": 1543,
                "state": {"code": 16, "value": 8, "english": "Printing", "chinese": "正在打印"},
                "firmware": "1.02", "fifth-string": "five",
                "errors": [{"code": 24832, "value": 11, "english": "No Paper At The Input Tray",
                            "chinese": "进纸托盘处无纸,请放入纸张"}],
                "warnings": [{"code": 24931, "value": 28, "english": "Cyan Ink Level is Low.", "chinese": ""},
                             {"code": 26624, "value": 42, "english": "", "chinese": ""}],
                "before-supplies": 8, "before-supplies-1": 2314, "before-supplies-2": 2828,
                "supply-serial": "INK", "supply-type": null, "remaining-toner": null, "waste-toner": null,
                "opc-rotation": null, "pages": null, "prints": null, "print-dots": null,
                "printer-pages": 4294967295, "printer-prints": null,
                "black": 50, "cyan": null, "magenta": null, "yellow": null}}]})";
        for (const QString& strLang : {u"en"_s, u"zh"_s}) {
            const stRun run = Run({u"--json"_s, u"--lang"_s, strLang, u"reply.dat"_s});
            QCOMPARE(QJsonDocument(run.Json()).toJson(), QJsonDocument::fromJson(expected).toJson());
            QCOMPARE(run.messages, QByteArray());
            QCOMPARE(run.iExit, 1);
        }
    }

    void jsonHasTheKeysOfScenarios()
    {
        const QJsonObject report = Run({u"--json"_s, Write(EncodeStatusReply(Ready()))}).Report();
        const QStringList listKey = report.value(u"reply"_s).toObject().keys();
        QVERIFY(!listKey.isEmpty());
        for (const QString& strKey : listKey) {
            QVERIFY2(ReplyKeyNames().contains(strKey), qPrintable(strKey));
        }
    }

    void jsonFailure()
    {
        Write(EncodeStatusReply(Ready()).left(16));
        const QByteArray expected = R"({"format": 1, "reports": [{
            "source": "file", "name": "reply.dat", "printer": null, "length": 16, "reply": null,
            "failure": {"reason": "truncated",
                "english": "reply rejected: it ends at byte 16, but the field at byte 14 (vendor name) has 4 bytes",
                "chinese": "应答被拒绝：应答在第16字节处结束，而第14字节处的字段（厂商名称）有4字节"}},
           {"source": "file", "name": "gone.dat", "printer": null, "length": null, "reply": null,
            "failure": {"reason": "missing", "english": "there is no such file", "chinese": "文件不存在"}}]})";
        const stRun run = Run({u"--json"_s, u"reply.dat"_s, u"gone.dat"_s});
        QCOMPARE(QJsonDocument(run.Json()).toJson(), QJsonDocument::fromJson(expected).toJson());
        QCOMPARE(run.messages.count('\n'), 2);
        QCOMPARE(run.iExit, 2);

        Write(WithSupplies({{0x4043, QByteArray(66, 'x')}}));
        const QJsonObject failure = Run({u"--json"_s, u"reply.dat"_s}).Report().value(u"failure"_s).toObject();
        QCOMPARE(failure.value(u"reason"_s).toString(), u"fatal-supplies"_s);
        QCOMPARE(failure.value(u"chinese"_s).toString(),
                 u"应答被拒绝：第39字节（耗材数据长度）声明有66个数据字节，超过65个时程序会终止"_s);
    }

    void exitStatus_data()
    {
        QTest::addColumn<QList<QByteArray>>("replies");
        QTest::addColumn<int>("expected");

        const QByteArray good = EncodeStatusReply(Ready());
        const QByteArray warning = WithErrors({}, {0x6160});
        const QByteArray error = WithErrors({0x6100});
        const QByteArray unknownError = WithErrors({0x0001});
        const QByteArray rejected = good.left(20);
        const QByteArray fatal = WithSupplies({{0x4043, QByteArray(66, 'x')}});
        QTest::newRow("good") << QList<QByteArray>{good, good} << 0;
        QTest::newRow("warning") << QList<QByteArray>{warning} << 0;
        QTest::newRow("error") << QList<QByteArray>{error} << 1;
        QTest::newRow("unknown error") << QList<QByteArray>{unknownError} << 1;
        QTest::newRow("error, then good") << QList<QByteArray>{error, good} << 1;
        QTest::newRow("rejected") << QList<QByteArray>{rejected} << 2;
        QTest::newRow("fatal") << QList<QByteArray>{fatal} << 2;
        QTest::newRow("rejected, then error") << QList<QByteArray>{rejected, error} << 2;
        QTest::newRow("error, rejected, good") << QList<QByteArray>{error, rejected, good} << 2;
    }

    void exitStatus()
    {
        QFETCH(const QList<QByteArray>, replies);
        QFETCH(const int, expected);

        QStringList listPath;
        for (const QByteArray& reply : replies) {
            listPath.append(Write(reply, QString::number(listPath.size())));
        }
        for (const char* pFormat : {"--fields", "--hex", "--json", "--lang=en"}) {
            QCOMPARE(Run(QStringList(QString::fromLatin1(pFormat)) + listPath).iExit, expected);
        }
    }

    void fileErrors_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("english");
        QTest::addColumn<QByteArray>("chinese");
        QTest::addColumn<QString>("reason");

        QTest::newRow("missing") << "gone.dat" << QByteArray(": there is no such file\n")
                                 << QByteArray("：文件不存在\n") << "missing";
        QTest::newRow("directory") << "/tmp" << QByteArray(": not a regular file\n") << QByteArray("：不是普通文件\n")
                                   << "not-regular";
        QTest::newRow("device") << "/dev/null" << QByteArray(": not a regular file\n") << QByteArray("：不是普通文件\n")
                                << "not-regular";
        // A regular file whose first byte cannot be read.
        QTest::newRow("read error") << "/proc/self/mem" << QByteArray(": the file cannot be read: Input/output error\n")
                                    << QByteArray("：无法读取文件：Input/output error\n") << "unreadable";
    }

    void fileErrors()
    {
        QFETCH(const QString, path);
        QFETCH(const QByteArray, english);
        QFETCH(const QByteArray, chinese);
        QFETCH(const QString, reason);

        const QByteArray head = "vora-status: " + path.toUtf8();
        const stRun inEnglish = RunFields({path});
        QCOMPARE(inEnglish.messages, head + english);
        QCOMPARE(inEnglish.output, QByteArray());
        QCOMPARE(inEnglish.iExit, 2);
        QCOMPARE(RunFields({u"--lang=zh"_s, path}).messages, head + chinese);
        QCOMPARE(Run({u"--hex"_s, path}).output, QByteArray());
        const QJsonObject failure = Run({u"--json"_s, path}).Report().value(u"failure"_s).toObject();
        QCOMPARE(failure.value(u"reason"_s).toString(), reason);
    }

    void fifoDoesNotBlock()
    {
        QCOMPARE(::mkfifo("pipe.dat", 0600), 0);
        const stRun run = RunFields({u"pipe.dat"_s});
        QCOMPARE(run.messages, QByteArray("vora-status: pipe.dat: not a regular file\n"));
        QCOMPARE(run.iExit, 2);
    }

    void unreadableFile()
    {
        Write(EncodeStatusReply(Ready()));
        QCOMPARE(::chmod("reply.dat", 0), 0);
        // Root reads it all the same until it is stripped of its capabilities.
        QStringList listBefore{u"env"_s};
        if (::geteuid() == 0) {
            listBefore = QStringList{u"setpriv"_s, u"--bounding-set=-all"_s, u"--inh-caps=-all"_s};
        }
        const stRun run = RunBehind(listBefore, {u"--fields"_s, u"reply.dat"_s});
        QCOMPARE(run.messages, QByteArray("vora-status: reply.dat: the file cannot be read: Permission denied\n"));
        QCOMPARE(run.iExit, 2);
    }

    void largeFile()
    {
        const QByteArray good = EncodeStatusReply(Ready());
        Write(good + QByteArray(2048 - good.size(), 'x'), u"full"_s);
        Write(good + QByteArray(2049 - good.size(), 'x'), u"large"_s);
        const stRun full = RunFields({u"full"_s});
        QVERIFY(full.output.startsWith("full: 2048 bytes\n"));
        QCOMPARE(full.messages, QByteArray());
        const stRun large = RunFields({u"large"_s});
        QVERIFY(large.output.startsWith("large: 2048 bytes\n"));
        QCOMPARE(large.messages, QByteArray("vora-status: large: has 2049 bytes, only the first 2048 are read\n"));
        QCOMPARE(large.iExit, 0);
        QCOMPARE(RunFields({u"--lang=zh"_s, u"large"_s}).messages,
                 QByteArray("vora-status: large：有2049字节，只读取前2048字节\n"));

        stStatusReply reply = Ready();
        reply.fifthString = QByteArray(2048, 'f');
        Write(EncodeStatusReply(reply), u"beyond"_s);
        const stRun beyond = RunFields({u"beyond"_s});
        QCOMPARE(beyond.messages,
                 QByteArray("vora-status: beyond: reply rejected: it ends at byte 2048, but the field at byte "
                            "29 (fifth string) has 2048 bytes\n"));
        QCOMPARE(beyond.iExit, 2);
    }

    void severalFiles()
    {
        Write(EncodeStatusReply(Ready()), u"one"_s);
        Write(WithErrors({0x6100}), u"two"_s);
        const stRun run = RunFields({u"one"_s, u"gone"_s, u"two"_s, u"gone"_s});
        QVERIFY(run.output.startsWith("one: 37 bytes\n"));
        QVERIFY2(run.output.contains("(not in the reply)\n\ntwo: 39 bytes\n"), run.output);
        QCOMPARE(run.output.count("\n\n"), 1);
        QCOMPARE(run.messages.count('\n'), 2);
    }

    void manyFiles_data()
    {
        QTest::addColumn<QString>("format");

        QTest::newRow("text") << "--fields";
        QTest::newRow("hex") << "--hex";
    }

    void manyFiles()
    {
        QFETCH(const QString, format);

        Write(WithErrors({0x6100}), u"one"_s);
        Write("broken", u"two"_s);
        const QByteArray one = Run({format, u"one"_s}).output;
        const QByteArray two = Run({format, u"two"_s}).output;
        QStringList listArgument{format};
        QByteArrayList listOutput;
        for (int i = 0; i < 300; ++i) {
            listArgument << u"one"_s << u"two"_s;
            listOutput << one;
            if (!two.isEmpty()) {
                listOutput << two;
            }
        }
        const stRun run = Run(listArgument);
        QVERIFY(run.output.size() > 3 * 65536); // more than is written at once
        QVERIFY(run.output == listOutput.join('\n'));
        QCOMPARE(run.messages.count("vora-status: two: "), 300);
        QCOMPARE(run.iExit, 2);
    }

    void driverFolder()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList(
            {Printer(u"Office"_s, u"RA7QX"_s, 1, u"usb"_s), Printer(u"前台"_s, u"X1"_s, 0, u"10.0.0.9"_s),
             Printer(u"Store"_s, u"RB9X"_s, 2, QString()), Printer(u"Pipe"_s, u"RB9X"_s, 2, QString())});
        folder.WriteStatus(u"Office"_s, WithErrors({0x6100}));
        folder.WriteStatus(u"前台"_s, EncodeStatusReply(Ready()).left(12));
        QCOMPARE(::mkfifo("/opt/vora/vora-printer-k507/cfg/Pipe.dat", 0600), 0);

        const stRun run = RunFields({});
        QVERIFY2(run.output.startsWith("Office: 39 bytes\n"
                                       "  status file: /opt/vora/vora-printer-k507/cfg/Office.dat\n"
                                       "  model: RA7QX (Vora RA7QX)\n"
                                       "  connection: 1 USB\n"
                                       "  URI: vora://Office\n"
                                       "  not examined: "),
                 run.output);
        QVERIFY2(run.output.endsWith("\n"
                                     "前台: 12 bytes\n"
                                     "  status file: /opt/vora/vora-printer-k507/cfg/前台.dat\n"
                                     "  model: X1\n"
                                     "  connection: 0 network (10.0.0.9)\n"
                                     "  URI: vora://前台\n"
                                     "\n"
                                     "Store\n"
                                     "  status file: /opt/vora/vora-printer-k507/cfg/Store.dat\n"
                                     "  model: RB9X (Vora RB9X)\n"
                                     "  connection: 2 network ()\n"
                                     "  URI: vora://Store\n"
                                     "\n"
                                     "Pipe\n"
                                     "  status file: /opt/vora/vora-printer-k507/cfg/Pipe.dat\n"
                                     "  model: RB9X (Vora RB9X)\n"
                                     "  connection: 2 network ()\n"
                                     "  URI: vora://Pipe\n"),
                 run.output);
        QVERIFY2(run.output.contains("  error: 0x6100 No Paper At The Input Tray\n"), run.output);
        QCOMPARE(
            run.messages,
            QByteArray("vora-status: 前台: reply rejected: it ends at byte 12, but the field at byte 12 (length of the "
                       "vendor name) has 2 bytes\n"
                       "vora-status: Store: there is no such file\n"
                       "vora-status: Pipe: not a regular file\n"));
        QCOMPARE(run.iExit, 2);
    }

    void zeroInANameLeadsToNoOtherFile()
    {
        const DriverFolder folder = StatusFolder();
        const QString strName = u"Office.dat"_s + QChar(0) + QLatin1Char('x');
        folder.WritePrinterList({Printer(strName, u"RA7QX"_s, 1, u"usb"_s)});
        folder.WriteStatus(u"Office"_s, EncodeStatusReply(Ready()));
        const stRun run = RunFields({});
        QCOMPARE(run.messages, QByteArray("vora-status: Office.dat\\x00x: there is no such file\n"));
        QCOMPARE(run.iExit, 2);
    }

    void driverFolderInChinese()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList({Printer(u"前台"_s, u"RA7Q"_s, 2, u"10.0.0.9"_s)});
        folder.WriteStatus(u"前台"_s, EncodeStatusReply(Ready()));
        const stRun run = RunFields({u"--lang=zh"_s});
        QVERIFY2(run.output.startsWith("前台：37字节\n"
                                       "  状态文件：/opt/vora/vora-printer-k507/cfg/前台.dat\n"
                                       "  型号：RA7Q (Vora RA7Q)\n"
                                       "  连接方式：2 网络(10.0.0.9)\n"
                                       "  URI：vora://前台\n"
                                       "  不检查："),
                 run.output);
        QCOMPARE(run.iExit, 0);
    }

    void driverFolderJson()
    {
        const DriverFolder folder = StatusFolder();
        folder.WritePrinterList(
            {Printer(u"Off,ice"_s, u"RA7QX"_s, 1, u"usb"_s), Printer(u"Store"_s, u"-1"_s, 2, u"10.0.0.9"_s)});
        folder.WriteStatus(u"Off,ice"_s, ReplyInState(0x03));
        const stRun run = Run({u"--json"_s});
        QCOMPARE(run.Json().value(u"reports"_s).toArray().size(), 2);
        QCOMPARE(run.Report(0).value(u"source"_s).toString(), u"printer"_s);
        QCOMPARE(run.Report(0).value(u"name"_s).toString(), u"Off,ice"_s);
        QCOMPARE(run.Report(0).value(u"printer"_s).toObject(),
                 (QJsonObject{{u"file"_s, u"/opt/vora/vora-printer-k507/cfg/Off,ice.dat"_s},
                              {u"model"_s, u"RA7QX"_s},
                              {u"connect-type"_s, 1},
                              {u"port"_s, u"usb"_s},
                              {u"uri"_s, u"vora://Off,ice"_s}}));
        const QJsonObject reply = run.Report(0).value(u"reply"_s).toObject();
        QCOMPARE(reply.value(u"state"_s).toObject().value(u"code"_s).toInt(), 3);
        QVERIFY(run.Report(1).value(u"reply"_s).isNull());
        QVERIFY(run.Report(1).value(u"length"_s).isNull());
        QCOMPARE(run.Report(1).value(u"printer"_s).toObject().value(u"port"_s).toString(), u"10.0.0.9"_s);
        QCOMPARE(run.iExit, 2);
    }

    void driverFolderWithoutPrinters_data()
    {
        QTest::addColumn<bool>("list");
        QTest::newRow("no list") << false;
        QTest::newRow("empty list") << true;
    }

    void driverFolderWithoutPrinters()
    {
        QFETCH(const bool, list);

        if (list) {
            StatusFolder().WritePrinterList({});
        }
        const stRun run = RunFields({});
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.messages,
                 QByteArray("vora-status: /opt/vora/vora-printer-k507/cfg/printerlist.ini lists no printers\n"));
        QCOMPARE(run.iExit, 0);
        QCOMPARE(RunFields({u"--lang=zh"_s}).messages,
                 QByteArray("vora-status: /opt/vora/vora-printer-k507/cfg/printerlist.ini没有列出打印机\n"));
        QCOMPARE(QJsonDocument(Run({u"--json"_s}).Json()).toJson(QJsonDocument::Compact),
                 QByteArray(R"({"format":1,"reports":[]})"));
    }

    void usageErrors_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("words");

        QTest::newRow("unknown option") << QStringList{u"--colour"_s} << QByteArray("Unknown option 'colour'.");
        QTest::newRow("unknown letter") << QStringList{u"-x"_s} << QByteArray("Unknown option 'x'.");
        QTest::newRow("value missing") << QStringList{u"--udp"_s} << QByteArray("Missing value after '--udp'.");
        QTest::newRow("value too much") << QStringList{u"--hex=1"_s} << QByteArray("Unexpected value after '--hex'.");
        QTest::newRow("language") << QStringList{u"--lang"_s, u"fr"_s}
                                  << QByteArray("--lang takes zh or en, not \"fr\".");
        QTest::newRow("empty language") << QStringList{u"--lang="_s} << QByteArray("--lang takes zh or en, not \"\".");
        QTest::newRow("language that a terminal would obey")
            << QStringList{u"--lang"_s, u"a\u001b\u009b\n\u202e"_s}
            << QByteArray("--lang takes zh or en, not \"a\\x1B\\x9B\\x0A\\u202E\".");
        QTest::newRow("option that a terminal would obey")
            << QStringList{u"--a\u001b"_s} << QByteArray("Unknown option 'a\\x1B'.");
        QTest::newRow("two formats") << QStringList{u"--json"_s, u"--hex"_s}
                                     << QByteArray("--json and --hex exclude each other.");
        QTest::newRow("address and file")
            << QStringList{u"--udp"_s, u"127.0.0.1"_s, u"a.dat"_s} << QByteArray("--udp takes no files.");
    }

    void usageErrors()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QByteArray, words);

        const stRun run = Run(arguments);
        QCOMPARE(run.messages, "vora-status: " + words + "\nSee 'vora-status --help'.\n");
        QCOMPARE(run.output, QByteArray());
        QCOMPARE(run.iExit, 64);
    }

    void usageErrorInChinese()
    {
        const stRun run = Run({u"--json"_s, u"--hex"_s, u"--lang=zh"_s});
        QCOMPARE(run.messages, QByteArray("vora-status: --json与--hex不能同时使用。\n请看“vora-status --help”。\n"));
        QCOMPARE(run.iExit, 64);
    }

    void language_data()
    {
        QTest::addColumn<QStringList>("environment"); // LC_ALL, LC_MESSAGES, LANG; "-" when not set
        QTest::addColumn<QString>("option");
        QTest::addColumn<bool>("chinese");

        const QString strNone = u"-"_s;
        const QString strZh = u"zh_CN.UTF-8"_s;
        const QString strEn = u"en_US.UTF-8"_s;
        QTest::newRow("nothing set") << QStringList{strNone, strNone, strNone} << "" << false;
        QTest::newRow("LANG") << QStringList{strNone, strNone, strZh} << "" << true;
        QTest::newRow("LC_MESSAGES before LANG") << QStringList{strNone, strEn, strZh} << "" << false;
        QTest::newRow("LC_ALL before LC_MESSAGES") << QStringList{strZh, strEn, strEn} << "" << true;
        QTest::newRow("empty is not set") << QStringList{QString(), QString(), strZh} << "" << true;
        QTest::newRow("plain C") << QStringList{u"C"_s, strZh, strZh} << "" << false;
        QTest::newRow("option before locale") << QStringList{strZh, strZh, strZh} << "--lang=en" << false;
        QTest::newRow("option before locale, zh") << QStringList{strEn, strEn, strEn} << "--lang=zh" << true;
    }

    void language()
    {
        QFETCH(const QStringList, environment);
        QFETCH(const QString, option);
        QFETCH(const bool, chinese);

        QProcessEnvironment processEnvironment = QProcessEnvironment::systemEnvironment();
        const QStringList listVariable{u"LC_ALL"_s, u"LC_MESSAGES"_s, u"LANG"_s};
        for (int i = 0; i < 3; ++i) {
            processEnvironment.remove(listVariable.at(i));
            if (environment.at(i) != QLatin1String("-")) {
                processEnvironment.insert(listVariable.at(i), environment.at(i));
            }
        }
        QStringList listArgument{u"--fields"_s, Write(EncodeStatusReply(Ready()))};
        if (!option.isEmpty()) {
            listArgument.append(option);
        }
        // Chinese is UTF-8 whatever the locale's encoding is.
        const stRun run = RunCommand(c_strProgram, listArgument, processEnvironment);
        QCOMPARE(run.output.contains("  状态：0x00 就绪\n"), chinese);
        QCOMPARE(run.output.contains("  state: 0x00 Ready\n"), !chinese);
    }

    void help_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("start");

        QTest::newRow("English") << QStringList{u"--help"_s}
                                 << QByteArray("Usage: vora-status [OPTION]... [FILE]...\n");
        QTest::newRow("short") << QStringList{u"-h"_s} << QByteArray("Usage: vora-status [OPTION]... [FILE]...\n");
        QTest::newRow("Chinese") << QStringList{u"--help"_s, u"--lang=zh"_s}
                                 << QByteArray("用法：vora-status [选项]... [文件]...\n");
    }

    void help()
    {
        QFETCH(const QStringList, arguments);
        QFETCH(const QByteArray, start);

        const stRun run = Run(arguments);
        QVERIFY2(run.output.startsWith(start), run.output);
        QCOMPARE(run.messages, QByteArray());
        QCOMPARE(run.iExit, 0);
        for (const QString& strLine : run.Lines()) {
            QVERIFY2(Columns(strLine) <= 80, qPrintable(strLine));
        }
        for (const char* pOption : {"--udp", "--lang", "--fields", "--hex", "--json", "--prometheus", "--output",
                                    "--watch", "--version", "-h, --help"}) {
            QVERIFY2(run.output.contains(pOption), pOption);
        }
    }

    void manPageNamesEveryOption()
    {
        const QByteArray page = ReadFile(c_strManPage).replace("\\-", "-");
        const QString strHelp = QString::fromUtf8(Run({u"--help"_s}).output);
        int iCount = 0;
        QRegularExpressionMatchIterator found =
            QRegularExpression(u"^ +(?:-h, )?(--[a-z]+)"_s, QRegularExpression::MultilineOption).globalMatch(strHelp);
        while (found.hasNext()) {
            const QByteArray option = found.next().captured(1).toUtf8();
            QVERIFY2(QRegularExpression(u"\n\\.TP\n\\.B[RI]? \"?(-h \", \" )?%1\\b"_s.arg(QString::fromUtf8(option)))
                         .match(QString::fromUtf8(page))
                         .hasMatch(),
                     option);
            ++iCount;
        }
        QCOMPARE(iCount, 10);
    }

    void outputNotWritten()
    {
        Write(EncodeStatusReply(Ready()));
        const QStringList listShell{u"-c"_s, u"exec \"$0\" \"$@\" > /dev/full"_s, c_strProgram, u"--fields"_s,
                                    u"reply.dat"_s};
        const stRun run = RunCommand(u"sh"_s, listShell);
        QCOMPARE(run.messages, QByteArray("vora-status: the output cannot be written\n"));
        QCOMPARE(run.iExit, 2);
        // More than is written at once: told once nevertheless.
        const QStringList listMany = u"reply.dat "_s.repeated(300).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const stRun large = RunCommand(u"sh"_s, listShell + listMany);
        QCOMPARE(large.messages, QByteArray("vora-status: the output cannot be written\n"));
        QCOMPARE(large.iExit, 2);
        // Watching makes no sense then.
        const stRun watch = RunCommand(u"sh"_s, listShell + QStringList(u"--watch"_s));
        QCOMPARE(watch.messages, QByteArray("vora-status: the output cannot be written\n"));
        QCOMPARE(watch.iExit, 2);
        QCOMPARE(RunCommand(u"sh"_s, listShell + QStringList(u"--help"_s)).iExit, 2);
    }

    void documentExample()
    {
        const QString strText = QString::fromUtf8(ReadFile(c_strDocument));
        const QString strCommands = strText.section(u"\n```sh\n"_s, 1, 1).section(u"\n```\n"_s, 0, 0);
        const QString strOutput = strText.section(u"\n```text\n"_s, 1, 1).section(u"\n```\n"_s, 0, 0);
        QVERIFY(strCommands.contains(QLatin1String("vora-status --lang en --hex example.dat")));
        QVERIFY(!strOutput.isEmpty());

        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, QFileInfo(c_strProgram).path() + QLatin1Char(':') + environment.value(u"PATH"_s));
        const stRun run = RunCommand(u"sh"_s, {u"-c"_s, strCommands}, environment);
        QCOMPARE(QString::fromUtf8(run.output), strOutput + QLatin1Char('\n'));
        QCOMPARE(run.messages, QByteArray());
        QVERIFY(strText.contains(u"The exit status is %1:"_s.arg(run.iExit)));
    }

    void documentCodes()
    {
        const auto compare = [](const QJsonObject& found, const stGoldenCode& code) {
            QCOMPARE(found.value(u"code"_s).toInt(), code.iRawCode);
            QCOMPARE(found.value(u"value"_s).toInt(), code.iValue);
            QCOMPARE(found.value(u"english"_s).toString(), code.strEnglish);
            QCOMPARE(found.value(u"chinese"_s).toString(), code.strChinese);
        };
        const QList<stGoldenCode> listError = Sent(GoldenErrors());
        QList<quint16> listCode;
        for (const stGoldenCode& code : listError) {
            listCode.append(static_cast<quint16>(code.iRawCode));
        }
        const stRun errors = Run({u"--json"_s, Write(WithErrors(listCode))});
        const QJsonArray listReported = errors.Report().value(u"reply"_s).toObject().value(u"errors"_s).toArray();
        QCOMPARE(static_cast<std::size_t>(listReported.size()), c_stErrorCodeList.size());
        QCOMPARE(listReported.size(), listError.size());
        for (int i = 0; i < listReported.size(); ++i) {
            compare(listReported.at(i).toObject(), listError.at(i));
        }
        const QList<stGoldenCode> listState = Sent(GoldenStates());
        QCOMPARE(static_cast<std::size_t>(listState.size()), c_stStatusCodeList.size());
        for (const stGoldenCode& code : listState) {
            const QString strPath = Write(ReplyInState(static_cast<quint8>(code.iRawCode)));
            const QJsonObject reply = Run({u"--json"_s, strPath}).Report().value(u"reply"_s).toObject();
            compare(reply.value(u"state"_s).toObject(), code);
        }
    }

    void documentKeys()
    {
        QVERIFY(GoldenKeys().size() > 1);
        const auto value = [this](quint16 wKey, const QString& strKey) {
            const stRun run = Run({u"--json"_s, Write(WithSupplies({{wKey, "A"}}))});
            return run.Report().value(u"reply"_s).toObject().value(strKey);
        };
        for (const stGoldenKey& key : GoldenKeys()) {
            QCOMPARE(value(key.wKey, key.strName), key.iBytes == 0 ? QJsonValue(u"A"_s) : QJsonValue(65));
            const stReplyLabel* pLabel = SuppliesLabel(key.wKey);
            QVERIFY2(pLabel != nullptr, qPrintable(key.strName));
            QCOMPARE(pLabel->Key(), key.strName);
            QCOMPARE(QString::fromUtf8(pLabel->Name(enLanguageEnglish)), key.strEnglish);
            QCOMPARE(QString::fromUtf8(pLabel->Name(enLanguageChinese)), key.strChinese);
        }
        QCOMPARE(static_cast<std::size_t>(GoldenNumberKeys().size()), c_enSuppliesNumberList.size());
        QCOMPARE(value(0x1003, u"prints"_s), QJsonValue(65));
    }
};

QTEST_GUILESS_MAIN(tst_vora_status)

#include "tst_vora_status.moc"
