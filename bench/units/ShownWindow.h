// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "voraprintertoolwidget.h"

#include <QTableWidget>

/// The program's main window, shown, with running workers.
class ShownWindow
{
public:
    ShownWindow();

    /// Waits until the table shows that many printers, all ready.
    void WaitForReadyPrinters(int iCount);

    /// Waits until the table has been painted once more.
    void WaitForPaint();

    VoraPrinterToolWidget m_widget;

private:
    bool HasReadyPrinters(int iCount) const;

    QTableWidget* m_pTable;
};
