// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "MetricsExport.h"

#include "ReplyLabels.h"
#include "ReportMetrics.h"
#include "StatusOptions.h"
#include "StatusRendering.h"
#include "StatusSource.h"

#include <QFileInfo>
#include <QSaveFile>

namespace {

/// Replaces the file; false, with its error text, when it stays as it was. A buffer's end that finds no room would be
/// lost without an error (Qt 6.4.2), so the file has none.
bool ReplaceWith(QSaveFile& file, const QByteArray& text)
{
    const QFile::Permissions permissions =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther; // the exporter is another user
    bool bWritten = file.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    for (qint64 iDone = 0; bWritten && iDone < text.size();) {
        const qint64 iNow = file.write(text.constData() + iDone, text.size() - iDone);
        bWritten = iNow > 0;
        iDone += iNow;
    }
    return bWritten && file.setPermissions(permissions) && file.commit();
}

} // namespace

void ExportMetrics(const StatusOptions& options, StatusSource& source)
{
    ReportMetrics metrics;
    source.Collect([&metrics](const StatusReport& report) { metrics.Add(report); });
    if (!options.m_strOutput) {
        PrintStatus({metrics.Text(), {}, enExitGood}, options.m_enLang);
        return;
    }
    const auto text = [&options](const char* pEnglish, const char* pChinese) {
        return QString::fromUtf8(ByLanguage(options.m_enLang, pEnglish, pChinese));
    };
    QSaveFile file(*options.m_strOutput);
    // What a link leads to would be replaced otherwise.
    const bool bLink = QFileInfo(*options.m_strOutput).isSymLink();
    if (bLink || !ReplaceWith(file, metrics.Text())) {
        throw ToolError(enExitFailure, *options.m_strOutput + text(" cannot be written: ", "无法写入：") +
                                           (bLink ? text("it is a link", "它是一个链接") : file.errorString()));
    }
}
