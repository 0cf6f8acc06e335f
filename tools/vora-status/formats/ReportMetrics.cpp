// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "ReportMetrics.h"

#include "CodeNames.h"
#include "ReplyEntries.h"
#include "ReportWriter.h"
#include "StatusReport.h"
#include "UtilStatusIdParser.h"

#include <algorithm>

namespace {

/// A label's value as it stands between the quotes. Control characters, and others that end a line for some reader, are
/// written out: two names must not differ in what no query can name.
QByteArray LabelText(const QString& strText)
{
    QString strEscaped;
    for (const QChar character : strText) {
        const QChar::Category category = character.category();
        if (character == QLatin1Char('\n')) {
            strEscaped += QLatin1String("\\n");
        } else if (character == QLatin1Char('\\') || character == QLatin1Char('"')) {
            strEscaped += QLatin1Char('\\') + character;
        } else if (category == QChar::Other_Control || category == QChar::Separator_Line ||
                   category == QChar::Separator_Paragraph) {
            strEscaped += QString::asprintf("\\\\u%04X", character.unicode());
        } else {
            strEscaped += character;
        }
    }
    return strEscaped.toUtf8();
}

QByteArray Truth(bool bTrue)
{
    return bTrue ? "1" : "0";
}

QString CodeText(unsigned long dwRawCode)
{
    return ReportWriter(enLanguageEnglish).AddRaw(dwRawCode, 2).Text();
}

} // namespace

const std::array<ReportMetrics::stFamily, ReportMetrics::enFamilyCount> ReportMetrics::c_familyList = {{
    {"vora_printers", "gauge", "Printers in the driver package's list."},
    {"vora_printer_info", "gauge", "A listed printer; product, firmware and serial are empty without a reply."},
    {"vora_printer_up", "gauge", "1 when the printer's status file has a reply that could be decoded."},
    {"vora_printer_reply_timestamp_seconds", "gauge", "When the printer's status file was written."},
    {"vora_printer_state", "gauge", "1 for the state that the printer is in."},
    {"vora_printer_ink_ratio", "gauge", "Ink left, 0 to 1."},
    {"vora_printer_error", "gauge", "1 for each error of the printer."},
    {"vora_printer_warning", "gauge", "1 for each warning of the printer."},
    {"vora_printer_pages_total", "counter", "Pages, as the supply counts them."},
    {"vora_printer_prints_total", "counter", "Prints, as the supply counts them."},
    {"vora_printer_print_dots_total", "counter", "Printed dots."},
    {"vora_printer_drum_rotations_total", "counter", "Rotations of the drum."},
    {"vora_printer_printer_pages_total", "counter", "Pages, as the printer counts them."},
    {"vora_printer_printer_prints_total", "counter", "Prints, as the printer counts them."},
    {"vora_printer_remaining_toner", "gauge", "Toner or ink left over all, in the printer's own unit."},
    {"vora_printer_waste_toner", "gauge", "Waste toner or ink, in the printer's own unit."},
}};

const std::vector<ReportMetrics::stSupplies> ReportMetrics::c_suppliesList = {
#define VORA_COLOR(enKey, wKey, iBytes, Stem, pName, ...) {enKey, enInkRatio, pName},
    VORA_SUPPLIES_INK(VORA_COLOR)
#undef VORA_COLOR
        {enSuppliesNumberOfPages, enPages, nullptr},
    {enSuppliesNumberOfPrint, enPrints, nullptr},
    {enSuppliesPrintDotsCount, enPrintDots, nullptr},
    {enSuppliesOPCRotation, enDrumRotations, nullptr},
    {enSuppliesPrinterNumOfPages, enPrinterPages, nullptr},
    {enSuppliesPrinterNumOfPrint, enPrinterPrints, nullptr},
    {enSuppliesRemainingToner, enRemainingToner, nullptr},
    {enSuppliesWasteToner, enWasteToner, nullptr},
};

void ReportMetrics::Add(const StatusReport& report)
{
    ++m_iPrinters;
    const QString& strQueue = report.m_strName;
    if (!m_queueSet.insert(LabelText(strQueue)).second) {
        return; // a sample that comes twice would make the whole file unreadable
    }
    const stPrinterInfo& printerInfo = report.m_printerInfo.value();
    const stPrinterState& state = report.m_state;
    const bool bUsb = printerInfo.iConnectType == c_iConnectUsb;
    AddSample(enInfo,
              {{"queue", strQueue},
               {"model", printerInfo.enType},
               {"connection", bUsb ? u"usb"_s : u"network"_s},
               {"product", state.strProductName},
               {"firmware", state.strFWVersion},
               {"serial", state.strPrinterSerialNumber}},
              "1");
    AddSample(enUp, {{"queue", strQueue}}, Truth(report.IsDecoded()));
    if (report.m_iReplyTime) {
        const auto dSeconds = static_cast<double>(*report.m_iReplyTime) / 1000;
        AddSample(enReplyTimestamp, {{"queue", strQueue}}, QByteArray::number(dSeconds, 'f', 3));
    }
    if (report.IsDecoded()) {
        AddReply(report);
    }
}

QByteArray ReportMetrics::Text() const
{
    QByteArray text;
    for (std::size_t i = 0; i < c_familyList.size(); ++i) {
        const stFamily& family = c_familyList[i];
        const QByteArray name = family.pName;
        const QByteArray samples =
            i == enPrinters ? name + ' ' + QByteArray::number(m_iPrinters) + '\n' : m_sampleList[i];
        if (!samples.isEmpty()) {
            text += "# HELP " + name + ' ' + family.pHelp + "\n# TYPE " + name + ' ' + family.pType + '\n' + samples;
        }
    }
    return text;
}

void ReportMetrics::AddReply(const StatusReport& report)
{
    for (int i = 0; i < enStatusCount; ++i) {
        AddSample(enState, {{"queue", report.m_strName}, {"state", StateName(i)}},
                  Truth(i == GetPrinterStatusEnum(report.m_decoder.m_dwStatus)));
    }
    AddSupplies(report);
    AddCodes(enError, report.m_strName, report.m_decoder.m_listErrorCode);
    AddCodes(enWarning, report.m_strName, report.m_decoder.m_listWarningCode);
}

void ReportMetrics::AddSupplies(const StatusReport& report)
{
    for (const stReplyEntry& entry : ReplyEntries(report)) {
        const auto pRow = std::find_if(c_suppliesList.begin(), c_suppliesList.end(), [&entry](const stSupplies& row) {
            return entry.bSupplies && entry.bPresent && row.dwKey == entry.dwKey;
        });
        if (pRow == c_suppliesList.end()) {
            continue;
        }
        if (pRow->pColor == nullptr) {
            AddSample(pRow->family, {{"queue", report.m_strName}}, QByteArray::number(qulonglong{entry.dwValue}));
        } else if (entry.dwValue <= 100) {
            AddSample(pRow->family, {{"queue", report.m_strName}, {"color", QString::fromLatin1(pRow->pColor)}},
                      QByteArray::number(static_cast<double>(entry.dwValue) / 100));
        }
    }
}

void ReportMetrics::AddCodes(enFamily family, const QString& strQueue, const std::vector<unsigned long>& listCode)
{
    for (const unsigned long dwCode : std::set<unsigned long>(listCode.begin(), listCode.end())) {
        AddSample(family,
                  {{"queue", strQueue}, {"code", CodeText(dwCode)}, {"name", ErrorName(GetErrorStatusEnum(dwCode))}},
                  "1");
    }
}

void ReportMetrics::AddSample(enFamily family, std::initializer_list<Label> listLabel, const QByteArray& value)
{
    QByteArray& text = m_sampleList.at(family);
    text += c_familyList.at(family).pName;
    char cBefore = '{';
    for (const Label& label : listLabel) {
        text += cBefore;
        text += label.first + ("=\"" + LabelText(label.second)) + '"';
        cBefore = ',';
    }
    text += "} " + value + '\n';
}
