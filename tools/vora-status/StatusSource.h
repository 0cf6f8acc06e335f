// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "StatusOptions.h"
#include "StatusReport.h"
#include "UtilFile.h"

#include <functional>
#include <utility>
#include <vector>

/// The replies that the command line asks about.
class StatusSource
{
public:
    explicit StatusSource(const StatusOptions& options) : m_options(options) {}

    /// Reads or asks for every reply and hands over the reports, one after the other.
    void Collect(const std::function<void(const StatusReport&)>& handle);

    /// True when another Collect may find something else: a file is not what it was before the last one. A printer on
    /// the network has to be asked.
    bool HasChanged() const;

private:
    void Watch(const QString& strPath);

    const StatusOptions m_options;
    std::vector<std::pair<QString, FileStamp>> m_listStamp; ///< paths and what they looked like before they were read
};
