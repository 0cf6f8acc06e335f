// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QNetworkAccessManager>
#include <QProcess>

/// Debian's Prometheus with the shipped rules, scraping once a second; what the rules wait for in minutes, it waits for
/// in two seconds. Killed with this object.
class PrometheusServer
{
public:
    explicit PrometheusServer(const QString& strFolder) : m_strFolder(strFolder) {}
    ~PrometheusServer();

    void Start(const QStringList& listInstance);

    /// The result of a query; empty also when the server does not answer.
    QJsonArray Query(const QString& strExpression);

    /// The value of a query that finds one series; not a number for any other.
    double Value(const QString& strExpression);

private:
    QByteArray Get(const QString& strPath, const QString& strExpression = QString());

    QString m_strFolder;
    QNetworkAccessManager m_network;
    QProcess m_process;
};
