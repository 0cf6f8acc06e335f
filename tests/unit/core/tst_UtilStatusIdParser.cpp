// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilStatusIdParser.h"

#include <QtTest>

#include <algorithm>
#include <iterator>
#include <limits>

namespace {

using uLong = unsigned long;

constexpr uLong c_dwAllBits = std::numeric_limits<uLong>::max();

// The printer's raw states 0x00 to 0x23.
const int c_status[] = {
    // clang-format off
    3, 4, 5, 6, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // 0x00
    8, 9, 10, 11, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, // 0x10
    12, 13, 14, 15, // 0x20
    // clang-format on
};

struct stExpectedError
{
    uLong dwRawCode;
    int iError;
};

const stExpectedError c_error[] = {
    {0x5200, 1},  {0x6143, 2},  {0x6144, 3},  {0x120A, 4},  {0x7200, 5},  {0x6210, 6},  {0x6211, 7},  {0x6201, 8},
    {0x6203, 9},  {0x5121, 10}, {0x6100, 11}, {0x6105, 12}, {0x6110, 13}, {0x6112, 14}, {0x6120, 15}, {0x6121, 16},
    {0x6122, 17}, {0x6131, 18}, {0x6132, 19}, {0x6139, 20}, {0x6140, 21}, {0x6145, 22}, {0x6170, 23}, {0x6171, 24},
    {0x6160, 25}, {0x6161, 26}, {0x6162, 27}, {0x6163, 28}, {0x6164, 29}, {0x6165, 30}, {0x6150, 31}, {0x6151, 32},
    {0x6152, 33}, {0x6153, 34}, {0x6154, 35}, {0x6155, 36}, {0x6156, 37}, {0x6181, 38}, {0x6182, 39}, {0x615A, 40},
    {0x615B, 41}, {0x6800, 42}, {0x9200, 43}, {0x9201, 44}, {0x5201, 45},
};

int ExpectedError(uLong dwRawCode)
{
    const auto found = std::find_if(std::begin(c_error), std::end(c_error),
                                    [dwRawCode](const stExpectedError& row) { return row.dwRawCode == dwRawCode; });
    return found == std::end(c_error) ? 0 : found->iError;
}

} // namespace

class tst_UtilStatusIdParser : public QObject
{
    Q_OBJECT

private slots:
    void rawStatus_data();
    void rawStatus();
    void noStatusBeyond0x23();
    void statusIsNeverVersionMismatchOfflineOrError();
    void rawError_data();
    void rawError();
    void everyErrorHasOneRawCode();
    void everyOtherErrorIsUnknown();
    void tonerTypeIsNotInterpreted();
};

void tst_UtilStatusIdParser::rawStatus_data()
{
    QTest::addColumn<uLong>("raw");
    QTest::addColumn<int>("status");
    uLong dwRaw = 0;
    for (const int iStatus : c_status) {
        QTest::addRow("0x%02lX", dwRaw) << dwRaw << iStatus;
        ++dwRaw;
    }
    // 0x100000003 and its like: no high bit is dropped.
    for (const uLong dwUnknown : {0x24ul, 0x30ul, 0x7Ful, 0x80ul, 0xFFul, 0x100ul, 0x110ul, 0x10003ul, 0x100000000ul,
                                  0x100000003ul, c_dwAllBits - 35, c_dwAllBits}) {
        QTest::addRow("0x%lX", dwUnknown) << dwUnknown << 0;
    }
}

void tst_UtilStatusIdParser::rawStatus()
{
    QFETCH(const uLong, raw);
    QTEST(static_cast<int>(GetPrinterStatusEnum(raw)), "status");
}

void tst_UtilStatusIdParser::noStatusBeyond0x23()
{
    QCOMPARE(std::size(c_status), std::size_t(0x24));
    for (uLong dwRaw = 0x24; dwRaw <= 0xFFFF; ++dwRaw) {
        QVERIFY2(GetPrinterStatusEnum(dwRaw) == 0, qPrintable(QString::number(dwRaw, 16)));
    }
}

void tst_UtilStatusIdParser::statusIsNeverVersionMismatchOfflineOrError()
{
    for (uLong dwRaw = 0; dwRaw <= 0xFF; ++dwRaw) {
        const int iStatus = GetPrinterStatusEnum(dwRaw);
        QVERIFY2(iStatus != 1 && iStatus != 2 && iStatus != 7, qPrintable(QString::number(dwRaw, 16)));
    }
}

void tst_UtilStatusIdParser::rawError_data()
{
    QTest::addColumn<uLong>("raw");
    QTest::addColumn<int>("error");
    for (const stExpectedError& row : c_error) {
        QTest::addRow("0x%04lX", row.dwRawCode) << row.dwRawCode << row.iError;
    }
    // 0x100006154 and its like: no high bit is dropped.
    for (const uLong dwUnknown : {0ul, 1ul, 45ul, 0x6157ul, 0x5202ul, 0x9202ul, 0xFFFFul, 0x15200ul, 0x16154ul,
                                  0x80006154ul, 0x100006154ul, c_dwAllBits}) {
        QTest::addRow("0x%lX", dwUnknown) << dwUnknown << 0;
    }
}

void tst_UtilStatusIdParser::rawError()
{
    QFETCH(const uLong, raw);
    QTEST(static_cast<int>(GetErrorStatusEnum(raw)), "error");
}

void tst_UtilStatusIdParser::everyErrorHasOneRawCode()
{
    QCOMPARE(std::size(c_error), std::size_t(45));
    for (int iError = 1; iError <= 45; ++iError) {
        int iCodes = 0;
        for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
            iCodes += GetErrorStatusEnum(dwRaw) == iError ? 1 : 0;
        }
        QVERIFY2(iCodes == 1, qPrintable(QString::number(iError)));
    }
}

void tst_UtilStatusIdParser::everyOtherErrorIsUnknown()
{
    for (uLong dwRaw = 0; dwRaw <= 0xFFFF; ++dwRaw) {
        QVERIFY2(GetErrorStatusEnum(dwRaw) == ExpectedError(dwRaw), qPrintable(QString::number(dwRaw, 16)));
    }
}

void tst_UtilStatusIdParser::tonerTypeIsNotInterpreted()
{
    for (const uLong dwRaw : {0ul, 1ul, 2ul, 0xFFul, 0xFFFFFFFFul, c_dwAllBits}) {
        QCOMPARE(static_cast<int>(GetTonerTypeEnum(dwRaw)), 0);
    }
}

QTEST_MAIN(tst_UtilStatusIdParser)

#include "tst_UtilStatusIdParser.moc"
