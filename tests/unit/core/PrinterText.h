// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterCommon.h"

#include <QStringList>

// Records as one text each, with every field in the order of the record, so that a test compares all of them at once.

/// Name, model, connection type, port and URI, such as "Office|RA7QX|1|001|usb://a".
inline QString Text(const stPrinterInfo& info)
{
    return QStringList{info.strPrinterName, info.enType, QString::number(info.iConnectType), info.strPort, info.strURI}
        .join(QLatin1Char('|'));
}

inline QString Text(const QList<enErrorStatus>& listError)
{
    QStringList listNumber;
    for (const enErrorStatus enError : listError) {
        listNumber.append(QString::number(enError));
    }
    return listNumber.join(QLatin1Char(' '));
}

/// Serial number, state, firmware version, vendor, product, errors, warnings, the supply's serial number and type, the
/// figures of SuppliesKeys.h and the failed reads.
inline QString Text(const stPrinterState& state)
{
    const QStringList listFigure = {
#define VORA_FIGURE(enKey, wKey, iBytes, Stem, ...) QString::number(state.dw##Stem),
        VORA_SUPPLIES_OF_STATE(VORA_FIGURE)
#undef VORA_FIGURE
    };
    return QStringList{state.strPrinterSerialNumber,
                       QString::number(state.enCurrentStatus),
                       state.strFWVersion,
                       state.strVenderName,
                       state.strProductName,
                       Text(state.listErrorStatus),
                       Text(state.listWarningStatus),
                       state.strSupplySerialNumber,
                       QString::number(state.enSpplyType),
                       listFigure.join(QLatin1Char(' ')),
                       QString::number(state.iReadFailCount)}
        .join(QLatin1Char('|'));
}

inline const QString c_strResetState = u"|2|||||||0|0 0 0 0 0 0 0 0 0 0 0 0|0"_s;
/// What HandMadeReply() stands for.
inline const QString c_strHandMadeState =
    u"SN1234|8|2.1.7|Vora|RA7QX|13 37|25|INK42|0|300 7 50 51 52 53 4660 256 5 1000 65536 16909060|0"_s;

inline QString Text(const stPrinterManager& printer)
{
    return Text(printer.printerInfo) + QLatin1Char(' ') + Text(printer.printerState);
}

template <typename Record>
QStringList Texts(const QList<Record>& listRecord)
{
    QStringList listText;
    for (const Record& record : listRecord) {
        listText.append(Text(record));
    }
    return listText;
}

/// Printers written as Text() writes them, fields at the end left out at will, with a blank between them.
inline QList<stPrinterInfo> Printers(const QString& strTexts)
{
    QList<stPrinterInfo> listPrinter;
    for (const QString& strText : strTexts.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList field = strText.split(QLatin1Char('|'));
        listPrinter.append({field.value(0), field.value(1), field.value(2).toInt(), field.value(3), field.value(4)});
    }
    return listPrinter;
}
