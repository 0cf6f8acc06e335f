// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "DriverFolder.h"

#include "QtCompat.h"

#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

namespace {
const QString c_strWriterKey = QStringLiteral("Main/WrittenBy"); // of no meaning to the list's readers
} // namespace

DriverFolder::DriverFolder(const QString& strCfgPath, const QString& strWriter)
    : m_strCfgPath(QDir(strCfgPath).absolutePath()), m_strWriter(strWriter)
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

bool DriverFolder::HasForeignList() const
{
    const QFileInfo fileInfo(ListPath());
    if (!fileInfo.isFile()) {
        return fileInfo.exists() || fileInfo.isSymLink();
    }
    QSettings settings(ListPath(), QSettings::IniFormat);
    SetIniUtf8(settings);
    return settings.value(c_strWriterKey).toString() != m_strWriter;
}

bool DriverFolder::WritePrinterList(const QList<stPrinterInfo>& listPrinter) const
{
    QSettings settings(ListPath(), QSettings::IniFormat);
    SetIniUtf8(settings);
    settings.clear();
    if (!m_strWriter.isEmpty()) {
        settings.setValue(c_strWriterKey, m_strWriter);
    }
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
    if (settings.status() != QSettings::NoError) {
        m_strError = QStringLiteral("cannot write %1").arg(ListPath());
    }
    return settings.status() == QSettings::NoError;
}

bool DriverFolder::WriteStatus(const QString& strName, const QByteArray& reply) const
{
    QSaveFile file(StatusPath(strName));
    const bool bWritten = file.open(QIODevice::WriteOnly) && file.write(reply) == reply.size() && file.commit();
    if (!bWritten) {
        m_strError = QStringLiteral("cannot write %1: %2").arg(file.fileName(), file.errorString());
    }
    return bWritten;
}

bool DriverFolder::RemoveStatus(const QString& strName) const
{
    return Remove(StatusPath(strName));
}

bool DriverFolder::RemovePrinterList() const
{
    return Remove(ListPath());
}

bool DriverFolder::Remove(const QString& strPath) const
{
    QFile file(strPath);
    const bool bRemoved = file.remove();
    if (!bRemoved) {
        m_strError = QStringLiteral("cannot remove %1: %2").arg(strPath, file.errorString());
    }
    return bRemoved;
}
