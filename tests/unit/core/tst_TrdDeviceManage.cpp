// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"

#include "OpenHook.h"
#include "ReadFault.h"
#include "StatusFolder.h"

#include <QThread>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <future>
#include <memory>
#include <vector>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

Q_DECLARE_METATYPE(stPrinterInfo)

namespace {

const QString c_strListPath = u"/opt/vora/vora-printer-k507/cfg/printerlist.ini"_s;

/// Settings files are read again only when their size or time differs; two writes can fall into one tick of the clock.
bool MakeListNews()
{
    static qint64 s_iSecond = 1700000000;
    return SetModificationTime(c_strListPath, QDateTime::fromSecsSinceEpoch(++s_iSecond));
}

bool WriteRawList(const QByteArray& content)
{
    return WriteFile(c_strListPath, content) && MakeListNews();
}

bool WriteList(const QList<stPrinterInfo>& listPrinter)
{
    StatusFolder().WritePrinterList(listPrinter);
    return MakeListNews();
}

stPrinterInfo Printer(const char* pName, const char* pPort, const char* pModel = "RA7QX", int iConnectType = 1,
                      const char* pUri = "usb://x")
{
    return {QString::fromUtf8(pName), QString::fromUtf8(pModel), iConnectType, QString::fromUtf8(pPort),
            QString::fromUtf8(pUri)};
}

/// Name, model, connection type, port and URI.
QString Text(const stPrinterInfo& info)
{
    return QStringList{info.strPrinterName, info.enType, QString::number(info.iConnectType), info.strPort, info.strURI}
        .join(QLatin1Char('|'));
}

QStringList Texts(const QList<stPrinterInfo>& listPrinter)
{
    QStringList listText;
    for (const stPrinterInfo& info : listPrinter) {
        listText.append(Text(info));
    }
    return listText;
}

QStringList Names(const QList<stPrinterManager>& listPrinter)
{
    QStringList listName;
    for (const stPrinterManager& printer : listPrinter) {
        listName.append(printer.printerInfo.strPrinterName);
    }
    return listName;
}

QStringList ReadList()
{
    return Texts(TrdDeviceManage().GetPrinterInfo(true));
}

/// One pass of the loop: a worker that was told to quit looks at the file once.
void RunOnePass(TrdDeviceManage& worker)
{
    worker.SlotThreadQuit();
    worker.m_bTaskRunning = false;
    worker.SlotTaskStart();
}

/// Entries whose printers have all been reached.
QList<stPrinterManager> Reached(const QList<stPrinterInfo>& listPrinter)
{
    QList<stPrinterManager> listManager;
    for (const stPrinterInfo& info : listPrinter) {
        stPrinterState state;
        state.enCurrentStatus = 3;
        state.dwBlackInkRemainer = 80;
        state.listErrorStatus = {enErrorNoPaper};
        state.iReadFailCount = 4;
        listManager.append({info, state});
    }
    return listManager;
}

bool IsReset(const stPrinterState& state)
{
    return state.enCurrentStatus == 2 && state.dwBlackInkRemainer == 0 && state.listErrorStatus.isEmpty() &&
           state.iReadFailCount == 0;
}

bool CanLockInAnotherThread()
{
    return std::async(std::launch::async,
                      [] { return std::unique_lock(g_mutexPrinterList, std::try_to_lock).owns_lock(); })
        .get();
}

/// What a slot finds in the shared list when the worker tells of it.
struct stReport
{
    QStringList listName;
    bool bAllReset;
};

/// A list worker in a thread of its own.
class RunningWorker
{
public:
    RunningWorker()
    {
        m_worker.Init(&m_listPrinter);
        QObject::connect(
            &m_worker, &TrdDeviceManage::SgnUpdatePrinterList, &m_worker,
            [this] {
                const bool bAllReset =
                    std::all_of(m_listPrinter.cbegin(), m_listPrinter.cend(),
                                [](const stPrinterManager& printer) { return IsReset(printer.printerState); });
                m_listReport.push_back({Names(m_listPrinter), bAllReset});
            },
            Qt::DirectConnection);
        m_worker.moveToThread(&m_thread);
        m_thread.start();
    }
    ~RunningWorker() { QuitAndWait(); }
    RunningWorker(const RunningWorker&) = delete;
    RunningWorker& operator=(const RunningWorker&) = delete;

    void Start() { QMetaObject::invokeMethod(&m_worker, "SlotTaskStart", Qt::QueuedConnection); }
    void StartAgainFromHere() { m_worker.SlotTaskStart(); }

    bool QuitAndWait()
    {
        m_worker.SlotThreadQuit();
        m_thread.quit();
        return m_thread.wait(2000);
    }

    std::vector<stReport> Reports() const
    {
        const std::lock_guard lock(g_mutexPrinterList); // held by the worker while it tells
        return m_listReport;
    }

    void ReachAll()
    {
        const std::lock_guard lock(g_mutexPrinterList);
        for (stPrinterManager& printer : m_listPrinter) {
            printer.printerState.enCurrentStatus = 3;
        }
    }

private:
    QList<stPrinterManager> m_listPrinter;
    std::vector<stReport> m_listReport;
    QThread m_thread;
    TrdDeviceManage m_worker;
};

} // namespace

class tst_TrdDeviceManage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(QDir(u"/opt"_s).isEmpty(), "wants an /opt of its own, see tests/Sandbox.cmake"); }

    void init()
    {
        ::alarm(40); // whatever blocks ends the program
    }

    void cleanup()
    {
        ::alarm(0);
        QDir(u"/opt/vora"_s).removeRecursively();
    }

    void metaObjectKeepsItsOrder()
    {
        const QMetaObject& meta = TrdDeviceManage::staticMetaObject;
        QCOMPARE(meta.className(), "TrdDeviceManage");
        QCOMPARE(meta.superClass(), &UtilThreadBase::staticMetaObject);
        QCOMPARE(meta.methodCount() - meta.methodOffset(), 3);
        const QMetaMethod update = meta.method(meta.methodOffset());
        QCOMPARE(update.methodSignature(), QByteArray("SgnUpdatePrinterList()"));
        QCOMPARE(update.methodType(), QMetaMethod::Signal);
        const QMetaMethod start = meta.method(meta.methodOffset() + 1);
        QCOMPARE(start.methodSignature(), QByteArray("SlotTaskStart()"));
        QCOMPARE(start.methodType(), QMetaMethod::Slot);
        const QMetaMethod quit = meta.method(meta.methodOffset() + 2);
        QCOMPARE(quit.methodSignature(), QByteArray("SlotThreadQuit()"));
        QCOMPARE(quit.methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void startsWithoutAList()
    {
        QObject parent;
        const auto worker = new TrdDeviceManage(&parent);
        QCOMPARE(worker->parent(), &parent);
        QCOMPARE(worker->m_pListPrinterManager, nullptr);
        QVERIFY(!worker->m_bTaskRunning);
        QVERIFY(!worker->m_bThreadQuit);
#ifdef VORA_HAS_TEXT_CODEC
        QCOMPARE(worker->m_pCodec->name(), QByteArray("UTF-8"));
#endif
        QList<stPrinterManager> listPrinter;
        worker->Init(&listPrinter);
        QCOMPARE(worker->m_pListPrinterManager, &listPrinter);
    }

    void readsThePrintersOfTheFile()
    {
        QVERIFY(WriteRawList(
            "[Main]\nCount=2\n"
            "[printer_0]\nName=Office\nModel=RA7QX\nConnectType=1\nPort=001\nURI=usb://Vora/RA7QX\n"
            "[printer_1]\nName=办公室🖨\nModel=RB9X\nConnectType=2\nPort=10.0.0.7\nURI=socket://10.0.0.7\n"));
        QCOMPARE(ReadList(), (QStringList{u"Office|RA7QX|1|001|usb://Vora/RA7QX"_s,
                                          u"办公室🖨|RB9X|2|10.0.0.7|socket://10.0.0.7"_s}));
    }

    void argumentHasNoEffect()
    {
        QVERIFY(WriteList({Printer("Office", "1")}));
        QCOMPARE(Texts(TrdDeviceManage().GetPrinterInfo(false)), Texts({Printer("Office", "1")}));
        QCOMPARE(Texts(TrdDeviceManage().GetPrinterInfo(true)), Texts({Printer("Office", "1")}));
    }

    void readingWritesNothing()
    {
        const QByteArray content = "; by hand\n[Main]\nCount = 1\n\n[printer_0]\nName = Office\n";
        QVERIFY(WriteRawList(content));
        const QDateTime time = QFileInfo(c_strListPath).lastModified();
        QCOMPARE(ReadList(), QStringList{u"Office||0||"_s});
        QCOMPARE(ReadFile(c_strListPath), content);
        QCOMPARE(QFileInfo(c_strListPath).lastModified(), time);
        QCOMPARE(
            QDir(QFileInfo(c_strListPath).path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
            QStringList{u"printerlist.ini"_s});
    }

    void count_data()
    {
        QTest::addColumn<QByteArray>("head");
        QTest::addColumn<QStringList>("names");
        const QStringList none;
        const QStringList one{u"A"_s};
        const QStringList two{u"A"_s, u"B"_s};
        const QStringList three{u"A"_s, u"B"_s, QString()};
        QTest::newRow("no group Main") << QByteArray() << none;
        QTest::newRow("no Count") << QByteArray("[Main]\nOther=2\n") << none;
        QTest::newRow("empty") << QByteArray("[Main]\nCount=\n") << none;
        QTest::newRow("zero") << QByteArray("[Main]\nCount=0\n") << none;
        QTest::newRow("negative") << QByteArray("[Main]\nCount=-1\n") << none;
        QTest::newRow("smallest number") << QByteArray("[Main]\nCount=-2147483648\n") << none;
        QTest::newRow("not a number") << QByteArray("[Main]\nCount=two\n") << none;
        QTest::newRow("number and text") << QByteArray("[Main]\nCount=2x\n") << none;
        QTest::newRow("list") << QByteArray("[Main]\nCount=2,2\n") << none;
        QTest::newRow("key in small letters") << QByteArray("[Main]\ncount=2\n") << none;
        QTest::newRow("group in small letters") << QByteArray("[main]\nCount=2\n") << none;
        QTest::newRow("one of two") << QByteArray("[Main]\nCount=1\n") << one;
        QTest::newRow("two of two") << QByteArray("[Main]\nCount=2\n") << two;
        QTest::newRow("quoted") << QByteArray("[Main]\nCount=\"2\"\n") << two;
        QTest::newRow("one more than there are") << QByteArray("[Main]\nCount=3\n") << three;
        QTest::newRow("largest number") << QByteArray("[Main]\nCount=2147483647\n") << two;
        QTest::newRow("just not plausible") << QByteArray("[Main]\nCount=1001\n") << two;
    }

    void count()
    {
        QFETCH(const QByteArray, head);
        QVERIFY(WriteRawList(head + "[printer_0]\nName=A\n[printer_1]\nName=B\n"));
        QStringList listName;
        for (const stPrinterInfo& info : TrdDeviceManage().GetPrinterInfo(true)) {
            listName.append(info.strPrinterName);
        }
        QTEST(listName, "names");
    }

    void missingKeysGiveEmptyValues()
    {
        QVERIFY(WriteRawList("[Main]\nCount=2\n[printer_0]\nOther=x\nname=small\n"));
        QCOMPARE(ReadList(), (QStringList{u"||0||"_s, u"||0||"_s}));
    }

    void connectTypeIsANumber_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("type");
        QTest::newRow("USB") << QByteArray("1") << 1;
        QTest::newRow("network") << QByteArray("2") << 2;
        QTest::newRow("negative") << QByteArray("-1") << -1;
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("text") << QByteArray("USB") << 0;
    }

    void connectTypeIsANumber()
    {
        QFETCH(const QByteArray, value);
        QVERIFY(WriteRawList("[Main]\nCount=1\n[printer_0]\nConnectType=" + value + '\n'));
        const QList<stPrinterInfo> listPrinter = TrdDeviceManage().GetPrinterInfo(true);
        QCOMPARE(listPrinter.size(), 1);
        QTEST(listPrinter.first().iConnectType, "type");
    }

    void unquotedCommaIsPartOfTheText_data()
    {
        QTest::addColumn<QString>("text");
        for (const char* pText : {"Off,ice", "a,b,c", "a,", ",a", ",", "办,公", "Off,@ice", "@Off,ice", "@,@"}) {
            QTest::newRow(pText) << QString::fromUtf8(pText);
        }
    }

    void unquotedCommaIsPartOfTheText()
    {
        QFETCH(const QString, text);
        const QByteArray value = text.toUtf8() + '\n';
        QVERIFY(WriteRawList("[Main]\nCount=1\n[printer_0]\nName=" + value + "Model=" + value + "Port=" + value +
                             "URI=" + value));
        QCOMPARE(ReadList(), QStringList{text + QLatin1Char('|') + text + u"|0|"_s + text + QLatin1Char('|') + text});
    }

    void everyTextSurvivesTheFile_data()
    {
        QTest::addColumn<QString>("text");
        for (const char* pText : {"Office",
                                  "",
                                  "办公室打印机",
                                  "two words",
                                  " blanks outside ",
                                  "it's",
                                  "\"quoted\"",
                                  "say \"hi\"",
                                  "$(reboot)",
                                  "`reboot`",
                                  "a;b",
                                  "a/b",
                                  "../a",
                                  "a\\b",
                                  "a\\",
                                  "50%",
                                  "%s%n",
                                  "%5F",
                                  "#1",
                                  "a=b",
                                  "[x]",
                                  "-a",
                                  "Off,ice",
                                  "a, b",
                                  "@home",
                                  "@Invalid()",
                                  "line\nbreak",
                                  "tab\t",
                                  "\x01",
                                  "é",
                                  "2"}) {
            QTest::newRow(pText) << QString::fromUtf8(pText);
        }
        QTest::newRow("long") << QString(5000, QChar(0x58A8));
    }

    void everyTextSurvivesTheFile()
    {
        QFETCH(const QString, text);
        const QByteArray utf8 = text.toUtf8();
        const stPrinterInfo info = Printer(utf8.constData(), utf8.constData(), utf8.constData(), 7, utf8.constData());
        QVERIFY(WriteList({info, Printer("next", "1")}));
        QCOMPARE(ReadList(), Texts({info, Printer("next", "1")}));
    }

    void plausibleCountGivesARecordEach()
    {
        QVERIFY(WriteRawList("[Main]\nCount=1000\n"));
        QCOMPARE(ReadList(), QStringList(QVector<QString>(1000, u"||0||"_s).toList()));
    }

    void hugeCountReadsExistingGroupsInNumericOrder()
    {
        QByteArray content = "[Main]\nCount=2147483647\n";
        for (const char* pGroup : {"printer_10", "printer_2", "printer_1000000", "printer_0", "printer_007",
                                   "printer_+3", "printer_-4", "printer_x", "printer_", "printer_2147483647",
                                   "printer_4294967301", "Printer_5", "xprinter_6", "printer_8x"}) {
            content += QByteArray("[") + pGroup + "]\nName=" + pGroup + '\n';
        }
        QVERIFY(WriteRawList(content));
        QCOMPARE(ReadList(), (QStringList{u"printer_0||0||"_s, u"printer_2||0||"_s, u"printer_10||0||"_s,
                                          u"printer_1000000||0||"_s}));
    }

    void hugeCountReadsAThousandGroups()
    {
        QByteArray content = "[Main]\nCount=2147483647\n";
        for (int i = 3000; i > 0; --i) {
            content += "[printer_" + QByteArray::number(i) + "]\nName=" + QByteArray::number(i) + '\n';
        }
        QVERIFY(WriteRawList(content));
        const QStringList listText = ReadList();
        QCOMPARE(listText.size(), 1000);
        QCOMPARE(listText.first(), u"1||0||"_s);
        QCOMPARE(listText.last(), u"1000||0||"_s);
    }

    /// Lists of variants within each other, deeper than a stack is.
    void nestedVariantsAreText()
    {
        const QByteArray list = QByteArray(R"(\0\0\0\x9\0\0\0\x1)");
        const QByteArray value = "@Variant(" + list.repeated(30000) + ')';
        QVERIFY(WriteRawList("[Main]\nCount=2\n[printer_0]\nName=" + value + "\n[printer_1]\nName=A\n"));
        const QList<stPrinterInfo> listPrinter = TrdDeviceManage().GetPrinterInfo(true);
        QCOMPARE(listPrinter.size(), 2);
        QVERIFY(listPrinter.at(0).strPrinterName.startsWith(QLatin1String("@Variant(")));
        QCOMPARE(listPrinter.at(1).strPrinterName, u"A"_s);
    }

    void missingFileAndFolder()
    {
        QCOMPARE(ReadList(), QStringList());
        QVERIFY(!QFile::exists(u"/opt/vora"_s));
        QVERIFY(QDir().mkpath(QFileInfo(c_strListPath).path()));
        QCOMPARE(ReadList(), QStringList());
    }

    void damagedFileGivesNoPrinters_data()
    {
        QTest::addColumn<QByteArray>("content");
        QByteArray noise;
        quint32 dwSeed = 12345;
        for (int i = 0; i < 65536; ++i) {
            dwSeed = dwSeed * 1664525u + 1013904223u;
            noise.append(static_cast<char>(dwSeed >> 24));
        }
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("noise") << noise;
        QTest::newRow("zeros") << QByteArray(4096, '\0');
        QTest::newRow("ones") << QByteArray(4096, '\xFF');
        QTest::newRow("one long line") << QByteArray(1 << 20, 'x');
        QTest::newRow("more than 1 MiB") << "[Main]\nCount=1\n[printer_0]\nName=A\n" + QByteArray(1 << 20, '\n');
        QTest::newRow("open bracket") << QByteArray("[Main");
        QTest::newRow("open quote before the Count") << QByteArray("[Main]\nOther=\"x\nCount=1\n[printer_0]\nName=A\n");
        QTest::newRow("no group") << QByteArray("Count=1\nName=A\n");
        QTest::newRow("other language") << QByteArray("{\"Main\": {\"Count\": 1}}");
    }

    void damagedFileGivesNoPrinters()
    {
        QFETCH(const QByteArray, content);
        QVERIFY(WriteRawList(content));
        QCOMPARE(ReadList(), QStringList());
    }

    void otherThanAFileGivesNoPrinters_data()
    {
        QTest::addColumn<QString>("kind");
        for (const char* pKind :
             {"FIFO", "folder", "link to nothing", "link to itself", "link to a FIFO", "link to a folder", "device"}) {
            QTest::newRow(pKind) << QString::fromLatin1(pKind);
        }
    }

    void otherThanAFileGivesNoPrinters()
    {
        QFETCH(const QString, kind);
        const QString strOther = u"/opt/vora/other"_s;
        const QByteArray path = QFile::encodeName(c_strListPath);
        QVERIFY(QDir().mkpath(QFileInfo(c_strListPath).path()));
        if (kind == QLatin1String("FIFO")) {
            QCOMPARE(::mkfifo(path.constData(), 0600), 0);
        } else if (kind == QLatin1String("folder")) {
            QVERIFY(QDir().mkdir(c_strListPath));
        } else if (kind == QLatin1String("link to nothing")) {
            QVERIFY(QFile::link(strOther, c_strListPath));
        } else if (kind == QLatin1String("link to itself")) {
            QVERIFY(QFile::link(c_strListPath, c_strListPath));
        } else if (kind == QLatin1String("link to a FIFO")) {
            QCOMPARE(::mkfifo(QFile::encodeName(strOther).constData(), 0600), 0);
            QVERIFY(QFile::link(strOther, c_strListPath));
        } else if (kind == QLatin1String("link to a folder")) {
            QVERIFY(QFile::link(u"/opt"_s, c_strListPath));
        } else {
            QVERIFY(QFile::link(u"/dev/zero"_s, c_strListPath));
        }
        QCOMPARE(ReadList(), QStringList());
        QVERIFY(!QFile::exists(strOther) || kind == QLatin1String("link to a FIFO"));
    }

    void unreadableFileGivesNoPrinters()
    {
        QVERIFY(WriteList({Printer("Office", "1")}));
        QVERIFY(QFile::setPermissions(c_strListPath, QFile::Permissions()));
        const bool bRoot = ::geteuid() == 0; // who can read everything
        QVERIFY(!bRoot || ::seteuid(65534) == 0);
        const QStringList listText = ReadList();
        QVERIFY(!bRoot || ::seteuid(0) == 0);
        QCOMPARE(listText, QStringList());
    }

    void linkToAListIsRead()
    {
        QVERIFY(WriteList({Printer("Office", "1")}));
        const QString strOther = u"/opt/vora/other.ini"_s;
        QVERIFY(QFile::rename(c_strListPath, strOther));
        QVERIFY(QFile::link(strOther, c_strListPath));
        QCOMPARE(ReadList(), Texts({Printer("Office", "1")}));
    }

    void readsAgainWhatChanged()
    {
        for (const QList<stPrinterInfo>& listPrinter :
             {QList<stPrinterInfo>{Printer("A", "1")}, QList<stPrinterInfo>{Printer("B", "1")}, QList<stPrinterInfo>{},
              QList<stPrinterInfo>{Printer("B", "1"), Printer("A", "1")}}) {
            QVERIFY(WriteList(listPrinter));
            QCOMPARE(ReadList(), Texts(listPrinter));
        }
        StatusFolder().RemovePrinterList();
        QCOMPARE(ReadList(), QStringList());
    }

    void initPrinterListCopiesIdentityAndResetsState()
    {
        const QList<stPrinterInfo> listPrinter = {Printer("A", "1", "RB9Q", 2, "socket://a"),
                                                  Printer("", "", "", 0, ""),
                                                  Printer("A", "1", "RB9Q", 2, "socket://a")};
        const QList<stPrinterManager> listManager = TrdDeviceManage().GetInitPrinterList(listPrinter);
        QCOMPARE(listManager.size(), 3);
        for (int i = 0; i < 3; ++i) {
            QCOMPARE(Text(listManager.at(i).printerInfo), Text(listPrinter.at(i)));
            const stPrinterState& state = listManager.at(i).printerState;
            QCOMPARE(state.strPrinterSerialNumber, QString());
            QCOMPARE(state.enCurrentStatus, 2);
            QVERIFY(state.listErrorStatus.isEmpty());
            QVERIFY(state.listWarningStatus.isEmpty());
            QCOMPARE(state.enSpplyType, 0);
            QCOMPARE(state.dwRemainingToner, 0ul);
            QCOMPARE(state.dwPrinterNumOfPrint, 0ul);
            QCOMPARE(state.iReadFailCount, 0);
        }
    }

    void initPrinterListOfNothingIsEmpty()
    {
        QVERIFY(TrdDeviceManage().GetInitPrinterList({}).isEmpty());
    }

    void initResetsAFilledRecord()
    {
        stPrinterManager printer = Reached({Printer("A", "1", "RB9Q", 2, "socket://a")}).first();
        TrdDeviceManage worker;
        worker.InitStPrinterInfo(printer.printerInfo);
        QCOMPARE(Text(printer.printerInfo), u"|-1|0||"_s);
        worker.InitStPrinterState(printer.printerState);
        QVERIFY(IsReset(printer.printerState));
    }

    void refresh_data()
    {
        QTest::addColumn<QList<stPrinterInfo>>("before");
        QTest::addColumn<QList<stPrinterInfo>>("after");
        QTest::addColumn<bool>("expected");
        using List = QList<stPrinterInfo>;
        const stPrinterInfo a = Printer("A", "1", "RA7Q", 1, "usb://a");
        const stPrinterInfo b = Printer("B", "2", "RB9X", 2, "socket://b");
        QTest::newRow("same") << List{a, b} << List{a, b} << false;
        QTest::newRow("new model") << List{a, b} << List{a, Printer("B", "2", "RB9Q", 2, "socket://b")} << false;
        QTest::newRow("new connection type")
            << List{a, b} << List{a, Printer("B", "2", "RB9X", 1, "socket://b")} << false;
        QTest::newRow("new URI") << List{a, b} << List{Printer("A", "1", "RA7Q", 1, "usb://z"), b} << false;
        QTest::newRow("first") << List{} << List{a} << true;
        QTest::newRow("one more") << List{a} << List{a, b} << true;
        QTest::newRow("one more before") << List{b} << List{a, b} << true;
        QTest::newRow("one less") << List{a, b} << List{a} << true;
        QTest::newRow("first gone") << List{a, b} << List{b} << true;
        QTest::newRow("all gone") << List{a, b} << List{} << true;
        QTest::newRow("order") << List{a, b} << List{b, a} << true;
        QTest::newRow("port of the first") << List{a, b} << List{Printer("A", "3", "RA7Q", 1, "usb://a"), b} << true;
        QTest::newRow("port of the last") << List{a, b} << List{a, Printer("B", "3", "RB9X", 2, "socket://b")} << true;
        QTest::newRow("name") << List{a, b} << List{a, Printer("C", "2", "RB9X", 2, "socket://b")} << true;
        QTest::newRow("letter case of a name")
            << List{a, b} << List{Printer("a", "1", "RA7Q", 1, "usb://a"), b} << true;
        QTest::newRow("letter case of a port") << List{Printer("A", "p")} << List{Printer("A", "P")} << true;
        QTest::newRow("twins") << List{a, a} << List{a, a} << false;
        QTest::newRow("one twin less") << List{a, a} << List{a} << true;
        QTest::newRow("record without name") << List{Printer("", "")} << List{Printer("", "")} << false;
    }

    void refresh()
    {
        QFETCH(const QList<stPrinterInfo>, before);
        QFETCH(const QList<stPrinterInfo>, after);
        QFETCH(const bool, expected);
        QList<stPrinterManager> listPrinter = Reached(before);
        QVERIFY(WriteList(after));
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        QSignalSpy spy(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
        RunOnePass(worker);

        QCOMPARE(spy.size(), expected ? 1 : 0);
        const QList<stPrinterInfo>& listExpected = expected ? after : before;
        QCOMPARE(listPrinter.size(), listExpected.size());
        for (int i = 0; i < listPrinter.size(); ++i) {
            QCOMPARE(Text(listPrinter.at(i).printerInfo), Text(listExpected.at(i)));
            QCOMPARE(IsReset(listPrinter.at(i).printerState), expected);
        }
    }

    void missingFileTakesAllPrintersAway()
    {
        QList<stPrinterManager> listPrinter = Reached({Printer("A", "1")});
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        QSignalSpy spy(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
        RunOnePass(worker);
        QCOMPARE(spy.size(), 1);
        QVERIFY(listPrinter.isEmpty());
    }

    void nothingIsToldWithoutPrinters()
    {
        QList<stPrinterManager> listPrinter;
        for (const bool bFile : {false, true}) {
            QVERIFY(!bFile || WriteList({}));
            TrdDeviceManage worker;
            worker.Init(&listPrinter);
            QSignalSpy spy(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
            RunOnePass(worker);
            QCOMPARE(spy.size(), 0);
        }
    }

    void sameListIsToldOnce()
    {
        QVERIFY(WriteList({Printer("A", "1"), Printer("Off,ice", "办公室")}));
        QList<stPrinterManager> listPrinter;
        int iTold = 0;
        for (int i = 0; i < 3; ++i) {
            TrdDeviceManage worker;
            worker.Init(&listPrinter);
            QSignalSpy spy(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
            RunOnePass(worker);
            iTold += static_cast<int>(spy.size());
        }
        QCOMPARE(iTold, 1);
    }

    void signalIsEmittedUnderTheLock()
    {
        QVERIFY(WriteList({Printer("A", "1")}));
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        QStringList listFound;
        QObject::connect(&worker, &TrdDeviceManage::SgnUpdatePrinterList,
                         [&] { listFound = Names(listPrinter) << (CanLockInAnotherThread() ? u"free"_s : u"held"_s); });
        QVERIFY(CanLockInAnotherThread());
        RunOnePass(worker);
        QCOMPARE(listFound, (QStringList{u"A"_s, u"held"_s}));
        QVERIFY(CanLockInAnotherThread());
    }

    void fileIsReadWithoutTheLock()
    {
        QVERIFY(WriteList({Printer("A", "1")}));
        const std::lock_guard lock(g_mutexPrinterList);
        auto reading = std::async(std::launch::async, ReadList);
        QCOMPARE(reading.wait_for(std::chrono::seconds(10)), std::future_status::ready);
        QCOMPARE(reading.get(), Texts({Printer("A", "1")}));
    }

    void initWithNullTakesTheListAway()
    {
        QVERIFY(WriteList({Printer("A", "1")}));
        TrdDeviceManage worker;
        auto pListPrinter = std::make_unique<QList<stPrinterManager>>();
        worker.Init(pListPrinter.get());
        worker.Init(nullptr);
        pListPrinter.reset();
        QSignalSpy spy(&worker, &TrdDeviceManage::SgnUpdatePrinterList);
        RunOnePass(worker);
        QCOMPARE(spy.size(), 0);
    }

    void initWaitsForTheLock()
    {
        TrdDeviceManage worker;
        std::unique_lock lock(g_mutexPrinterList);
        auto taking = std::async(std::launch::async, [&worker] { worker.Init(nullptr); });
        QCOMPARE(taking.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
        lock.unlock();
        QCOMPARE(taking.wait_for(std::chrono::seconds(10)), std::future_status::ready);
    }

    void listThatCouldNotBeOpenedIsReadAgain()
    {
        QVERIFY(WriteList({Printer("A", "1")}));
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);

        const int iFree = ::dup(0);
        ::close(iFree);
        rlimit limit = {};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        rlimit noneLeft = limit;
        noneLeft.rlim_cur = static_cast<rlim_t>(iFree);
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &noneLeft), 0);
        RunOnePass(worker);
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        QVERIFY(listPrinter.isEmpty());
        RunOnePass(worker);
        QCOMPARE(listPrinter.size(), 1);
    }

    void listThatCannotBeReadLeavesThePrinters_data()
    {
        QTest::addColumn<int>("error");
        QTest::newRow("input/output error") << EIO;
        QTest::newRow("stale network file") << ESTALE;
    }

    void listThatCannotBeReadLeavesThePrinters()
    {
        QFETCH(const int, error);
        QVERIFY(WriteList({Printer("A", "1")}));
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        RunOnePass(worker);
        QCOMPARE(Names(listPrinter), QStringList{u"A"_s});

        QVERIFY(WriteList({Printer("B", "2"), Printer("C", "3")}));
        {
            const ReadFault fault(error);
            RunOnePass(worker);
            RunOnePass(worker);
            QCOMPARE(Names(listPrinter), QStringList{u"A"_s});
        }
        RunOnePass(worker);
        QCOMPARE(Names(listPrinter), (QStringList{u"B"_s, u"C"_s}));
    }

    void listThatChangesWhileItIsReadIsNotBelieved()
    {
        QVERIFY(WriteList({Printer("A", "1")}));
        QList<stPrinterManager> listPrinter;
        TrdDeviceManage worker;
        worker.Init(&listPrinter);
        RunOnePass(worker);

        QVERIFY(WriteRawList("[Main]\nCount=2\n[printer_0]\nName=B\n"));
        {
            const OpenHook writer(c_strListPath, [] {
                return QFile::rename(c_strListPath, c_strListPath + QLatin1Char('~')) &&
                       QFile::copy(c_strListPath + QLatin1Char('~'), c_strListPath);
            });
            RunOnePass(worker);
            QCOMPARE(Names(listPrinter), QStringList{u"A"_s});
        }
        QVERIFY(WriteRawList("[Main]\nCount=2\n[printer_0]\nName=B\n[printer_1]\nName=C\n"));
        RunOnePass(worker);
        QCOMPARE(Names(listPrinter), (QStringList{u"B"_s, u"C"_s}));
    }

    void loopFollowsTheFile()
    {
        const stPrinterInfo a = Printer("A", "1");
        const stPrinterInfo b = Printer("B", "2");
        const auto names = [](const char* pNames) {
            return QString::fromLatin1(pNames).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        };
        QVERIFY(WriteList({a}));
        RunningWorker worker;
        worker.Start();
        worker.Start(); // comes to its turn when the loop has ended
        QTRY_COMPARE_WITH_TIMEOUT(worker.Reports().size(), std::size_t(1), 5000);
        worker.ReachAll();
        worker.StartAgainFromHere(); // would not return before the loop's end
        QVERIFY(WriteList({a, b}));
        QTRY_COMPARE_WITH_TIMEOUT(worker.Reports().size(), std::size_t(2), 5000);
        worker.ReachAll();
        QVERIFY(WriteList({b, a}));
        QTRY_COMPARE_WITH_TIMEOUT(worker.Reports().size(), std::size_t(3), 5000);
        worker.ReachAll();
        StatusFolder().RemovePrinterList();
        QTRY_COMPARE_WITH_TIMEOUT(worker.Reports().size(), std::size_t(4), 5000);
        QVERIFY(WriteList({a})); // what a second loop would tell
        QVERIFY(worker.QuitAndWait());

        const std::vector<stReport> listReport = worker.Reports();
        QCOMPARE(listReport.size(), std::size_t(4));
        QCOMPARE(listReport[0].listName, names("A"));
        QCOMPARE(listReport[1].listName, names("A B"));
        QCOMPARE(listReport[2].listName, names("B A"));
        QCOMPARE(listReport[3].listName, names(""));
        for (const stReport& report : listReport) {
            QVERIFY(report.bAllReset);
        }
    }
};

QTEST_MAIN(tst_TrdDeviceManage)

#include "tst_TrdDeviceManage.moc"
