// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrometheusServer.h"

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
    strRules.replace(QRegularExpression(QStringLiteral(" for: \\d+m")), QStringLiteral(" for: 2s"));
    QVERIFY(WriteFile(m_strFolder + QStringLiteral("/rules.yml"), strRules.toUtf8()));
    const QString strConfiguration = QStringLiteral("global: {scrape_interval: 1s, evaluation_interval: 1s}\n"
                                                    "rule_files: [rules.yml]\n"
                                                    "scrape_configs:\n"
                                                    "  - job_name: node\n"
                                                    "    static_configs: [{targets: [\"%1\"]}]\n")
                                         .arg(listInstance.join(QLatin1String("\", \"")));
    QVERIFY(WriteFile(m_strFolder + QStringLiteral("/prometheus.yml"), strConfiguration.toUtf8()));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.start(QStringLiteral("prometheus"),
                    {QStringLiteral("--config.file=%1/prometheus.yml").arg(m_strFolder),
                     QStringLiteral("--storage.tsdb.path=%1/data").arg(m_strFolder),
                     QStringLiteral("--web.listen-address=127.0.0.1:9090"), QStringLiteral("--log.level=warn")});
    QTRY_VERIFY_WITH_TIMEOUT(Get(QStringLiteral("/-/ready")).contains("Ready"), 30000);
}

QJsonArray PrometheusServer::Query(const QString& strExpression)
{
    const QJsonObject answer = QJsonDocument::fromJson(Get(QStringLiteral("/api/v1/query"), strExpression)).object();
    if (answer.value(QStringLiteral("status")).toString() == QLatin1String("error")) {
        qWarning("%s", qPrintable(answer.value(QStringLiteral("error")).toString()));
    }
    return answer.value(QStringLiteral("data")).toObject().value(QStringLiteral("result")).toArray();
}

double PrometheusServer::Value(const QString& strExpression)
{
    const QJsonArray listSeries = Query(strExpression);
    if (listSeries.size() != 1) {
        return std::numeric_limits<double>::quiet_NaN();
    }
    return listSeries.at(0).toObject().value(QStringLiteral("value")).toArray().at(1).toString().toDouble();
}

QByteArray PrometheusServer::Get(const QString& strPath, const QString& strExpression)
{
    QUrl url(QStringLiteral("http://127.0.0.1:9090") + strPath);
    if (!strExpression.isEmpty()) {
        QUrlQuery query;
        query.addQueryItem(QStringLiteral("query"), QString::fromLatin1(QUrl::toPercentEncoding(strExpression)));
        url.setQuery(query);
    }
    const std::unique_ptr<QNetworkReply> pReply(m_network.get(QNetworkRequest(url)));
    QEventLoop loop;
    QObject::connect(pReply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    return pReply->readAll();
}
