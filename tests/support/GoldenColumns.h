// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QList>
#include <QString>

struct stGoldenColumn
{
    QString strHeader;
    int iWidth; ///< pixels; the last column is at least so wide
};

/// What tests expect of the printer table, from left to right. All share 820 pixels.
inline QList<stGoldenColumn> GoldenColumns()
{
    return {
        {QStringLiteral("打印机名称"), 120},
        {QStringLiteral("连接方式"), 150},
        {QStringLiteral("剩余墨水量"), 345},
        {QStringLiteral("状态"), 185},
    };
}
