// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusFolder.h"
#include "UtilFile.h"
#include "UtilLog.h"

#include <QtTest>

/// Runs with the tool folder on a file system of 64 KiB.
class tst_FullFileSystem : public QObject
{
    Q_OBJECT

private slots:
    void logLosesLinesQuietly()
    {
        const auto log = [](const char* pText) { WriteStringLog(__FILE__, __LINE__, "log", u"%s"_s, pText); };
        SetLogEnable(true);
        log("first");
        QFile filler(ToolPath() + u"filler"_s);
        QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
        while (filler.write(QByteArray(512, 'x')) == 512) {
        }
        QVERIFY(filler.size() > 0 && filler.size() < 64 * 1024);
        const int iBefore = DescriptorCount();
        const QByteArray lost(1000, 'l');
        for (int i = 0; i < 100; ++i) { // the first ones may fit into the last page
            log(lost.constData());
        }
        QCOMPARE(DescriptorCount(), iBefore);
        QVERIFY(LogText().size() < 8192);
        QVERIFY(LogText().contains(" log) first\n"));

        QVERIFY(filler.remove());
        log("room again"); // each line tries again
        SetLogEnable(false);
        QVERIFY2(LogText().endsWith(" log) room again\n"), LogText().constData());
    }
};

QTEST_APPLESS_MAIN(tst_FullFileSystem)

#include "tst_FullFileSystem.moc"
