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
    /// dSpeed: seconds of the scenario in one second. The folder is the caller's and outlives the player.
    Player(const stScenario& scenario, const DriverFolder& folder, double dSpeed, quint32 dwSeed);

    /// Writes the printers as they are at the beginning and starts the clock. Returns false, with an error text, when
    /// a file could not be written.
    bool Start();

    /// Plays one round although the scenario has more.
    void SetOnce() { m_scenario.bLoop = false; }

    /// Removes every file that was written.
    void CleanUp();

    /// What the printer would answer now; empty when it is not there.
    QByteArray CurrentReply(const QString& strName) const;

    QString ErrorString() const { return m_strError; }

signals:
    void SgnFinished(); ///< the last round has ended
    void SgnFailed();   ///< a file could not be written; nothing more is played

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
