// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "StatusSource.h"

#include "UtilPrinterList.h"

#include <algorithm>

void StatusSource::Collect(const std::function<void(const StatusReport&)>& handle)
{
    m_listStamp.clear();
    if (m_options.m_bUdp) {
        handle(StatusReport::OfAddress(m_options.m_strAddress));
        return;
    }
    for (const QString& strPath : m_options.m_listPath) {
        Watch(strPath);
        handle(StatusReport::OfFile(strPath));
    }
    if (!m_options.m_listPath.isEmpty()) {
        return;
    }
    Watch(PrinterListPath());
    const QList<stPrinterInfo> listPrinter = ReadPrinterList().value_or(QList<stPrinterInfo>());
    for (const stPrinterInfo& printerInfo : listPrinter) {
        Watch(StatusFilePath(printerInfo.strPrinterName));
        handle(StatusReport::OfPrinter(printerInfo));
    }
}

bool StatusSource::HasChanged() const
{
    return m_options.m_bUdp || std::any_of(m_listStamp.begin(), m_listStamp.end(),
                                           [](const auto& stamp) { return StampOfFile(stamp.first) != stamp.second; });
}

void StatusSource::Watch(const QString& strPath)
{
    if (m_options.m_bWatch) {
        m_listStamp.emplace_back(strPath, StampOfFile(strPath));
    }
}
