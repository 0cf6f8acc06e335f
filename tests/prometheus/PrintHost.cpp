// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrintHost.h"

#include "TestFiles.h"

#include <QtTest>

namespace {

// What the service and its timer do, more often; then the exporter, as its own service has it.
const QString c_strCommands = QStringLiteral(R"(
while :; do "$1" --prometheus --output "$2/vora.prom"; sleep 0.2; done &
exec prometheus-node-exporter --web.listen-address="127.0.0.1:$3" --log.level=warn \
    --collector.disable-defaults --collector.textfile --collector.textfile.directory="$2"
)");

} // namespace

PrintHost::PrintHost(const QString& strScenario, const QString& strFolder, int iPort)
    : m_strScenario(strScenario), m_strFolder(strFolder), m_iPort(iPort)
{
    for (QProcess* pProcess : {&m_simulator, &m_host}) {
        pProcess->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    }
}

PrintHost::~PrintHost()
{
    Kill();
}

void PrintHost::Start()
{
    const QString strDriver = m_strFolder + QStringLiteral("/driver");
    const QString strTextFiles = m_strFolder + QStringLiteral("/node-exporter");
    QVERIFY(QDir().mkpath(strTextFiles));
    m_simulator.start(QStringLiteral(VORA_PRINTER_SIM), {QStringLiteral("--root"), strDriver, QStringLiteral("--seed"),
                                                         QStringLiteral("1"), m_strScenario});
    QTRY_VERIFY(m_simulator.canReadLine()); // the folder is ready
    m_host.start(QStringLiteral("bwrap"),
                 {QStringLiteral("--dev-bind"), QStringLiteral("/"), QStringLiteral("/"), QStringLiteral("--bind"),
                  strDriver, QStringLiteral("/opt/vora/vora-printer-k507"), QStringLiteral("--unshare-pid"),
                  QStringLiteral("--proc"), QStringLiteral("/proc"), QStringLiteral("--die-with-parent"),
                  QStringLiteral("--"), QStringLiteral("sh"), QStringLiteral("-c"), c_strCommands, QStringLiteral("sh"),
                  QStringLiteral(VORA_STATUS), strTextFiles, QString::number(m_iPort)});
    QVERIFY(m_host.waitForStarted());
}

void PrintHost::Kill()
{
    for (QProcess* pProcess : {&m_host, &m_simulator}) {
        pProcess->kill();
        pProcess->waitForFinished();
    }
    QDir(m_strFolder).removeRecursively();
}
