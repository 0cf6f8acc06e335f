// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Player.h"

#include "JsonReader.h"
#include "ReplyFields.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace {
constexpr qint64 c_iNever = std::numeric_limits<qint64>::max();
} // namespace

Player::Player(const stScenario& scenario, const DriverFolder& folder, double dSpeed, quint32 dwSeed)
    : m_scenario(scenario), m_folder(folder), m_dSpeed(dSpeed), m_random(dwSeed)
{
}

void Player::Start()
{
    TakeOverFolder();
    m_clock.start();
    BeginRound();
    m_enFailure = enExitIo;
}

QString Player::CleanUp()
{
    QStringList listFailure;
    // One that cannot be removed is no reason to leave the others behind.
    const auto tryTo = [&listFailure](const auto& remove) {
        try {
            remove();
        } catch (const ToolError& error) {
            listFailure.append(error.Message());
        }
    };
    // The list is the last to go: while it is there, the folder is known as a simulator's.
    for (const stLive& live : std::as_const(m_listLive)) {
        tryTo([this, &live] { RemoveStatus(live.printer.info.strPrinterName); });
    }
    if (m_bListWritten && m_folder.HasOwnList()) {
        tryTo([this] { m_folder.RemovePrinterList(); });
    }
    return listFailure.join(QLatin1String("; "));
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

std::optional<int> Player::WaitMSec() const
{
    const qint64 iNext = NextMSec();
    if (iNext == c_iNever) {
        return std::nullopt;
    }
    const auto iDue = static_cast<qint64>(static_cast<double>(iNext) / m_dSpeed);
    return static_cast<int>(std::clamp<qint64>(iDue - m_clock.elapsed(), 0, std::numeric_limits<int>::max()));
}

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
    m_bFinished = bRoundEnds && !m_scenario.bLoop;
}

void Player::PlayStep(const stStep& step)
{
    bool bListChanged = false;
    for (const int iIndex : step.listPrinter) {
        stLive& live = m_listLive[iIndex];
        ApplyReplyKeys(JsonReader(step.fields, QString()), live.printer.reply);
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

/// Nothing is written where somebody else's files stand. Files beside a list of ours are what a killed run has left.
void Player::TakeOverFolder()
{
    const bool bOwnList = m_folder.HasOwnList();
    if (!m_bForce && !bOwnList && m_folder.HasList()) {
        Refuse(m_folder.ListPath());
    }
    QSet<int> setPresent; // now or later
    for (int i = 0; i < m_scenario.listPrinter.size(); ++i) {
        if (m_scenario.listPrinter.at(i).bPresent) {
            setPresent.insert(i);
        }
    }
    for (const stStep& step : std::as_const(m_scenario.listStep)) {
        if (step.bPresent.value_or(false)) {
            setPresent += QSet<int>(step.listPrinter.begin(), step.listPrinter.end());
        }
    }
    for (const int iIndex : std::as_const(setPresent)) {
        const QString& strName = m_scenario.listPrinter.at(iIndex).info.strPrinterName;
        if (bOwnList && m_folder.HasPlainStatus(strName)) {
            m_setOwn.insert(strName);
        }
        if (!m_bForce && IsForeign(strName)) {
            Refuse(m_folder.StatusPath(strName));
        }
    }
}

void Player::WriteList()
{
    if (m_mustStop()) {
        return;
    }
    QList<stPrinterInfo> listInfo;
    for (const stLive& live : std::as_const(m_listLive)) {
        if (live.printer.bPresent) {
            listInfo.append(live.printer.info);
        }
    }
    if (!m_bForce && m_folder.HasList() && !m_folder.HasOwnList()) {
        Refuse(m_folder.ListPath());
    }
    m_folder.WritePrinterList(listInfo, m_enFailure);
    m_bListWritten = true;
}

void Player::WriteStatus(const stLive& live)
{
    if (m_mustStop()) {
        return;
    }
    const QString& strName = live.printer.info.strPrinterName;
    if (!live.printer.bPresent || live.printer.enContent == enFileMissing) {
        RemoveStatus(strName);
        return;
    }
    if (!m_bForce && IsForeign(strName)) {
        Refuse(m_folder.StatusPath(strName));
    }
    m_folder.WriteStatus(strName, live.content, m_enFailure);
    m_setOwn.insert(strName);
}

/// A status file that somebody else wrote stays.
void Player::RemoveStatus(const QString& strName)
{
    if (!IsForeign(strName)) {
        m_folder.RemoveStatus(strName);
    }
    m_setOwn.remove(strName);
}

bool Player::IsForeign(const QString& strName) const
{
    return m_folder.HasStatus(strName) && !(m_setOwn.contains(strName) && m_folder.HasPlainStatus(strName));
}

void Player::Refuse(const QString& strPath) const
{
    throw ToolError(m_enFailure,
                    u"%1 was not written by this program and stays as it is; --force replaces it"_s.arg(strPath));
}
