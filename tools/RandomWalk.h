// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusEncoder.h"

class QRandomGenerator;

/// How a printer wanders by itself.
struct stWalk
{
    qint64 iEveryMSec = 0; ///< 0: not at all
    QList<quint8> listState;
    QList<quint16> listError;
    QList<quint16> listWarning;
    int iChance = 0; ///< of an error, and of a warning, per cent
    int iInk = 0;    ///< what a step uses up of each ink at most, per cent
};

/// One step: another state, perhaps an error or a warning, less ink. An ink that is used up is filled again.
void StepAtRandom(const stWalk& walk, stStatusReply& reply, QRandomGenerator& random);
