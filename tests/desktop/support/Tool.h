// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "Accessibility.h"
#include "Desktop.h"

#include <QProcess>

/// The built program, run as its user runs it and seen from outside. Killed with this object unless it ended before.
class Tool
{
public:
    explicit Tool(const QString& strProgram = QStringLiteral(VORA_TOOL));
    ~Tool();

    void Start(const QStringList& listArgument = {});
    QProcess& Process() { return m_process; }

    /// How long the program waits between two looks at a status file: a tenth of what it asks for, as in all of its
    /// pauses, unless VORA_REAL_TIME is set.
    static int PauseMSec();

    /// The file with what the program wrote to its standard output and standard error.
    QString OutputPath() const;

    /// The class of its windows and its name on the accessibility bus.
    const QString& Class() const { return m_strClass; }

    std::optional<Desktop::Window> MainWindow() const;
    std::optional<Desktop::Window> SettingsWindow() const;
    std::optional<Desktop::Window> TrayIcon() const;
    std::optional<Desktop::Window> Popup() const; ///< the tray menu or a balloon

    /// What stands in a cell of the table; empty when there is no such cell.
    QString Cell(int iRow, int iColumn) const { return m_accessibility.Cell(iRow, iColumn).Name(); }

    /// What is painted in a cell, without the lines and the focus frame at its border.
    QImage CellPicture(int iRow, int iColumn) const;
    int RowCount() const { return m_accessibility.RowCount(); }

    Accessibility& Access() { return m_accessibility; }
    const Accessibility& Access() const { return m_accessibility; }

private:
    std::optional<Desktop::Window> SmallWindow(QSize min, QSize max) const;

    QString m_strProgram;
    QString m_strClass;
    Accessibility m_accessibility{m_strClass};
    QProcess m_process;
};
