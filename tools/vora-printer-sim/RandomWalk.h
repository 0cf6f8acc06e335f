// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

class QRandomGenerator;

/// How a printer wanders by itself.
struct stWalk
{
    qint64 iEveryMSec = 0;      ///< from one step to the next; 0: not at all
    QList<quint8> listState;    ///< raw states, one of which a step takes; empty: the state stays
    QList<quint16> listError;   ///< raw codes, one of which a step takes, or none
    QList<quint16> listWarning; ///< likewise
    int iChance = 0;            ///< of an error, and of a warning, 0 to 100 per cent
    int iInk = 0;               ///< what a step uses up of each ink at most, 0 to 100 per cent
};

/// One step: another state, an error or none, a warning or none, less ink. An ink that is used up is filled again.
/// Called from any thread that has the reply and random to itself.
void StepAtRandom(const stWalk& walk, stStatusReply& reply, QRandomGenerator& random);
