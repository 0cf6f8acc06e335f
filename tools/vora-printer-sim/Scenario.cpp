// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Scenario.h"

#include "JsonReader.h"
#include "ReplyFields.h"

#include <algorithm>
#include <iterator>

namespace {

constexpr int c_iMaxSteps = 100000;
constexpr double c_dMaxSeconds = 86400;
constexpr qint64 c_iAfterLastStepMSec = 2000;
constexpr int c_iMaxFileName = 240; // with suffix, and the random one of a file that is being written

const QString c_strName = u"name"_s;
const QString c_strCount = u"count"_s;
const QString c_strPresent = u"present"_s;
const QString c_strFile = u"file"_s;
const QString c_strWalk = u"walk"_s;
const QString c_strPrinter = u"printer"_s;
const QString c_strPrinters = u"printers"_s;
const QString c_strTimeline = u"timeline"_s;
const QString c_strAt = u"at"_s;
const QString c_strLoop = u"loop"_s;
const QString c_strDuration = u"duration"_s;
const QString c_strDescription = u"description"_s;

qint64 MSec(double dSeconds)
{
    return static_cast<qint64>(dSeconds * 1000 + 0.5);
}

/// The texts of an entry with a count hold the printer's number at "%1".
QString Numbered(const QString& strText, int iNumber)
{
    return QString(strText).replace(QLatin1String("%1"), QString::number(iNumber));
}

bool IsFileName(const QString& strName)
{
    const auto isControl = [](QChar c) { return c.category() == QChar::Other_Control; };
    return !strName.isEmpty() && !strName.contains(QLatin1Char('/')) &&
           std::none_of(strName.begin(), strName.end(), isControl) && strName.toUtf8().size() <= c_iMaxFileName;
}

enFileContent ReadContent(const JsonReader& reader)
{
    const auto content = FileContentByName(reader.Text(c_strFile, u"good"_s));
    if (!content) {
        reader.Fail(c_strFile, u"one of "_s + FileContentNames().join(QLatin1String(", ")));
    }
    return *content;
}

const stModelInfo& ReadModel(const JsonReader& reader)
{
    const QString strKey = u"model"_s;
    const QString strModel = reader.Text(strKey, c_stModelInfoList[0].strModel);
    const auto found = std::find_if(std::begin(c_stModelInfoList), std::end(c_stModelInfoList),
                                    [&strModel](const stModelInfo& model) { return model.strModel == strModel; });
    if (found == std::end(c_stModelInfoList)) {
        QStringList listModel;
        for (const stModelInfo& model : c_stModelInfoList) {
            listModel.append(model.strModel);
        }
        reader.Fail(strKey, u"one of "_s + listModel.join(QLatin1String(", ")));
    }
    return *found;
}

int ReadConnectType(const JsonReader& reader)
{
    const QString strKey = u"connection"_s;
    const QString strConnection = reader.Text(strKey, u"network"_s);
    if (strConnection != QLatin1String("usb") && strConnection != QLatin1String("network")) {
        reader.Fail(strKey, u"\"usb\" or \"network\""_s);
    }
    return strConnection == QLatin1String("usb") ? c_iConnectUsb : 2;
}

stWalk ReadWalk(const JsonReader& reader)
{
    const QString strEvery = u"every"_s;
    const QString strStates = u"states"_s;
    const QString strErrors = u"errors"_s;
    const QString strWarnings = u"warnings"_s;
    const QString strChance = u"chance"_s;
    const QString strInk = u"ink"_s;
    reader.AllowOnly({strEvery, strStates, strErrors, strWarnings, strChance, strInk});
    stWalk walk;
    walk.iEveryMSec = MSec(reader.Number(strEvery, 0.1, c_dMaxSeconds));
    walk.listState = StateCodes(reader, strStates);
    walk.listError = ErrorCodes(reader, strErrors);
    walk.listWarning = ErrorCodes(reader, strWarnings);
    walk.iChance = static_cast<int>(reader.Whole(strChance, 0, 100, 20));
    walk.iInk = static_cast<int>(reader.Whole(strInk, 0, 100, 0));
    return walk;
}

stStatusReply FirstReply(const stModelInfo& model, int iNumber)
{
    stStatusReply reply;
    reply.vendorName = "Vora";
    reply.productName = model.strDisplayName.toLatin1();
    reply.serialNumber = "SIM" + QByteArray::number(iNumber).rightJustified(5, '0');
    reply.firmwareVersion = "1.0.0";
    for (const enSuppliesKey enKey : c_enSuppliesInkList) {
        SetSupplies(reply, MakeSuppliesRecord(enKey, 100));
    }
    return reply;
}

/// Keeps a scenario within what the simulator holds in memory and plays.
class ScenarioSize
{
public:
    // Throw ToolError, which names the entry of the list, when that is too much.
    void AddBytes(const JsonReader& reader, const QString& strList, int iIndex, qint64 iBytes)
    {
        m_iBytes += iBytes;
        if (m_iBytes > c_iMaxReplyBytes) {
            reader.FailItem(strList, iIndex, u"replies of at most %1 bytes in all"_s.arg(c_iMaxReplyBytes));
        }
    }

    void AddChanges(const JsonReader& reader, int iStep, qint64 iPrinters)
    {
        m_iChanges += iPrinters;
        if (m_iChanges > c_iMaxChanges) {
            reader.FailItem(c_strTimeline, iStep, u"at most %1 changes of a printer in all steps"_s.arg(c_iMaxChanges));
        }
    }

private:
    qint64 m_iBytes = 0;
    qint64 m_iChanges = 0;
};

/// Reads the printers and finds them again by name.
class PrinterReader
{
public:
    PrinterReader(stScenario& scenario, ScenarioSize& size, int iPrinters)
        : m_scenario(scenario), m_size(size), m_iPrinters(iPrinters)
    {
    }

    void ReadAll(const JsonReader& reader)
    {
        bool bCount = false;
        int iEntry = 0;
        for (const JsonReader& printer : reader.Children(c_strPrinters, c_iMaxPrinters)) {
            const auto addBytes = [&](qint64 iBytes) { m_size.AddBytes(reader, c_strPrinters, iEntry, iBytes); };
            ReadEntry(printer, m_iPrinters >= 0 && !bCount, addBytes);
            ++iEntry;
            bCount = bCount || printer.Has(c_strCount);
        }
        if (m_scenario.listPrinter.isEmpty()) {
            reader.Fail(c_strPrinters, u"at least one printer"_s);
        }
        if (m_iPrinters >= 0 && !bCount) {
            reader.Fail(c_strPrinters, u"an entry with a count, to make %1 of it"_s.arg(m_iPrinters));
        }
    }

    /// All printers, those of an entry with a count, or one.
    QList<int> Find(const JsonReader& step) const
    {
        QList<int> listIndex;
        const QString strName = step.Text(c_strPrinter, QString());
        for (int i = 0; i < m_scenario.listPrinter.size(); ++i) {
            if (!step.Has(c_strPrinter) || m_listEntryName.at(i) == strName ||
                m_scenario.listPrinter.at(i).info.strPrinterName == strName) {
                listIndex.append(i);
            }
        }
        if (listIndex.isEmpty()) {
            step.Fail(c_strPrinter, u"the name of one of the printers"_s);
        }
        return listIndex;
    }

private:
    template <typename AddBytes>
    void ReadEntry(const JsonReader& reader, bool bCountFromOutside, const AddBytes& addBytes)
    {
        const QString strPort = u"port"_s;
        const QString strUri = u"uri"_s;
        reader.AllowOnly(QStringList{c_strName, u"model"_s, u"connection"_s, strPort, strUri, c_strCount, c_strPresent,
                                     c_strFile, c_strWalk} +
                         ReplyKeyNames());
        const QString strName = reader.Text(c_strName);
        const stModelInfo& model = ReadModel(reader);
        stSimPrinter printer;
        printer.info.enType = model.strModel;
        printer.info.iConnectType = ReadConnectType(reader);
        printer.bPresent = reader.Flag(c_strPresent, true);
        printer.enContent = ReadContent(reader);
        if (reader.Has(c_strWalk)) {
            printer.walk = ReadWalk(reader.Child(c_strWalk));
        }
        const bool bCount = reader.Has(c_strCount);
        int iCount = static_cast<int>(reader.Whole(c_strCount, 1, c_iMaxPrinters, 1));
        if (bCount && bCountFromOutside) {
            iCount = m_iPrinters;
        }
        if (bCount && !strName.contains(QLatin1String("%1"))) {
            reader.Fail(c_strName, u"\"%1\", where the printer's number goes, because there is a count"_s);
        }
        for (int i = 1; i <= iCount; ++i) {
            const auto text = [bCount, i](const QString& strText) { return bCount ? Numbered(strText, i) : strText; };
            printer.info.strPrinterName = text(strName);
            printer.info.strPort = text(reader.Text(strPort, QString()));
            printer.info.strURI = text(reader.Text(strUri, QString()));
            printer.reply = FirstReply(model, static_cast<int>(m_scenario.listPrinter.size()) + 1);
            ApplyReplyKeys(reader, printer.reply);
            addBytes(EncodeStatusReply(printer.reply).size());
            Append(reader, printer, strName);
        }
    }

    void Append(const JsonReader& reader, const stSimPrinter& printer, const QString& strEntryName)
    {
        const QString& strName = printer.info.strPrinterName;
        if (!IsFileName(strName)) {
            reader.Fail(c_strName,
                        u"a name of 1 to %1 bytes without \"/\" and control characters"_s.arg(c_iMaxFileName));
        }
        const auto sameName = [&strName](const stSimPrinter& other) { return other.info.strPrinterName == strName; };
        if (std::any_of(m_scenario.listPrinter.cbegin(), m_scenario.listPrinter.cend(), sameName)) {
            reader.Fail(c_strName, u"a name that no other printer has"_s);
        }
        if (m_scenario.listPrinter.size() == c_iMaxPrinters) {
            reader.Fail(c_strCount, u"at most %1 printers in all"_s.arg(c_iMaxPrinters));
        }
        m_scenario.listPrinter.append(printer);
        m_listEntryName.append(strEntryName);
    }

    stScenario& m_scenario;
    ScenarioSize& m_size;
    int m_iPrinters;
    QStringList m_listEntryName; ///< for each printer
};

stStep ReadStep(const JsonReader& reader, const PrinterReader& printers)
{
    reader.AllowOnly(QStringList{c_strAt, c_strPrinter, c_strPresent, c_strFile} + ReplyKeyNames());
    stStep step;
    step.iAtMSec = MSec(reader.Number(c_strAt, 0, c_dMaxSeconds));
    step.listPrinter = printers.Find(reader);
    step.enContent = ReadContent(reader);
    if (reader.Has(c_strPresent)) {
        step.bPresent = reader.Flag(c_strPresent, true);
    }
    step.fields = reader.Object();
    return step;
}

/// What the step puts into a printer's reply.
qint64 BytesOf(const JsonReader& step)
{
    stStatusReply reply;
    const qint64 iBefore = EncodeStatusReply(reply).size();
    ApplyReplyKeys(step, reply);
    return EncodeStatusReply(reply).size() - iBefore;
}

} // namespace

bool stScenario::UsesChance() const
{
    const auto isRandom = [](enFileContent enContent) {
        return enContent != enFileGood && enContent != enFileMissing && enContent != enFileEmpty;
    };
    return std::any_of(listPrinter.begin(), listPrinter.end(),
                       [&isRandom](const stSimPrinter& printer) {
                           return printer.walk.iEveryMSec > 0 || isRandom(printer.enContent);
                       }) ||
           std::any_of(listStep.begin(), listStep.end(),
                       [&isRandom](const stStep& step) { return isRandom(step.enContent); });
}

stScenario ReadScenario(const QByteArray& json, const QString& strSource, int iPrinters)
{
    const JsonReader reader = JsonReader::FromBytes(json, strSource);
    reader.AllowOnly({c_strDescription, c_strLoop, c_strDuration, c_strPrinters, c_strTimeline});
    stScenario scenario;
    scenario.strDescription = reader.Text(c_strDescription);
    scenario.bLoop = reader.Flag(c_strLoop, false);

    ScenarioSize size;
    PrinterReader printers(scenario, size, iPrinters);
    printers.ReadAll(reader);
    for (const JsonReader& stepReader : reader.Children(c_strTimeline, c_iMaxSteps)) {
        const stStep step = ReadStep(stepReader, printers);
        const auto iPrintersOfStep = static_cast<qint64>(step.listPrinter.size());
        const int iStep = static_cast<int>(scenario.listStep.size());
        size.AddChanges(reader, iStep, iPrintersOfStep);
        size.AddBytes(reader, c_strTimeline, iStep, BytesOf(stepReader) * iPrintersOfStep);
        scenario.listStep.append(step);
    }
    const auto earlier = [](const stStep& left, const stStep& right) { return left.iAtMSec < right.iAtMSec; };
    std::stable_sort(scenario.listStep.begin(), scenario.listStep.end(), earlier);

    const qint64 iLastMSec = scenario.listStep.isEmpty() ? 0 : scenario.listStep.constLast().iAtMSec;
    if (reader.Has(c_strDuration)) {
        const double dMin = std::max(static_cast<double>(iLastMSec) / 1000, 0.1);
        scenario.iDurationMSec = MSec(reader.Number(c_strDuration, dMin, c_dMaxSeconds));
    } else if (!scenario.listStep.isEmpty()) {
        scenario.iDurationMSec = iLastMSec + c_iAfterLastStepMSec;
    }
    return scenario;
}
