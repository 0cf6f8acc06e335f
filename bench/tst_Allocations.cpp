// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "HandMadeReply.h"
#include "UtilPrinterStatus.h"

#include <QtTest>

namespace {
thread_local long s_iAllocations = 0;
} // namespace

// Stand in for the C library's entries in the whole process, Qt and operator new included, and hand on to it.

extern "C" {

// NOLINTBEGIN(bugprone-reserved-identifier): the C library's own names
void* __libc_malloc(std::size_t iSize);
void* __libc_realloc(void* pOld, std::size_t iSize);
void* __libc_calloc(std::size_t iCount, std::size_t iSize);
// NOLINTEND(bugprone-reserved-identifier)

void* malloc(std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_malloc(iSize);
}

void* realloc(void* pOld, std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_realloc(pOld, iSize);
}

void* calloc(std::size_t iCount, std::size_t iSize)
{
    ++s_iAllocations;
    return __libc_calloc(iCount, iSize);
}
}

/// How often the heap is asked, counted in all of the program; the machine's speed has no part in it.
class tst_Allocations : public QObject
{
    Q_OBJECT

private slots:
    void counterCounts()
    {
        const long iBefore = s_iAllocations;
        const QByteArray text(100, 'x');
        QCOMPARE(s_iAllocations - iBefore, 1L);
        QCOMPARE(text.size(), 100);
    }

    /// Those of errors and of warnings, which grow as codes are appended.
    void decoderTakesItsListsAlone()
    {
        QByteArray reply = HandMadeReply(); // two errors, one warning
        const long iBefore = s_iAllocations;
        UtilPrinterStatus decoder;
        const bool bGood = decoder.parseRecvBuf(reinterpret_cast<unsigned char*>(reply.data()),
                                                static_cast<unsigned long>(reply.size()));
        const long iAllocations = s_iAllocations - iBefore;
        QVERIFY(bGood);
        QCOMPARE(iAllocations, 3L);
    }
};

QTEST_GUILESS_MAIN(tst_Allocations)

#include "tst_Allocations.moc"
