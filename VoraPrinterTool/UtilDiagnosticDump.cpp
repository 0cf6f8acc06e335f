// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "UtilDiagnosticDump.h"

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
    QStringList listLine = {QString::asprintf("printer number=%d", iCount)};
    for (int i = 0; i < iCount; ++i) {
        const stPrinterInfo& info = listPrinter.at(i).printerInfo;
        const QByteArray name = info.strPrinterName.toUtf8();
        listLine.append({QString::asprintf("printer[%d] %s=%s", i, name.constData(), qUtf8Printable(info.strPort)),
                         QString::asprintf("%s: enType=%s", name.constData(), qUtf8Printable(info.enType)),
                         QString::asprintf("%s: iConnectType=%d", name.constData(), info.iConnectType)});
    }
    return listLine;
}

QStringList PrinterStatusLines(int iIndex, const stPrinterManager& printer)
{
    const QString& strName = printer.printerInfo.strPrinterName;
    const stPrinterState& state = printer.printerState;
    const auto text = [&strName](const char* pField, const QString& strValue) {
        return strName + QLatin1String(": ") + QLatin1String(pField) + QLatin1Char('=') + strValue;
    };
    const auto number = [&text](const char* pField, auto value) { return text(pField, QString::number(value)); };
    return {
        QString::asprintf("printer[%d]=%s", iIndex, qUtf8Printable(strName)),
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
        number("dwRemainingToner", state.dwRemainingToner),
        number("dwWasteToner", state.dwWasteToner),
        number("dwBlackInkRemainer", state.dwBlackInkRemainer),
        number("dwBlueInkRemainer", state.dwBlueInkRemainer),
        number("dwRedInkRemainer", state.dwRedInkRemainer),
        number("dwYellowInkRemainer", state.dwYellowInkRemainer),
        number("dwOPCRotation", state.dwOPCRotation),
        number("dwNumberOfPages", state.dwNumberOfPages),
        number("dwNumberOfPrint", state.dwNumberOfPrint),
        number("dwPrintDotsCount", state.dwPrintDotsCount),
        number("dwPrinterNumOfPages", state.dwPrinterNumOfPages),
        number("dwPrinterNumOfPrint", state.dwPrinterNumOfPrint),
    };
}
