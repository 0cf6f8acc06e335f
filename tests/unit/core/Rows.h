// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TestFiles.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

/// Adds the rows of a JSON file of this folder to a test's data. A row has its name, unless the first column names it,
/// and a text for each column; null is a null text.
inline void AddRows(const QString& strFile, const QList<const char*>& listColumn)
{
    for (const char* pColumn : listColumn) {
        QTest::addColumn<QString>(pColumn);
    }
    const QJsonArray rows = QJsonDocument::fromJson(ReadFile(QStringLiteral(VORA_ROWS) + strFile)).array();
    QVERIFY2(!rows.isEmpty(), qPrintable(strFile));
    for (const auto& row : rows) {
        const QJsonArray cells = row.toArray();
        QTestData& data = QTest::newRow(qPrintable(cells.first().toString()));
        for (int i = static_cast<int>(cells.size() - listColumn.size()); i < cells.size(); ++i) {
            data << cells.at(i).toString();
        }
    }
}
