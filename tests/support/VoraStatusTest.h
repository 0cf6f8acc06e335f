// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"
#include "StatusFolder.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

constexpr int c_iPatience = 10000; // milliseconds; nothing here comes near it unless it hangs

inline const QString c_strProgram = QStringLiteral(VORA_STATUS);

struct stRun
{
    int iExit = -1;
    QByteArray output;
    QByteArray messages;

    QStringList Lines() const { return QString::fromUtf8(output).split(QLatin1Char('\n')); }
    QJsonObject Json() const { return QJsonDocument::fromJson(output).object(); }
    QJsonObject Report(int iIndex = 0) const { return Json().value(u"reports"_s).toArray().at(iIndex).toObject(); }
};

inline stRun RunCommand(const QString& strProgram, const QStringList& listArgument,
                        const QProcessEnvironment& environment = QProcessEnvironment::systemEnvironment())
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(strProgram, listArgument);
    stRun run;
    if (process.waitForFinished(c_iPatience) && process.exitStatus() == QProcess::NormalExit) {
        run.iExit = process.exitCode();
    }
    run.output = process.readAllStandardOutput();
    run.messages = process.readAllStandardError();
    return run;
}

inline stRun Run(const QStringList& listArgument)
{
    return RunCommand(c_strProgram, listArgument);
}

/// Every field of the replies.
inline stRun RunFields(const QStringList& listArgument)
{
    return Run(QStringList(u"--fields"_s) + listArgument);
}

inline stStatusReply Ready()
{
    stStatusReply reply;
    reply.vendorName = "Vora";
    return reply;
}

inline QByteArray WithErrors(const QList<quint16>& listError, const QList<quint16>& listWarning = {})
{
    stStatusReply reply = Ready();
    reply.listErrorCode = listError;
    reply.listWarningCode = listWarning;
    return EncodeStatusReply(reply);
}

inline QByteArray WithSupplies(const QList<stSuppliesRecord>& listSupplies)
{
    stStatusReply reply = Ready();
    reply.listSupplies = listSupplies;
    return EncodeStatusReply(reply);
}

inline stPrinterInfo Printer(const QString& strName, const QString& strModel, int iConnectType, const QString& strPort)
{
    stPrinterInfo info;
    info.strPrinterName = strName;
    info.enType = strModel;
    info.iConnectType = iConnectType;
    info.strPort = strPort;
    info.strURI = u"vora://"_s + strName;
    return info;
}

/// A test of the program, run as users run it. Each function starts in an empty folder and without printers.
class VoraStatusTest : public QObject
{
    Q_OBJECT

protected:
    QString Write(const QByteArray& content, const QString& strName = u"reply.dat"_s) const
    {
        const QString strPath = Path(strName);
        return WriteFile(strPath, content) ? strPath : QString();
    }
    QString Path(const QString& strName) const { return m_pDir->filePath(strName); }

private slots:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        QVERIFY(m_pDir->isValid());
        QDir::setCurrent(m_pDir->path());
        QDir(u"/opt/vora"_s).removeRecursively();
    }

private:
    std::unique_ptr<QTemporaryDir> m_pDir;
};
