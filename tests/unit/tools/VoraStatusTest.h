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

#include <csignal>
#include <memory>

constexpr int c_iPatience = 10000; // milliseconds; nothing here comes near it unless it hangs

inline const QString c_strProgram = QStringLiteral(VORA_STATUS);

struct stRun
{
    int iExit = -1;
    QByteArray output;
    QByteArray messages;

    /// Of the only report of a JSON document.
    QJsonObject Report() const
    {
        return QJsonDocument::fromJson(output).object().value(u"reports"_s).toArray().at(0).toObject();
    }
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

inline QByteArray WithError(quint16 wCode)
{
    stStatusReply reply;
    reply.listErrorCode = {wCode};
    return EncodeStatusReply(reply);
}

/// The program while it watches. Killed with this object.
class Watcher
{
public:
    explicit Watcher(const QStringList& listArgument, const QString& strProgram = c_strProgram)
    {
        m_process.start(strProgram, listArgument);
        m_process.waitForStarted(c_iPatience);
    }
    ~Watcher()
    {
        m_process.kill();
        m_process.waitForFinished(c_iPatience);
    }
    Watcher(const Watcher&) = delete;
    Watcher& operator=(const Watcher&) = delete;

    const QByteArray& Output() { return m_output += m_process.readAllStandardOutput(); }
    const QByteArray& Messages() { return m_messages += m_process.readAllStandardError(); }
    qint64 Pid() const { return m_process.processId(); }

    /// The exit status after the signal; -1 when the program does not end, or not in order.
    int EndBy(int iSignal)
    {
        ::kill(static_cast<pid_t>(m_process.processId()), iSignal);
        const bool bEnded = m_process.waitForFinished(c_iPatience);
        return bEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

private:
    QProcess m_process;
    QByteArray m_output;
    QByteArray m_messages;
};

/// A test of the program, run as users run it. Each function starts in an empty folder and without printers.
class VoraStatusTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_pDir = std::make_unique<QTemporaryDir>();
        QVERIFY(QDir::setCurrent(m_pDir->path()));
        QDir(u"/opt/vora"_s).removeRecursively();
    }

private:
    std::unique_ptr<QTemporaryDir> m_pDir;
};
