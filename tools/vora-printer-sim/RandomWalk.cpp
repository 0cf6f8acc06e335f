// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "RandomWalk.h"

#include "ReplyFields.h"

#include <QRandomGenerator>

#include <algorithm>

namespace {

template <typename Code>
Code AnyOf(const QList<Code>& listCode, QRandomGenerator& random)
{
    return listCode.at(random.bounded(static_cast<int>(listCode.size())));
}

QList<quint16> Perhaps(const QList<quint16>& listCode, int iChance, QRandomGenerator& random)
{
    const bool bNow = random.bounded(100) < iChance;
    return bNow && !listCode.isEmpty() ? QList<quint16>{AnyOf(listCode, random)} : QList<quint16>();
}

} // namespace

void StepAtRandom(const stWalk& walk, stStatusReply& reply, QRandomGenerator& random)
{
    if (!walk.listState.isEmpty()) {
        reply.byStatus = AnyOf(walk.listState, random);
    }
    reply.listErrorCode = Perhaps(walk.listError, walk.iChance, random);
    reply.listWarningCode = Perhaps(walk.listWarning, walk.iChance, random);
    if (walk.iInk == 0) {
        return;
    }
    for (const enSuppliesKey enKey : c_enSuppliesInkList) {
        const int iLevel = static_cast<int>(LastSuppliesNumber(reply, enKey));
        const int iLeft = iLevel == 0 ? 100 : std::max(iLevel - random.bounded(walk.iInk + 1), 0);
        SetSupplies(reply, MakeSuppliesRecord(enKey, static_cast<quint32>(iLeft)));
    }
}
