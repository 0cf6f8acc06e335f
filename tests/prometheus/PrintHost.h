// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "QtCompat.h"

#include <QProcess>

/// A machine with simulated printers, seen by Prometheus: its own /opt, vora-status that writes the metrics again and
/// again, as the timer has it do, and node_exporter, which gives them away. Killed with this object.
class PrintHost
{
public:
    /// Plays the scenario in a folder of its own; both are files' and folders' paths.
    PrintHost(const QString& strScenario, const QString& strFolder, int iPort);
    ~PrintHost();

    void Start();
    void Kill(); ///< the host is gone, with all that it answered

    QString Instance() const { return u"127.0.0.1:%1"_s.arg(m_iPort); }

private:
    QString m_strScenario;
    QString m_strFolder;
    int m_iPort;
    QProcess m_simulator;
    QProcess m_host;
};
