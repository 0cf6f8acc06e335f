// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "TrdDeviceManage.h"

#include "OpenHook.h"
#include "Plant.h"
#include "Rows.h"
#include "RunningWorker.h"
#include "StatusFolder.h"
#include "UtilPrinterList.h"

#include <QtTest>

#include <memory>

namespace {

using PrinterList = QList<stPrinterManager>;

const QString c_strListPath = u"/opt/vora/vora-printer-k507/cfg/printerlist.ini"_s;

void WriteList(const QString& strPrinters)
{
    StatusFolder().WritePrinterList(Printers(strPrinters));
}

/// The file's printers; "not known" when that is so.
QStringList ReadList()
{
    const std::optional<QList<stPrinterInfo>> listPrinter = ReadPrinterList();
    return listPrinter ? Texts(*listPrinter) : QStringList{u"not known"_s};
}

/// Entries of the shared list with one state.
PrinterList Entries(const QString& strPrinters, const stPrinterState& state)
{
    PrinterList listPrinter;
    for (const stPrinterInfo& info : Printers(strPrinters)) {
        listPrinter.append({info, state});
    }
    return listPrinter;
}

stPrinterState ReachedState()
{
    stPrinterState state;
    state.enCurrentStatus = 3;
    state.dwBlackInkRemainer = 80;
    state.listErrorStatus = {enErrorNoPaper};
    state.iReadFailCount = 4;
    return state;
}

} // namespace

class tst_TrdDeviceManage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(QDir(u"/opt"_s).isEmpty(), "wants an /opt of its own, see tests/Sandbox.cmake"); }

    void init()
    {
        QVERIFY(QDir().mkpath(QFileInfo(c_strListPath).path()));
        m_pWorker = std::make_unique<TrdDeviceManage>();
        m_listPrinter.clear();
        m_pWorker->Init(&m_listPrinter);
    }

    void cleanup() { QDir(u"/opt/vora"_s).removeRecursively(); }

    void metaObjectKeepsItsOrder()
    {
        const QMetaObject& meta = TrdDeviceManage::staticMetaObject;
        QCOMPARE(meta.className(), "TrdDeviceManage");
        QCOMPARE(meta.superClass(), &UtilThreadBase::staticMetaObject);
        QStringList listMethod;
        for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
            const char* pKind = meta.method(i).methodType() == QMetaMethod::Signal ? "signal " : "slot ";
            listMethod.append(QString::fromLatin1(pKind + meta.method(i).methodSignature()));
        }
        QCOMPARE(listMethod, (QStringList{u"signal SgnUpdatePrinterList()"_s, u"slot SlotTaskStart()"_s,
                                          u"slot SlotThreadQuit()"_s}));
        QCOMPARE(meta.propertyCount(), meta.propertyOffset());
    }

    void startsWithoutAList()
    {
        QObject parent;
        const auto worker = new TrdDeviceManage(&parent);
        QCOMPARE(worker->parent(), &parent);
        QCOMPARE(worker->m_pListPrinterManager, nullptr);
        QVERIFY(!worker->m_bTaskRunning && !worker->m_bThreadQuit);
#ifdef VORA_HAS_TEXT_CODEC
        QCOMPARE(worker->m_pCodec->name(), QByteArray("UTF-8"));
#endif
        worker->Init(&m_listPrinter);
        QCOMPARE(worker->m_pListPrinterManager, &m_listPrinter);
    }

    void readsTheFileAndWritesNothing()
    {
        WriteList(u"Office|RA7QX|1|001|usb://Vora 办公室🖨|RB9X|2|10.0.0.7|ipp://a"_s);
        const QByteArray content = ReadFile(c_strListPath);
        const QDateTime time = QFileInfo(c_strListPath).lastModified();
        for (const bool bUnused : {false, true}) {
            QCOMPARE(Texts(TrdDeviceManage().GetPrinterInfo(bUnused)),
                     (QStringList{u"Office|RA7QX|1|001|usb://Vora"_s, u"办公室🖨|RB9X|2|10.0.0.7|ipp://a"_s}));
        }
        QCOMPARE(ReadFile(c_strListPath), content);
        QCOMPARE(QFileInfo(c_strListPath).lastModified(), time);
        QCOMPARE(QDir(c_strCfgPath).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList{c_strPrinterListName});
    }

    void content_data()
    {
        AddRows(u"printer-lists.json"_s, {"content", "printers"});
        QString strDescending = u"[Main]\nCount=2147483647\n"_s;
        QStringList listThousand;
        for (int i = 3000; i > 0; --i) {
            strDescending += u"[printer_%1]\nName=%1\n"_s.arg(i);
            if (i <= 1000) {
                listThousand.prepend(QString::number(i) + u"||0||"_s);
            }
        }
        QTest::newRow("first thousand of a huge Count") << strDescending << listThousand.join(QLatin1Char(' '));
        QTest::newRow("record for each of a plausible Count")
            << u"[Main]\nCount=1000\n"_s << u" ||0||"_s.repeated(1000).mid(1);
        QTest::newRow("zeros") << QString(4096, QChar(0)) << QString();
    }

    void content()
    {
        QFETCH(const QString, content);
        QTEST(Texts(ParsePrinterList(content.toStdString())).join(QLatin1Char(' ')), "printers");
    }

    void everyTextSurvivesTheFile_data()
    {
        AddRows(u"printer-texts.json"_s, {"text"});
        QTest::newRow("long") << QString(5000, QChar(0x58A8));
    }

    void everyTextSurvivesTheFile()
    {
        QFETCH(const QString, text);
        StatusFolder().WritePrinterList({{text, text, 7, text, text}});
        QCOMPARE(ReadList(), Texts(QList<stPrinterInfo>{{text, text, 7, text, text}}));
    }

    void fileOfMoreThanAMebibyteGivesNoPrinters()
    {
        const QByteArray list = QByteArray("[Main]\nCount=1\n[printer_0]\nName=A\n").leftJustified(1048576, '\n');
        QVERIFY(WriteFile(c_strListPath, list));
        QCOMPARE(ReadList(), QStringList{u"A||0||"_s});
        QVERIFY(WriteFile(c_strListPath, list + '\n'));
        QCOMPARE(ReadList(), QStringList());
    }

    void otherThanAFileGivesNoPrinters()
    {
        QCOMPARE(ReadList(), QStringList());
        for (const QString& strTarget : {QString(), u"."_s, u"/dev/zero"_s, u"/nowhere"_s}) {
            QVERIFY(Plant(c_strListPath, strTarget));
            QVERIFY2(ReadList().isEmpty(), qPrintable(strTarget));
            QVERIFY(QFile::remove(c_strListPath) || QDir().rmdir(c_strListPath));
        }
        QVERIFY(QDir(u"/opt/vora"_s).removeRecursively());
        QCOMPARE(ReadList(), QStringList());
        QVERIFY(!QFile::exists(u"/opt/vora"_s));
    }

    void fileOfAnotherUserGivesNoPrinters()
    {
        WriteList(u"Office"_s);
        const OpenHook refuse(c_strListPath, [] { return false; });
        QCOMPARE(ReadList(), QStringList());
    }

    void fifoThatTakesTheFilesPlaceDoesNotBlock()
    {
        WriteList(u"Office"_s);
        const OpenHook swap(c_strListPath, [] { return Plant(c_strListPath, QString()); });
        QCOMPARE(ReadList(), QStringList{u"not known"_s});
    }

    void refresh_data()
    {
        AddRows(u"list-changes.json"_s, {"before", "after", "verdict"});
    }
    void refresh()
    {
        QFETCH(const QString, before);
        QFETCH(const QString, after);
        QFETCH(const QString, verdict);
        const bool bTold = verdict == u"told"_s;
        if (!after.isNull()) { // else there is no file
            WriteList(after);
        }
        m_listPrinter = Entries(before, ReachedState());
        QSignalSpy spy(m_pWorker.get(), &TrdDeviceManage::SgnUpdatePrinterList);
        RunOnePass(*m_pWorker);
        QCOMPARE(spy.size(), bTold ? 1 : 0);
        QCOMPARE(Texts(m_listPrinter),
                 Texts(bTold ? Entries(after, stPrinterState()) : Entries(before, ReachedState())));
    }

    void lockIsHeldToTellAndNotToRead()
    {
        WriteList(u"A"_s);
        QStringList listSeen;
        const auto look = [&](const char* pWhen) {
            listSeen.append(QLatin1String(pWhen) + (IsListFree() ? u"free"_s : u"held"_s));
            return true;
        };
        const OpenHook reading(c_strListPath, [&] { return look("reading: "); });
        connect(m_pWorker.get(), &TrdDeviceManage::SgnUpdatePrinterList,
                [&] { look(m_listPrinter.size() == 1 ? "told of one: " : "told: "); });
        RunOnePass(*m_pWorker);
        RunOnePass(*m_pWorker); // unchanged, so that it is not opened again
        look("afterwards: ");
        QCOMPARE(listSeen, (QStringList{u"reading: free"_s, u"told of one: held"_s, u"afterwards: free"_s}));
    }

    void initWithNullTakesTheListAway()
    {
        WriteList(u"A"_s);
        std::unique_lock lock(g_mutexPrinterList);
        auto taking = std::async(std::launch::async, [this] { m_pWorker->Init(nullptr); });
        QCOMPARE(taking.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
        lock.unlock();
        QCOMPARE(taking.wait_for(std::chrono::seconds(10)), std::future_status::ready);

        QSignalSpy spy(m_pWorker.get(), &TrdDeviceManage::SgnUpdatePrinterList);
        RunOnePass(*m_pWorker);
        QCOMPARE(spy.size(), 0);
        QVERIFY(m_listPrinter.isEmpty());
    }

    void listThatCannotBeReadOrChangesMeanwhileLeavesThePrinters()
    {
        WriteList(u"A"_s);
        RunOnePass(*m_pWorker);
        const QStringList listBefore = Texts(m_listPrinter);
        QVERIFY(Plant(c_strListPath, u"/proc/self/mem"_s)); // opens, and cannot be read where it begins
        RunOnePass(*m_pWorker);
        RunOnePass(*m_pWorker);
        QCOMPARE(Texts(m_listPrinter), listBefore);
        QVERIFY(QFile::remove(c_strListPath));
        WriteList(u"B C"_s);
        {
            const OpenHook writer(c_strListPath, [] {
                return QFile::rename(c_strListPath, c_strListPath + QLatin1Char('~')) &&
                       QFile::copy(c_strListPath + QLatin1Char('~'), c_strListPath);
            });
            RunOnePass(*m_pWorker);
            QCOMPARE(Texts(m_listPrinter), listBefore);
        }
        RunOnePass(*m_pWorker);
        QCOMPARE(m_listPrinter.size(), 2);
    }

    void loopFollowsTheFile()
    {
        RunningWorker running(*m_pWorker);
        for (const QString& strPrinters : {u"A||0|1|"_s, u"A||0|1| B||0|2|"_s}) {
            WriteList(strPrinters);
            QTRY_COMPARE(SharedTexts(m_listPrinter), Texts(Entries(strPrinters, stPrinterState())));
            m_pWorker->SlotTaskStart(); // a second start would not return before the loop's end
        }
        QVERIFY(running.EndWithin(2000));
    }

private:
    PrinterList m_listPrinter;
    std::unique_ptr<TrdDeviceManage> m_pWorker;
};

QTEST_MAIN(tst_TrdDeviceManage)

#include "tst_TrdDeviceManage.moc"
