// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "Scenario.h"

#include <QElapsedTimer>
#include <QObject>
#include <QRandomGenerator>
#include <QSet>
#include <QTimer>

/// Plays a scenario into a driver folder. Lives in the thread that made it and needs its event loop.
class Player : public QObject
{
    Q_OBJECT

public:
    /// dSpeed: seconds of the scenario in one second, more than 0. dwSeed: the same one gives the same course. The
    /// folder is the caller's and outlives the player.
    Player(const stScenario& scenario, const DriverFolder& folder, double dSpeed, quint32 dwSeed);

    /// Writes the printers as they are at the beginning and starts the clock; called once. Returns false, with an error
    /// text, when a file could not be written; the others stay until CleanUp.
    bool Start();

    /// Plays one round although the scenario has more. Called before Start.
    void SetOnce() { m_scenario.bLoop = false; }

    /// Stops the clock and removes every file that was written, but not a printer list that somebody else has put in
    /// its place. What cannot be removed has an error text.
    void CleanUp();

    /// What the printer would answer now: what its status file is meant to hold. Empty when that is nothing, while the
    /// printer is not in the list, and for an unknown name.
    QByteArray CurrentReply(const QString& strName) const;

    /// What the first failure was about, for a person; empty while there is none.
    QString ErrorString() const { return m_strError; }

signals:
    void SgnFinished(); ///< the last round has ended
    void SgnFailed();   ///< a file could not be written after Start; nothing more is played

private:
    struct stLive
    {
        stSimPrinter printer;
        QByteArray content;
        qint64 iNextWalkMSec = -1;
    };

    void BeginRound();
    void Advance();
    void WaitForNext();
    qint64 NextMSec() const;
    void PlayStep(const stStep& step);
    void Walk(int iIndex);
    void Prepare(stLive& live);
    void WriteList();
    void WriteStatus(const stLive& live);
    void RemoveStatus(const QString& strName);
    void Fail();

    stScenario m_scenario;
    const DriverFolder& m_folder;
    double m_dSpeed;
    QRandomGenerator m_random;
    QList<stLive> m_listLive;
    qint64 m_iRoundMSec = 0; ///< when the round began, in the scenario's time
    int m_iNextStep = 0;
    QElapsedTimer m_clock;
    QTimer m_timer;
    bool m_bListWritten = false;
    QSet<QString> m_setWritten; ///< printers whose status file is of this player's writing
    QString m_strError;
};
