// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrometheusServer.h"

#include "QtCompat.h"
#include "TestFiles.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUrlQuery>
#include <QtTest>

#include <limits>
#include <memory>

PrometheusServer::~PrometheusServer()
{
    m_process.kill();
    m_process.waitForFinished();
    QDir(m_strFolder).removeRecursively();
}

void PrometheusServer::Start(const QStringList& listInstance)
{
    QString strRules = QString::fromUtf8(ReadFile(QStringLiteral(VORA_RULES)));
    QCOMPARE(strRules.count(QLatin1String(" for: ")), 3);
    strRules.replace(QRegularExpression(u" for: \\d+m"_s), u" for: 2s"_s);
    QVERIFY(WriteFile(m_strFolder + u"/rules.yml"_s, strRules.toUtf8()));
    const QString strConfiguration =
        u"global: {scrape_interval: 1s, evaluation_interval: 1s}\n"
        "rule_files: [rules.yml]\n"
        "scrape_configs:\n"
        "  - job_name: node\n"
        "    static_configs: [{targets: [\"%1\"]}]\n"_s.arg(listInstance.join(QLatin1String("\", \"")));
    QVERIFY(WriteFile(m_strFolder + u"/prometheus.yml"_s, strConfiguration.toUtf8()));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(u"prometheus"_s, {u"--config.file=%1/prometheus.yml"_s.arg(m_strFolder),
                                      u"--storage.tsdb.path=%1/data"_s.arg(m_strFolder),
                                      u"--web.listen-address=127.0.0.1:9090"_s, u"--log.level=warn"_s});
    QTRY_VERIFY_WITH_TIMEOUT(Get(u"/-/ready"_s).contains("Ready"), 30000);
}

QJsonArray PrometheusServer::Query(const QString& strExpression)
{
    const QJsonObject answer = QJsonDocument::fromJson(Get(u"/api/v1/query"_s, strExpression)).object();
    if (answer.value(u"status"_s).toString() == QLatin1String("error")) {
        qWarning("%s", qPrintable(answer.value(u"error"_s).toString()));
    }
    return answer.value(u"data"_s).toObject().value(u"result"_s).toArray();
}

double PrometheusServer::Value(const QString& strExpression)
{
    const QJsonArray listSeries = Query(strExpression);
    if (listSeries.size() != 1) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return listSeries.at(0).toObject().value(u"value"_s).toArray().at(1).toString().toDouble();
}

QByteArray PrometheusServer::Get(const QString& strPath, const QString& strExpression)
{
    QUrl url(u"http://127.0.0.1:9090"_s + strPath);
    if (!strExpression.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(u"query"_s, QString::fromLatin1(QUrl::toPercentEncoding(strExpression)));
        url.setQuery(query);
    }
    const std::unique_ptr<QNetworkReply> pReply(m_network.get(QNetworkRequest(url)));
    QEventLoop loop;
    QObject::connect(pReply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return pReply->readAll();
}
