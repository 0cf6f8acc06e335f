// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ShownWindow.h"

#include "Sampling.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>

namespace {

constexpr int c_iStateColumn = 3;

class PaintWatcher : public QObject
{
public:
    explicit PaintWatcher(QObject* pWatched) { pWatched->installEventFilter(this); }

    bool m_bPainted = false;

protected:
    bool eventFilter(QObject*, QEvent* pEvent) override
    {
        m_bPainted = m_bPainted || pEvent->type() == QEvent::Paint;
        return false;
    }
};

} // namespace

ShownWindow::ShownWindow() : m_pTable(m_widget.findChild<QTableWidget*>())
{
    m_widget.show();
    if (!QTest::qWaitForWindowExposed(&m_widget)) {
        qFatal("the window is not shown");
    }
}

bool ShownWindow::HasReadyPrinters(int iCount) const
{
    if (m_pTable->rowCount() != iCount) {
        return false;
    }
    for (int i = 0; i < iCount; ++i) {
        if (m_pTable->item(i, c_iStateColumn)->text() != u"就绪"_s) {
            return false;
        }
    }
    return true;
}

void ShownWindow::WaitForReadyPrinters(int iCount)
{
    WaitUntil([&] { return HasReadyPrinters(iCount); }, "a complete table");
}

void ShownWindow::WaitForPaint()
{
    PaintWatcher watcher(m_pTable->viewport());
    while (!watcher.m_bPainted) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents(); // hands the picture to the display
}
