// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

#include <array>
#include <initializer_list>
#include <set>
#include <utility>
#include <vector>

class StatusReport;

/// The listed printers as Prometheus reads them: text format 0.0.4, UTF-8. Used by one thread at a time.
class ReportMetrics
{
public:
    /// A report of a listed printer; of several with one queue name the first alone gives samples.
    void Add(const StatusReport& report);

    /// One family of samples after the other.
    QByteArray Text() const;

private:
    enum enFamily
    {
        enPrinters,
        enInfo,
        enUp,
        enReplyTimestamp,
        enState,
        enInkRatio,
        enError,
        enWarning,
        enPages,
        enPrints,
        enPrintDots,
        enDrumRotations,
        enPrinterPages,
        enPrinterPrints,
        enRemainingToner,
        enWasteToner,
        enFamilyCount
    };

    struct stFamily
    {
        const char* pName;
        const char* pType;
        const char* pHelp;
    };

    struct stSupplies
    {
        unsigned long dwKey;
        enFamily family;
        const char* pColor; ///< of an ink, whose per cent become a ratio
    };

    using Label = std::pair<const char*, QString>;

    static const std::array<stFamily, enFamilyCount> c_familyList;
    static const std::vector<stSupplies> c_suppliesList;

    void AddReply(const StatusReport& report);
    void AddSupplies(const StatusReport& report);
    void AddCodes(enFamily family, const QString& strQueue, const std::vector<unsigned long>& listCode);
    void AddSample(enFamily family, std::initializer_list<Label> listLabel, const QByteArray& value);

    int m_iPrinters = 0;
    std::set<QByteArray> m_queueSet;
    std::array<QByteArray, enFamilyCount> m_sampleList;
};
