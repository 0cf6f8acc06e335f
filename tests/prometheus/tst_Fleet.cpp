// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrintHost.h"
#include "PrometheusServer.h"
#include "TestFiles.h"

#include <QJsonObject>
#include <QtTest>

#include <map>

namespace {

constexpr int c_iPatience = 60000; // milliseconds; more than two rounds of a scenario

QString Scenario(const char* pName)
{
    return QStringLiteral(VORA_SCENARIOS) + QString::fromLatin1(pName);
}

QString Label(const QJsonValue& series, const char* pName)
{
    return series.toObject().value(u"metric"_s).toObject().value(QLatin1String(pName)).toString();
}

/// The samples of a series by their time.
std::map<double, double> Samples(const QJsonValue& series)
{
    std::map<double, double> samples;
    for (const auto& sample : series.toObject().value(u"values"_s).toArray()) {
        samples[sample.toArray().at(0).toDouble()] = sample.toArray().at(1).toString().toDouble();
    }
    return samples;
}

} // namespace

/// Three print hosts and a Prometheus server of Debian's on the sandbox's loopback, asked through its own interface.
class tst_Fleet : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        for (PrintHost* pHost : {&m_tour, &m_ink, &m_line}) {
            pHost->Start();
        }
        m_server.Start({m_tour.Instance(), m_ink.Instance(), m_line.Instance()});
        QVERIFY(!QTest::currentTestFailed());
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"sum(vora_printers)"_s), 5.0, c_iPatience);
    }

    void queuesByName()
    {
        for (const char* pSelector : {"queue=\"a\\\"b\\\\c\"", "queue=\"前台-打印机\""}) {
            const QJsonArray listSeries = m_server.Query(u"vora_printer_info{%1}"_s.arg(QString::fromUtf8(pSelector)));
            QCOMPARE(listSeries.size(), 1);
            QCOMPARE(Label(listSeries.at(0), "connection"), u"network"_s);
        }
    }

    void printerOffline()
    {
        const QString strQueue = u"queue=\"Office\""_s;
        QTRY_VERIFY_WITH_TIMEOUT(IsFiring(u"VoraPrinterOffline"_s, strQueue), c_iPatience);
        QVERIFY(!IsFiring(u"VoraPrinterOffline"_s, u"queue=\"Store\""_s));
        // Nothing but this is told of it.
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"vora_printer_up{queue=\"Office\"}"_s), 0.0, c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(
            m_server.Query(u"vora_printer_state{queue=\"Office\"} and on () vora_printer_up{queue=\"Office\"} == 0"_s)
                .isEmpty(),
            c_iPatience);
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"vora_printer_up{queue=\"Office\"}"_s), 1.0, c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(!IsFiring(u"VoraPrinterOffline"_s, strQueue), c_iPatience);
    }

    void error()
    {
        const QString strSelector = u"queue=\"前台-打印机\",name=\"paper-jam\",code=\"0x6110\""_s;
        QTRY_VERIFY_WITH_TIMEOUT(IsFiring(u"VoraPrinterError"_s, strSelector), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(!IsFiring(u"VoraPrinterError"_s, strSelector), c_iPatience);
    }

    void inkRunsOut()
    {
        const QString strSelector = u"queue=\"a\\\"b\\\\c\",color=\"black\""_s;
        QTRY_VERIFY_WITH_TIMEOUT(IsFiring(u"VoraPrinterInkLow"_s, strSelector), c_iPatience);
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"vora_printer_ink_ratio{%1}"_s.arg(strSelector)), 0.0, c_iPatience);
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"fleet:vora_printer_ink_ratio:min"_s), 0.0, c_iPatience);
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"vora_printer_ink_ratio{%1}"_s.arg(strSelector)), 1.0, c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(!IsFiring(u"VoraPrinterInkLow"_s, strSelector), c_iPatience);
    }

    void hostVanishes()
    {
        const QString strHost = u"instance=\"%1\""_s.arg(m_line.Instance());
        const QString strAbsent = u"absent(vora_printers{%1})"_s.arg(strHost);
        QVERIFY(m_server.Query(strAbsent).isEmpty());
        m_line.Kill();
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(strAbsent), 1.0, c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(IsFiring(u"VoraExporterSilent"_s, strHost), c_iPatience);
        QCOMPARE(m_server.Value(u"count(ALERTS{alertname=\"VoraExporterSilent\"})"_s), 1.0);
        QCOMPARE(m_server.Value(u"sum(vora_printers)"_s), 3.0);
        m_line.Start();
        QTRY_VERIFY_WITH_TIMEOUT(m_server.Query(strAbsent).isEmpty(), c_iPatience);
        QTRY_VERIFY_WITH_TIMEOUT(!IsFiring(u"VoraExporterSilent"_s, strHost), c_iPatience);
        QCOMPARE(m_server.Value(u"sum(vora_printers)"_s), 5.0);
    }

    // Last, as they need a whole round of their scenario, which goes on meanwhile.
    /// Each alone; what a state is called, tst_vora_status has.
    void everyStateArrives()
    {
        QTRY_COMPARE_WITH_TIMEOUT(
            m_server.Value(u"count(max_over_time(vora_printer_state{queue=\"tour\"}[10m]) == 1)"_s), 12.0, c_iPatience);
        for (const char* pExtreme : {"min", "max"}) {
            QCOMPARE(m_server.Value(u"%1_over_time(sum(vora_printer_state{queue=\"tour\"})[10m:1s])"_s.arg(
                         QLatin1String(pExtreme))),
                     1.0);
        }
    }

    void everyStateArrivesWithinTwoScrapes()
    {
        const QString strTimes = u"vora_printer_reply_timestamp_seconds{queue=\"tour\"}[10m]"_s;
        const auto changes = [&] {
            std::map<double, double> firstSeen; // when a reply was written, when it was seen
            for (const auto& series : m_server.Query(strTimes)) {
                for (const auto& [dTime, dWritten] : Samples(series)) {
                    firstSeen.emplace(dWritten, dTime);
                }
            }
            return firstSeen;
        };
        QTRY_VERIFY_WITH_TIMEOUT(changes().size() >= 8, c_iPatience);
        const std::map<double, double> scrapes =
            Samples(m_server.Query(u"up{instance=\"%1\"}[10m]"_s.arg(m_tour.Instance())).at(0));
        QVERIFY(scrapes.size() >= 8);
        for (const auto& [dWritten, dSeen] : changes()) {
            if (dWritten < scrapes.begin()->first || dSeen > scrapes.rbegin()->first) {
                continue; // before the server started, after it was asked
            }
            const auto iScrapes = std::distance(scrapes.upper_bound(dWritten), scrapes.upper_bound(dSeen));
            QVERIFY2(iScrapes >= 1 && iScrapes <= 2, qPrintable(QString::number(iScrapes)));
        }
    }

    void nothingIsRefused()
    {
        QTRY_COMPARE_WITH_TIMEOUT(m_server.Value(u"count(node_textfile_scrape_error == 0)"_s), 3.0, c_iPatience);
        QCOMPARE(m_server.Value(u"max(max_over_time(node_textfile_scrape_error[10m]))"_s), 0.0);
    }

private:
    bool IsFiring(const QString& strAlert, const QString& strSelector)
    {
        return !m_server.Query(u"ALERTS{alertname=\"%1\",alertstate=\"firing\",%2}"_s.arg(strAlert, strSelector))
                    .isEmpty();
    }

    PrintHost m_tour{Scenario("tour.json"), u"/tmp/tour"_s, 9101};
    PrintHost m_ink{Scenario("ink.json"), u"/tmp/ink"_s, 9102};
    PrintHost m_line{Scenario("line.json"), u"/tmp/line"_s, 9103};
    PrometheusServer m_server{u"/tmp/prometheus"_s};
};

QTEST_GUILESS_MAIN(tst_Fleet)

#include "tst_Fleet.moc"
