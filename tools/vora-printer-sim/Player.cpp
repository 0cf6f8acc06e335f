// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Player.h"

#include "JsonReader.h"
#include "ReplyFields.h"

#include <QFile>

#include <algorithm>
#include <limits>
#include <utility>

namespace {
constexpr qint64 c_iNever = std::numeric_limits<qint64>::max();
} // namespace

Player::Player(const stScenario& scenario, const DriverFolder& folder, double dSpeed, quint32 dwSeed)
    : m_scenario(scenario), m_folder(folder), m_dSpeed(dSpeed), m_random(dwSeed)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &Player::Advance);
}

bool Player::Start()
{
    m_clock.start();
    BeginRound();
    if (m_strError.isEmpty()) {
        WaitForNext();
    }
    return m_strError.isEmpty();
}

void Player::CleanUp()
{
    m_timer.stop();
    // The list is the last to go: while it is there, the folder is known as a simulator's.
    for (const stLive& live : std::as_const(m_listLive)) {
        RemoveStatus(live.printer.info.strPrinterName);
    }
    if (m_bListWritten && !m_folder.HasForeignList() && !m_folder.RemovePrinterList() &&
        QFile::exists(m_folder.ListPath())) {
        Fail();
    }
}

QByteArray Player::CurrentReply(const QString& strName) const
{
    for (const stLive& live : m_listLive) {
        if (live.printer.info.strPrinterName == strName && live.printer.bPresent) {
            return live.content;
        }
    }
    return QByteArray();
}

void Player::BeginRound()
{
    m_iNextStep = 0;
    m_listLive.clear();
    for (const stSimPrinter& printer : std::as_const(m_scenario.listPrinter)) {
        stLive live;
        live.printer = printer;
        if (printer.walk.iEveryMSec > 0) { // not all printers at the same moment
            live.iNextWalkMSec = m_iRoundMSec + m_random.bounded(static_cast<int>(printer.walk.iEveryMSec)) + 1;
        }
        Prepare(live);
        m_listLive.append(live);
    }
    WriteList();
    for (const stLive& live : std::as_const(m_listLive)) {
        WriteStatus(live);
    }
}

/// When the next thing happens, in the scenario's time.
qint64 Player::NextMSec() const
{
    qint64 iNext = m_scenario.iDurationMSec < 0 ? c_iNever : m_iRoundMSec + m_scenario.iDurationMSec;
    if (m_iNextStep < m_scenario.listStep.size()) {
        iNext = std::min(iNext, m_iRoundMSec + m_scenario.listStep.at(m_iNextStep).iAtMSec);
    }
    for (const stLive& live : m_listLive) {
        iNext = live.iNextWalkMSec < 0 ? iNext : std::min(iNext, live.iNextWalkMSec);
    }
    return iNext;
}

void Player::WaitForNext()
{
    const qint64 iNext = NextMSec();
    if (iNext == c_iNever) {
        return;
    }
    const auto iDue = static_cast<qint64>(static_cast<double>(iNext) / m_dSpeed);
    m_timer.start(static_cast<int>(std::clamp<qint64>(iDue - m_clock.elapsed(), 0, std::numeric_limits<int>::max())));
}

/// Plays what happens at the next moment, whether or not the clock is already past it: nothing is left out.
void Player::Advance()
{
    const qint64 iNow = NextMSec();
    while (m_iNextStep < m_scenario.listStep.size() &&
           m_iRoundMSec + m_scenario.listStep.at(m_iNextStep).iAtMSec == iNow) {
        PlayStep(m_scenario.listStep.at(m_iNextStep++));
    }
    for (int i = 0; i < m_listLive.size(); ++i) {
        if (m_listLive.at(i).iNextWalkMSec == iNow) {
            Walk(i);
        }
    }
    const bool bRoundEnds = m_scenario.iDurationMSec >= 0 && m_iRoundMSec + m_scenario.iDurationMSec == iNow;
    if (bRoundEnds && m_scenario.bLoop) {
        m_iRoundMSec = iNow;
        BeginRound();
    }
    if (!m_strError.isEmpty()) {
        emit SgnFailed();
    } else if (bRoundEnds && !m_scenario.bLoop) {
        emit SgnFinished();
    } else {
        WaitForNext();
    }
}

void Player::PlayStep(const stStep& step)
{
    bool bListChanged = false;
    for (const int iIndex : step.listPrinter) {
        stLive& live = m_listLive[iIndex];
        ApplyReplyFields(JsonReader(step.fields, QString()), live.printer.reply);
        live.printer.enContent = step.enContent;
        const bool bPresent = step.bPresent.value_or(live.printer.bPresent);
        bListChanged = bListChanged || bPresent != live.printer.bPresent;
        live.printer.bPresent = bPresent;
        Prepare(live);
    }
    if (bListChanged) {
        WriteList();
    }
    for (const int iIndex : step.listPrinter) {
        WriteStatus(m_listLive.at(iIndex));
    }
}

void Player::Walk(int iIndex)
{
    stLive& live = m_listLive[iIndex];
    live.iNextWalkMSec += live.printer.walk.iEveryMSec;
    StepAtRandom(live.printer.walk, live.printer.reply, m_random);
    Prepare(live);
    WriteStatus(live);
}

void Player::Prepare(stLive& live)
{
    live.content = FileContent(live.printer.enContent, EncodeStatusReply(live.printer.reply), m_random);
}

void Player::WriteList()
{
    QList<stPrinterInfo> listInfo;
    for (const stLive& live : std::as_const(m_listLive)) {
        if (live.printer.bPresent) {
            listInfo.append(live.printer.info);
        }
    }
    if (m_folder.WritePrinterList(listInfo)) {
        m_bListWritten = true;
    } else {
        Fail();
    }
}

void Player::WriteStatus(const stLive& live)
{
    const QString& strName = live.printer.info.strPrinterName;
    if (!live.printer.bPresent || live.printer.enContent == enFileMissing) {
        RemoveStatus(strName);
    } else if (m_folder.WriteStatus(strName, live.content)) {
        m_setWritten.insert(strName);
    } else {
        Fail();
    }
}

/// A status file that somebody else wrote stays.
void Player::RemoveStatus(const QString& strName)
{
    if (m_setWritten.remove(strName) && !m_folder.RemoveStatus(strName) &&
        QFile::exists(m_folder.StatusPath(strName))) {
        Fail();
    }
}

void Player::Fail()
{
    if (m_strError.isEmpty()) {
        m_strError = m_folder.ErrorString();
    }
}
