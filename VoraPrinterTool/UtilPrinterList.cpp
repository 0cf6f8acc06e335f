// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilPrinterList.h"

#include "UtilFile.h"
#include "UtilIniReader.h"

#include <cerrno>
#include <map>

namespace {

// More printers, and more bytes, than any list that the driver package writes. What is beyond is a damaged file; a
// record and a thread for each number up to any Count would exhaust the machine.
constexpr int c_iMaxPrinters = 1000;
constexpr int c_iMaxFileSize = 1024 * 1024;

/// A printer's values as they stand in the file.
struct stRawPrinter
{
    std::string_view name;
    std::string_view model;
    std::string_view connectType;
    std::string_view port;
    std::string_view uri;
};

void SetValue(stRawPrinter& printer, const QString& strKey, std::string_view value)
{
    if (strKey == QLatin1String("Name")) {
        printer.name = value;
    } else if (strKey == QLatin1String("Model")) {
        printer.model = value;
    } else if (strKey == QLatin1String("ConnectType")) {
        printer.connectType = value;
    } else if (strKey == QLatin1String("Port")) {
        printer.port = value;
    } else if (strKey == QLatin1String("URI")) {
        printer.uri = value;
    }
}

/// The number of a printer's group; -1 for any other name.
int PrinterIndex(const QString& strGroup)
{
    const QString strPrefix = u"printer_"_s;
    constexpr int c_iMaxDigits = 10; // a name of a megabyte would be converted again at each of its keys
    if (strGroup.size() > strPrefix.size() + c_iMaxDigits) {
        return -1;
    }
    bool bNumber = false;
    const int iIndex = strGroup.mid(strPrefix.size()).toInt(&bNumber);
    return bNumber && iIndex >= 0 && strGroup == strPrefix + QString::number(iIndex) ? iIndex : -1;
}

/// 0 for what is no number, or none of an int.
int Number(std::string_view value)
{
    return UtilIniReader::Text(value).toInt();
}

stPrinterInfo PrinterInfo(const stRawPrinter& printer)
{
    return {UtilIniReader::Text(printer.name), UtilIniReader::Text(printer.model), Number(printer.connectType),
            UtilIniReader::Text(printer.port), UtilIniReader::Text(printer.uri)};
}

} // namespace

QString PrinterListPath()
{
    return c_strCfgPath + c_strPrinterListName;
}

QList<stPrinterInfo> ParsePrinterList(std::string_view content)
{
    std::string_view count;
    std::map<int, stRawPrinter> mapPrinter;
    UtilIniReader reader(content);
    while (reader.Next()) { // the last entry of a key counts
        const int iIndex = PrinterIndex(reader.Group());
        if (iIndex >= 0) {
            SetValue(mapPrinter[iIndex], reader.Key(), reader.RawValue());
        } else if (reader.Group() == QLatin1String("Main") && reader.Key() == QLatin1String("Count")) {
            count = reader.RawValue();
        }
    }

    QList<stPrinterInfo> listPrinterInfo;
    const int iCount = Number(count);
    if (iCount <= c_iMaxPrinters) {
        for (int i = 0; i < iCount; ++i) {
            const auto found = mapPrinter.find(i);
            listPrinterInfo.append(PrinterInfo(found != mapPrinter.end() ? found->second : stRawPrinter()));
        }
        return listPrinterInfo;
    }
    for (const auto& [iIndex, printer] : mapPrinter) {
        if (iIndex >= iCount || listPrinterInfo.size() == c_iMaxPrinters) {
            break;
        }
        listPrinterInfo.append(PrinterInfo(printer));
    }
    return listPrinterInfo;
}

std::optional<QList<stPrinterInfo>> ReadPrinterList()
{
    const FileStamp before = StampOfFile(PrinterListPath());
    const stFileContent file = ReadRegularFile(PrinterListPath(), c_iMaxFileSize + 1);
    const bool bFault = file.enResult == enFileUnreadable && file.iError != EACCES;
    if (bFault || StampOfFile(PrinterListPath()) != before) {
        return std::nullopt;
    }
    if (file.content.size() > c_iMaxFileSize) {
        return QList<stPrinterInfo>();
    }
    return ParsePrinterList({file.content.constData(), static_cast<std::size_t>(file.content.size())});
}
