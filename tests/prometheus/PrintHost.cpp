// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PrintHost.h"

#include "QtCompat.h"
#include "TestFiles.h"

#include <QtTest>

namespace {

// What the service and its timer do, more often; then the exporter, as its own service has it.
const QString c_strCommands = uR"(
while :; do "$1" --prometheus --output "$2/vora.prom"; sleep 0.2; done &
exec prometheus-node-exporter --web.listen-address="127.0.0.1:$3" --log.level=warn \
    --collector.disable-defaults --collector.textfile --collector.textfile.directory="$2"
)"_s;

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
    const QString strDriver = m_strFolder + u"/driver"_s;
    const QString strTextFiles = m_strFolder + u"/node-exporter"_s;
    QVERIFY(QDir().mkpath(strTextFiles));
    m_simulator.start(QStringLiteral(VORA_PRINTER_SIM), {u"--root"_s, strDriver, u"--seed"_s, u"1"_s, m_strScenario});
    QTRY_VERIFY(m_simulator.canReadLine()); // the folder is ready
    m_host.start(u"bwrap"_s,
                 {u"--dev-bind"_s, u"/"_s, u"/"_s, u"--bind"_s, strDriver, u"/opt/vora/vora-printer-k507"_s,
                  u"--unshare-pid"_s, u"--proc"_s, u"/proc"_s, u"--die-with-parent"_s, u"--"_s, u"sh"_s, u"-c"_s,
                  c_strCommands, u"sh"_s, QStringLiteral(VORA_STATUS), strTextFiles, QString::number(m_iPort)});
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
