// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "PlayCommand.h"

#include "CommandLine.h"
#include "EndSignals.h"
#include "Player.h"
#include "Scenario.h"
#include "ScenarioLibrary.h"
#include "StatusResponder.h"
#include "ToolOutput.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QSocketNotifier>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

namespace {

const QString c_strWriter = u"vora-printer-sim"_s;
const QString c_strDefaultScenario = u"everyday"_s;

struct stPlayOptions
{
    QString strScenario;
    QString strRoot; ///< empty: a new temporary folder
    bool bForce = false;
    bool bOnce = false;
    double dSpeed = 1;
    std::optional<quint32> dwSeed;
    int iPrinters = -1;
    std::optional<QHostAddress> udpAddress;
    QString strUdpPrinter; ///< empty: the first
    bool bMisbehave = false;
};

/// The number of an option; none when it is not given.
template <typename Number>
std::optional<Number> NumberOption(const QCommandLineParser& parser, const char* pstrOption, Number min, Number max)
{
    const QString strOption = QString::fromLatin1(pstrOption);
    if (!parser.isSet(strOption)) {
        return std::nullopt;
    }
    bool bNumber = false;
    const double dNumber = parser.value(strOption).toDouble(&bNumber);
    const bool bInRange = bNumber && dNumber >= static_cast<double>(min) && dNumber <= static_cast<double>(max);
    if (!bInRange || static_cast<double>(static_cast<Number>(dNumber)) != dNumber) {
        const QString strKind = QLatin1String(std::is_integral_v<Number> ? "a whole number" : "a number");
        throw ToolError(enExitUsage, u"--%1: expected %2 from %3 to %4, found \"%5\""_s.arg(strOption, strKind)
                                         .arg(min)
                                         .arg(max)
                                         .arg(parser.value(strOption)));
    }
    return static_cast<Number>(dNumber);
}

QHostAddress UdpAddress(const QString& strAddress)
{
    QHostAddress address(QHostAddress::LocalHost);
    if (!strAddress.isEmpty() &&
        (!address.setAddress(strAddress) || address.protocol() != QAbstractSocket::IPv4Protocol)) {
        throw ToolError(enExitUsage, u"--udp: expected an IPv4 address, found \"%1\""_s.arg(strAddress));
    }
    return address;
}

QByteArray ScenarioText(const QString& strScenario)
{
    if (BuiltInScenarios().contains(strScenario)) {
        return BuiltInScenario(strScenario);
    }
    if (!QFile::exists(strScenario)) {
        throw ToolError(enExitNoInput, u"%1: expected a file or a name of --list"_s.arg(strScenario));
    }
    return ReadInput(strScenario);
}

void PrintList()
{
    for (const QString& strName : BuiltInScenarios()) {
        const stScenario scenario = ReadScenario(BuiltInScenario(strName), strName);
        PrintLine(strName.leftJustified(22) + scenario.strDescription);
    }
}

QString UdpPrinter(const stPlayOptions& options, const stScenario& scenario)
{
    if (options.strUdpPrinter.isEmpty()) {
        return scenario.listPrinter.constFirst().info.strPrinterName;
    }
    for (const stSimPrinter& printer : scenario.listPrinter) {
        if (printer.info.strPrinterName == options.strUdpPrinter) {
            return options.strUdpPrinter;
        }
    }
    throw ToolError(enExitUsage, u"--udp-printer: the scenario has no printer \"%1\""_s.arg(options.strUdpPrinter));
}

/// Removed again with the object.
std::unique_ptr<QTemporaryDir> MakeTemporaryFolder()
{
    const QString strParent = QDir::tempPath();
    if (strParent.isEmpty()) { // a TMPDIR that is not there; the new folder would stand in the root of the file system
        throw ToolError(enExitCannotCreate, u"cannot make a temporary folder: TMPDIR is not a folder"_s);
    }
    auto pFolder = std::make_unique<QTemporaryDir>(strParent + u"/vora-printer-sim-XXXXXX"_s);
    if (!pFolder->isValid()) {
        throw ToolError(enExitCannotCreate, u"cannot make a temporary folder: "_s + pFolder->errorString());
    }
    return pFolder;
}

/// The seed asked for, or one drawn by lot and told when the scenario uses it.
quint32 Seed(const stPlayOptions& options, const stScenario& scenario)
{
    const quint32 dwSeed = options.dwSeed.value_or(QRandomGenerator::global()->generate());
    if (!options.dwSeed && scenario.UsesChance()) {
        WriteMessage(u"--seed %1 plays this again"_s.arg(dwSeed));
    }
    return dwSeed;
}

/// Answers queries until the next moment is due or a signal has come.
void WaitForNext(const Player& player, const EndSignals& endSignals)
{
    QEventLoop loop;
    QTimer timer;
    timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    if (const std::optional<int> iWait = player.WaitMSec()) {
        timer.start(*iWait);
    }
    std::optional<QSocketNotifier> notifier;
    if (endSignals.Descriptor() >= 0) {
        notifier.emplace(endSignals.Descriptor(), QSocketNotifier::Read);
        QObject::connect(&*notifier, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    }
    loop.exec();
}

/// Until the scenario's end, a signal or a failure; tells the folder once the first files are there.
void PlayToEnd(Player& player, const EndSignals& endSignals, const QString& strRoot)
{
    auto cleanUp = qScopeGuard([&player] { player.CleanUp(); }); // after a failure, which is told and not this
    player.SetMustStop([&endSignals] { return endSignals.HaveCome(); });
    player.Start();
    PrintLine(strRoot, &endSignals);
    while (!player.HasFinished() && !endSignals.HaveCome()) {
        WaitForNext(player, endSignals);
        if (!endSignals.HaveCome()) {
            player.Advance();
        }
    }
    cleanUp.dismiss();
    const QString strLeft = player.CleanUp();
    if (!strLeft.isEmpty()) {
        throw ToolError(enExitIo, strLeft);
    }
}

void Play(const stPlayOptions& options)
{
    const stScenario scenario = ReadScenario(ScenarioText(options.strScenario), options.strScenario, options.iPrinters);
    const QString strUdpPrinter = UdpPrinter(options, scenario);
    const quint32 dwSeed = Seed(options, scenario);

    // Before any file is written, so that every file is removed whenever the signal comes.
    const EndSignals endSignals;

    std::unique_ptr<QTemporaryDir> pTemporary;
    if (options.strRoot.isEmpty()) {
        pTemporary = MakeTemporaryFolder();
    }
    const QString strRoot = pTemporary ? pTemporary->path() : options.strRoot;
    const DriverFolder folder(strRoot + u"/cfg"_s, c_strWriter);

    Player player(scenario, folder, options.dSpeed, dwSeed);
    if (options.bOnce) {
        player.SetOnce();
    }
    if (options.bForce) {
        player.SetForce();
    }
    StatusResponder responder([&player, strUdpPrinter] { return player.CurrentReply(strUdpPrinter); });
    if (options.bMisbehave) {
        responder.SetMisbehave();
    }
    if (options.udpAddress) {
        responder.Listen(*options.udpAddress);
    }
    PlayToEnd(player, endSignals, strRoot);
}

/// None when the command line was a question, which is answered.
std::optional<stPlayOptions> ReadOptions(const QStringList& listArgument)
{
    QCommandLineParser parser;
    const auto add = [&parser](const char* pstrName, const char* pstrMeaning, const char* pstrValue = "") {
        parser.addOption(
            {QString::fromLatin1(pstrName), QString::fromLatin1(pstrMeaning), QString::fromLatin1(pstrValue)});
    };
    parser.setApplicationDescription(u"Plays inkjet printers: writes the printer list and the status files of the\n"
                                     "printer driver package, and removes them at the end or on Ctrl-C.\n\n"
                                     "vora-printer-sim encode [options]  writes one status reply (encode --help)."_s);
    parser.addPositionalArgument(
        u"SCENARIO"_s, u"A name of --list or a JSON file; \"everyday\" when it is not given."_s, u"[SCENARIO]"_s);
    add("list", "Name the built-in scenarios.");
    add("root", "Write into DIR/cfg instead of a new temporary folder.", "DIR");
    add("force", "Replace a printer list and status files of somebody else.");
    add("speed", "Play N times as fast, 0.1 to 1000.", "N");
    add("once", "End after one round of a scenario that has more.");
    add("seed", "Let chance take the same course each time.", "N");
    add("printers", "Number of printers of a scenario that leaves it open, such as \"many\".", "N");
    add("udp", "Answer status queries on port 9300 of this address; 127.0.0.1 when it is empty.", "ADDRESS");
    add("udp-printer", "The printer that answers, else the first.", "NAME");
    add("misbehave", "Answer in turn not at all, too short, too late and well.");
    if (!ParseArguments(parser, listArgument, 1)) {
        return std::nullopt;
    }
    if (parser.isSet(u"list"_s)) {
        PrintList();
        return std::nullopt;
    }
    stPlayOptions options;
    options.strScenario = parser.positionalArguments().value(0, c_strDefaultScenario);
    options.strRoot = parser.value(u"root"_s);
    options.bForce = parser.isSet(u"force"_s);
    options.bOnce = parser.isSet(u"once"_s);
    options.dSpeed = NumberOption(parser, "speed", 0.1, 1000.0).value_or(1);
    options.dwSeed = NumberOption<quint32>(parser, "seed", 0, 0xFFFFFFFF);
    options.iPrinters = NumberOption(parser, "printers", 1, c_iMaxPrinters).value_or(-1);
    options.bMisbehave = parser.isSet(u"misbehave"_s);
    options.strUdpPrinter = parser.value(u"udp-printer"_s);
    if (parser.isSet(u"udp"_s)) {
        options.udpAddress = UdpAddress(parser.value(u"udp"_s));
    } else if (options.bMisbehave || !options.strUdpPrinter.isEmpty()) {
        throw ToolError(enExitUsage, u"--misbehave and --udp-printer: expected --udp beside them"_s);
    }
    return options;
}

} // namespace

void RunPlay(const QStringList& listArgument)
{
    if (const std::optional<stPlayOptions> options = ReadOptions(listArgument)) {
        Play(*options);
    }
}
