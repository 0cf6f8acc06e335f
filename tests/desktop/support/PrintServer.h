// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QProcess>
#include <QString>

/// A print server of the test's own, without queues at first; its jobs are numbered from 1. Killed with this object.
/// Programs find it through CUPS_SERVER=Address().
class PrintServer
{
public:
    static QString Address();

    ~PrintServer() { Kill(); }

    /// Starts the server and waits until it answers.
    bool Start();

    enum enQueue
    {
        enQueueStopped, ///< its jobs wait for ever
        enQueuePrinting ///< its jobs are printed one by one, each without end
    };

    bool AddQueue(const QString& strQueue, enQueue enKind = enQueueStopped);

    /// Gives a queue a job and returns the job's number, 0 when the server does not take it.
    int AddJob(const QString& strQueue);

    /// The numbers of the jobs of all queues that have not ended, in rising order.
    QList<int> Jobs() const;

    bool IsPrinting(const QString& strQueue, int iJob) const;

    // A halted server takes connections and never answers.
    void Halt();
    void Continue();
    void Kill();

private:
    QProcess m_process;
};
