// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

// The ways to ask a printer itself: the query over the network, and the identifiers to find it on the USB.

#include "HandMadeReply.h"
#include "NoStandardInput.h"
#include "StatusFolder.h"
#include "TrdGetPrinterStatus.h"
#include "UdpResponder.h"

#include <QtTest>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace {

bool s_bRefuseSocketOption = false;
QByteArray s_lastSocketOption; // level, name and value

const QString c_strLocal = u"127.0.0.1"_s;

QByteArray SocketOption(int iLevel, int iName, const void* pValue, socklen_t iLength)
{
    return QByteArray::number(iLevel) + ' ' + QByteArray::number(iName) + ' ' +
           QByteArray(static_cast<const char*>(pValue), static_cast<int>(iLength)).toHex();
}

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the C library names them otherwise
extern "C" int setsockopt(int iFd, int iLevel, int iName, const void* pValue, socklen_t iLength) noexcept
{
    if (s_bRefuseSocketOption) {
        return -1;
    }
    s_lastSocketOption = SocketOption(iLevel, iName, pValue, iLength);
    const auto realSetsockopt = reinterpret_cast<decltype(&setsockopt)>(::dlsym(RTLD_NEXT, "setsockopt"));
    return realSetsockopt(iFd, iLevel, iName, pValue, iLength);
}

class tst_StatusQuery : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_worker.m_printerManager = stPrinterManager();
        m_worker.m_buffer.fill(0xEE);
        m_iDescriptors = DescriptorCount();
    }

    void cleanup() { QCOMPARE(DescriptorCount(), m_iDescriptors); }

    void reply_data()
    {
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("iResult");
        QTest::newRow("nothing in it") << QByteArray() << -5;
        QTest::newRow("7 bytes") << HandMadeReply().left(7) << -5;
        QTest::newRow("8 bytes") << HandMadeReply().left(8) << -1;
        QTest::newRow("truncated") << HandMadeReply().chopped(1) << -1;
        QTest::newRow("2048 bytes") << ReplyOfSize(2048) << 0;
        QTest::newRow("longer than what is received") << ReplyOfSize(2049) << -1;
        QTest::newRow("followed by more") << ReplyOfSize(2048) + QByteArray(1000, 'x') << 0;
    }

    void reply()
    {
        QFETCH(QByteArray, reply);
        QFETCH(int, iResult);
        UdpResponder responder({reply});
        QCOMPARE(m_worker.GetPrinterStatusUDP(c_strLocal), iResult);
        QCOMPARE(responder.Requests(), QList<QByteArray>{QByteArray::fromHex("A5000C50E0740803 00000000000000")});
        QCOMPARE(m_state.dwBlackInkRemainer, iResult == 0 ? 42UL : 0UL);
        QCOMPARE(m_state.enCurrentStatus, iResult == 0 ? 3 : 2);
        // Cleared before each query.
        const QByteArray buffer(reinterpret_cast<char*>(m_worker.m_buffer.data()), 2048);
        QCOMPARE(buffer, reply.left(2048).leftJustified(2048, '\0'));
    }

    void waitsOneSecondForAReply()
    {
        UdpResponder silent({});
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(m_worker.GetPrinterStatusUDP(c_strLocal), -5);
        const timeval second{1, 0};
        QCOMPARE(s_lastSocketOption, SocketOption(SOL_SOCKET, SO_RCVTIMEO, &second, sizeof(second)));
        QVERIFY2(timer.elapsed() >= 950 && timer.elapsed() < 1900, QByteArray::number(timer.elapsed()).constData());
        QCOMPARE(silent.Requests().size(), 1); // one attempt
    }

    void descriptorZeroIsAsGoodAsAny()
    {
        const UdpResponder responder({HandMadeReply()});
        const NoStandardInput none;
        QCOMPARE(m_worker.GetPrinterStatusUDP(c_strLocal), 0);
        QCOMPARE(::fcntl(STDIN_FILENO, F_GETFD), -1); // closed again
    }

    void refusesWhatIsNoAddress()
    {
        UdpResponder responder({HandMadeReply()});
        for (const QString& strAddress :
             u"|nonsense|localhost|999.1.1.1|127.0.0.1 |127.1|::1|１２７.0.0.1"_s.split(QLatin1Char('|'))) {
            QVERIFY2(m_worker.GetPrinterStatusUDP(strAddress) == -1, qPrintable(strAddress));
            QCOMPARE(QueryStatus(strAddress, m_worker.m_buffer), -1);
        }
        QVERIFY(responder.Requests().isEmpty());
    }

    void reportsEachFailure()
    {
        rlimit limit{};
        QCOMPARE(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        const rlimit noDescriptor{0, limit.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &noDescriptor), 0);
        const int iNoSocket = m_worker.GetPrinterStatusUDP(c_strLocal);
        QCOMPARE(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        QCOMPARE(iNoSocket, -2);

        QCOMPARE(m_worker.GetPrinterStatusUDP(u"203.0.113.1"_s), -3); // no way leads there

        s_bRefuseSocketOption = true;
        const int iNoTimeOut = m_worker.GetPrinterStatusUDP(c_strLocal);
        s_bRefuseSocketOption = false;
        QCOMPARE(iNoTimeOut, -4);
        QCOMPARE(m_state.enCurrentStatus, 2);
    }

    void usbIdentifiers()
    {
        const QMap<QString, int> pidOfText = {{u"PF41S?"_s, 21345},       {u"PF41SQ?"_s, 21346},
                                              {u"PG41S?"_s, 21347},       {u"PG41ES?"_s, 21348},
                                              {u"PG41ESQ?"_s, 21349},     {u"Vora PG41ES? series"_s, 21348},
                                              {u"PG41S? PF41S?"_s, 21345}}; // the first row wins
        // The question mark is no wildcard.
        const QStringList listUnknown = {u"PF41S"_s,   u"PF41SQ"_s,  u"PG41S"_s,  u"PG41ES"_s,
                                         u"PG41ESQ"_s, u"PG41ESX"_s, u"pf41s?"_s, QString()};
        for (const QString& strModel : pidOfText.keys() + listUnknown) {
            int iVid = -7;
            int iPid = -1;
            QCOMPARE(m_worker.GetPrinterVidPid(strModel, iVid, iPid), pidOfText.contains(strModel));
            QCOMPARE(iVid, 19068);
            QCOMPARE(iPid, pidOfText.value(strModel, -1));
        }
    }

private:
    TrdGetPrinterStatus m_worker;
    stPrinterState& m_state = m_worker.m_printerManager.printerState;
    int m_iDescriptors = 0;
};

QTEST_APPLESS_MAIN(tst_StatusQuery)

#include "tst_StatusQuery.moc"
