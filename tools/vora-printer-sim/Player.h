// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "DriverFolder.h"
#include "Scenario.h"

#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QSet>

#include <functional>
#include <optional>

/// Plays a scenario into a driver folder, moment by moment, for a caller that waits between them. Used by one thread at
/// a time.
class Player
{
public:
    /// dSpeed: seconds of the scenario in one second, more than 0. dwSeed: the same one gives the same course. The
    /// folder is the caller's and outlives the player.
    Player(const stScenario& scenario, const DriverFolder& folder, double dSpeed, quint32 dwSeed);

    // Called before Start.

    /// Plays one round although the scenario has more.
    void SetOnce() { m_scenario.bLoop = false; }
    /// Replaces files of others, which end the play without this. They are gone after CleanUp.
    void SetForce() { m_bForce = true; }
    /// Asked before each file; once it says yes, no more is written.
    void SetMustStop(std::function<bool()> mustStop) { m_mustStop = std::move(mustStop); }

    /// Writes the printers as they are at the beginning and starts the clock; called once. Throws ToolError: with
    /// enExitCannotCreate, before anything is written, when a file of somebody else's stands where this scenario has
    /// one, and when a file cannot be written; the others stay until CleanUp.
    void Start();

    bool HasFinished() const { return m_bFinished; } ///< the last round has ended

    /// Milliseconds until Advance is due, 0 or more; none when nothing more happens.
    std::optional<int> WaitMSec() const;

    /// Plays what happens at the next moment, whether or not the clock is already past it: nothing is left out. Throws
    /// ToolError with enExitIo when a file cannot be written or somebody else has put one in its place.
    void Advance();

    /// Removes every file that was written and that nobody has put something else in place of. Returns what could not
    /// be removed and why, for a person; empty when that is nothing.
    QString CleanUp();

    /// What the printer would answer now: what its status file is meant to hold. Empty when that is nothing, while the
    /// printer is not in the list, and for an unknown name.
    QByteArray CurrentReply(const QString& strName) const;

private:
    struct stLive
    {
        stSimPrinter printer;
        QByteArray content;
        qint64 iNextWalkMSec = -1;
    };

    void TakeOverFolder();
    void BeginRound();
    qint64 NextMSec() const;
    void PlayStep(const stStep& step);
    void Walk(int iIndex);
    void Prepare(stLive& live);
    void WriteList();
    void WriteStatus(const stLive& live);
    void RemoveStatus(const QString& strName);
    bool IsForeign(const QString& strName) const;
    [[noreturn]] void Refuse(const QString& strPath) const;

    stScenario m_scenario;
    const DriverFolder& m_folder;
    double m_dSpeed;
    QRandomGenerator m_random;
    bool m_bForce = false;
    std::function<bool()> m_mustStop = [] { return false; };
    QList<stLive> m_listLive;
    qint64 m_iRoundMSec = 0; ///< when the round began, in the scenario's time
    int m_iNextStep = 0;
    QElapsedTimer m_clock;
    bool m_bFinished = false;
    bool m_bListWritten = false;
    QSet<QString> m_setOwn; ///< printers whose status file this player wrote, or an earlier one that was killed
    enExitStatus m_enFailure = enExitCannotCreate; ///< of a file that cannot be written
};
