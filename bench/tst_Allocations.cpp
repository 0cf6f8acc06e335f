// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "AllocationCounter.h"
#include "FullReply.h"
#include "UtilPrinterStatus.h"

#include <QtTest>

/// How often the heap is asked, counted in all of the program; the machine's speed has no part in it.
class tst_Allocations : public QObject
{
    Q_OBJECT

private slots:
    void counterCounts()
    {
        const long iBefore = AllocationCount();
        const QByteArray text(100, 'x');
        QCOMPARE(AllocationCount() - iBefore, 1L);
        QCOMPARE(text.size(), 100);
    }

    /// Those of errors and of warnings, which grow as codes are appended.
    void decoderTakesItsListsAlone()
    {
        QByteArray reply = EncodeStatusReply(FullReply());
        const long iBefore = AllocationCount();
        UtilPrinterStatus decoder;
        const bool bGood = decoder.parseRecvBuf(reinterpret_cast<unsigned char*>(reply.data()),
                                                static_cast<unsigned long>(reply.size()));
        const long iAllocations = AllocationCount() - iBefore;
        QVERIFY(bGood);
        QCOMPARE(iAllocations, 5L);
    }
};

QTEST_GUILESS_MAIN(tst_Allocations)

#include "tst_Allocations.moc"
