// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilDiagnosticDump.h"

#include "UtilText.h"

namespace {

QString CodeText(const QList<enErrorStatus>& listCode)
{
    QString strText;
    for (const enErrorStatus enCode : listCode) {
        strText += QString::number(enCode) + QLatin1Char(',');
    }
    return strText;
}

} // namespace

QStringList PrinterInfoLines(const QList<stPrinterManager>& listPrinter)
{
    const int iCount = static_cast<int>(listPrinter.size());
    QStringList listLine = {u"printer number="_s + QString::number(iCount)};
    for (int i = 0; i < iCount; ++i) {
        const stPrinterInfo& info = listPrinter.at(i).printerInfo;
        const QString strName = EscapeControls(info.strPrinterName);
        listLine.append(
            {u"printer["_s + QString::number(i) + u"] "_s + strName + QLatin1Char('=') + EscapeControls(info.strPort),
             strName + u": enType="_s + EscapeControls(info.enType),
             strName + u": iConnectType="_s + QString::number(info.iConnectType)});
    }
    return listLine;
}

QStringList PrinterStatusLines(int iIndex, const stPrinterManager& printer)
{
    const QString strName = EscapeControls(printer.printerInfo.strPrinterName);
    const stPrinterState& state = printer.printerState;
    const auto text = [&strName](const char* pField, const QString& strValue) {
        return strName + QLatin1String(": ") + QLatin1String(pField) + QLatin1Char('=') + EscapeControls(strValue);
    };
    const auto number = [&text](const char* pField, auto value) { return text(pField, QString::number(value)); };
    QStringList listLine = {
        u"printer["_s + QString::number(iIndex) + u"]="_s + strName,
        text("strPrinterSerialNumber", state.strPrinterSerialNumber),
        number("enCurrentStatus", state.enCurrentStatus),
        text("strFWVersion", state.strFWVersion),
        text("strVenderName", state.strVenderName),
        text("strProductName", state.strProductName),
        number("iNumberOfError", state.listErrorStatus.size()),
        number("iNumberOfWarning", state.listWarningStatus.size()),
        text("error code", CodeText(state.listErrorStatus)),
        text("warning code", CodeText(state.listWarningStatus)),
        text("strSupplySerialNumber", state.strSupplySerialNumber),
        number("enSpplyType", state.enSpplyType),
    };
#define VORA_LINE(enKey, wKey, iBytes, Stem, ...) listLine.append(number("dw" #Stem, state.dw##Stem));
    VORA_SUPPLIES_OF_STATE(VORA_LINE)
#undef VORA_LINE
    return listLine;
}
