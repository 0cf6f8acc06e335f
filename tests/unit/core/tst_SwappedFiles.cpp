// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// Another file takes a file's place between the look at it and its opening, and files that never end.

#include "OpenHook.h"
#include "RunningWorker.h"
#include "StatusEncoder.h"
#include "StatusFolder.h"
#include "TrdDeviceManage.h"
#include "UtilLog.h"

#include <QtTest>

#include <array>
#include <functional>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using Read = std::function<bool()>;

const QString c_strName = u"Office"_s;

// Each tells whether there was something to read or to write.

bool ReadsList()
{
    return !TrdDeviceManage().GetPrinterInfo(true).isEmpty();
}

bool ReadsStatus()
{
    return TrdGetPrinterStatus().GetPrinterStatusFile(c_strName, true) == 0;
}

bool WritesLog()
{
    SetLogEnable(true);
    WriteStringLog("file", 1, "function", u"line"_s);
    SetLogEnable(false);
    return LogText().endsWith("line\n");
}

} // namespace

class tst_SwappedFiles : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        ::alarm(30); // whatever blocks ends the program
        StatusFolder().WritePrinterList({NamedPrinter(c_strName, 0).printerInfo});
        StatusFolder().WriteStatus(c_strName, EncodeStatusReply({}));
    }

    void readerDoesNotWait_data()
    {
        QTest::addColumn<int>("reader");
        QTest::addColumn<QString>("target"); // empty: a FIFO
        const std::array<const char*, 3> listReader = {"list", "status", "log"};
        for (std::size_t i = 0; i < listReader.size(); ++i) {
            for (const char* pTarget : {"", "/dev/zero", "/dev/ptmx", "/dev/null"}) {
                QTest::addRow("%s, %s", listReader.at(i), *pTarget == '\0' ? "FIFO" : pTarget)
                    << static_cast<int>(i) << QString::fromLatin1(pTarget);
            }
        }
    }

    void readerDoesNotWait()
    {
        QFETCH(const int, reader);
        QFETCH(const QString, target);
        const std::array<Read, 3> listRead = {ReadsList, ReadsStatus, WritesLog};
        const Read& read = listRead.at(static_cast<std::size_t>(reader));
        QVERIFY(read()); // undisturbed
        int iSwapped = 0;
        const OpenHook swap(QString(), [&] {
            const QStringList listLog = QDir(ToolPath()).entryList({u"log_tool_*.log"_s});
            const QString strPath = reader == 0   ? StatusFolder().ListPath()
                                    : reader == 1 ? StatusFolder().StatusPath(c_strName)
                                                  : ToolPath() + listLog.value(0);
            QFile::remove(strPath);
            const bool bSwapped = target.isEmpty() ? ::mkfifo(QFile::encodeName(strPath).constData(), 0666) == 0
                                                   : QFile::link(target, strPath);
            iSwapped += bSwapped ? 1 : 0;
            return true;
        });
        const int iDescriptors = DescriptorCount();
        if (reader == 2) {
            SetLogEnable(true);
            WriteStringLog("file", 1, "function", u"line"_s);
            SetLogEnable(false);
        } else {
            QVERIFY(!read());
        }
        QCOMPARE(iSwapped, 1);
        QCOMPARE(DescriptorCount(), iDescriptors);
    }

    void cleanup()
    {
        ::alarm(0);
        QDir(u"/opt/vora"_s).removeRecursively();
    }
};

QTEST_GUILESS_MAIN(tst_SwappedFiles)

#include "tst_SwappedFiles.moc"
