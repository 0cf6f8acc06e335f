// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"

#include "QtCompat.h"

#include <QDir>
#include <QSaveFile>

DriverFolder::DriverFolder(const QString& strCfgPath) : m_strCfgPath(QDir(strCfgPath).absolutePath())
{
    QDir().mkpath(m_strCfgPath);
}

QString DriverFolder::ListPath() const
{
    return m_strCfgPath + QLatin1Char('/') + c_strPrinterListName;
}

QString DriverFolder::StatusPath(const QString& strName) const
{
    return m_strCfgPath + QLatin1Char('/') + strName + c_strStatusFileSuffix;
}

bool DriverFolder::WritePrinterList(const QList<stPrinterInfo>& listPrinter) const
{
    QSettings settings(ListPath(), QSettings::IniFormat);
    SetIniUtf8(settings);
    settings.clear();
    settings.setValue(QStringLiteral("Main/Count"), static_cast<int>(listPrinter.size()));
    for (int i = 0; i < listPrinter.size(); ++i) {
        const stPrinterInfo& info = listPrinter.at(i);
        settings.beginGroup(QString::asprintf("printer_%d", i));
        settings.setValue(QStringLiteral("Name"), info.strPrinterName);
        settings.setValue(QStringLiteral("Model"), info.enType);
        settings.setValue(QStringLiteral("ConnectType"), info.iConnectType);
        settings.setValue(QStringLiteral("Port"), info.strPort);
        settings.setValue(QStringLiteral("URI"), info.strURI);
        settings.endGroup();
    }
    settings.sync();
    return settings.status() == QSettings::NoError;
}

bool DriverFolder::WriteStatus(const QString& strName, const QByteArray& reply) const
{
    QSaveFile file(StatusPath(strName));
    return file.open(QIODevice::WriteOnly) && file.write(reply) == reply.size() && file.commit();
}

bool DriverFolder::RemoveStatus(const QString& strName) const
{
    return QFile::remove(StatusPath(strName));
}

bool DriverFolder::RemovePrinterList() const
{
    return QFile::remove(ListPath());
}
