// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "StatusEncoder.h"
#include "TestFiles.h"
#include "Tool.h"
#include "TrayHost.h"

#include <QtTest>

/// Base of the tests that run the built program on a desktop. Each test function starts with an empty driver package
/// folder and without panel; one that fails leaves a picture, the program's output and that folder under
/// build/desktop-failures/.
class DesktopTest : public QObject
{
    Q_OBJECT

protected:
    /// A ready printer's reply with the ink levels 80, 50, 20 and 5 (cyan, magenta, yellow, black).
    static stStatusReply Reply(quint8 byStatus = 0x00, const QList<quint16>& listError = {},
                               const QList<quint16>& listWarning = {});

    void WritePrinters(const QList<stPrinterInfo>& listPrinter) const;

    /// Network printers with these names, all ready.
    void WriteReadyPrinters(const QStringList& listName) const;
    void WriteStatus(const QString& strName, const stStatusReply& reply) const;

    /// Starts the tray host and the tool, and waits for its window and its icon.
    void StartWithTray(TrayHost::enKind enKind = TrayHost::enTint2);

    /// Closes the main window and waits until it has gone.
    void HideWindow() const;

    /// Waits for the tool to end, which it must do without failure.
    void CheckEnd(int iTimeOutMSec = 2000) const;

    /// Ends the tool by its menu: in time, and without failure.
    void ExitByMenu(int iTimeOutMSec = 2000) const;

    /// Waits until the icon stays where it is: a panel takes it in by steps, between which it is out of sight.
    bool WaitForTrayIcon() const;

    /// Puts an executable shell script in front of the system's program of that name. It is gone with the test program.
    static void FakeProgram(const QString& strName, const QByteArray& script);

    /// Programs that start after this have a module of ours in them, until LD_PRELOAD is unset.
    static void Preload(const char* pModule);

    /// For programs that start after this, in a build with the address sanitizer.
    static void AddSanitizerOption(const QByteArray& option);

    DriverFolder m_folder{c_strCfgPath};
    std::unique_ptr<TrayHost> m_tray;
    std::unique_ptr<Tool> m_tool;

private slots:
    void init();
    void cleanup();
};
