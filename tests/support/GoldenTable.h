// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "TestFiles.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>

// What docs/status-reply.md, which is written by hand, says of codes, keys and models: what tests expect of the
// program's tables. A test that takes rows from here begins with a look at their number.

constexpr int c_iNoState = 0xFF;   ///< a raw state that will never be one
constexpr int c_iNoError = 0xFFFF; ///< a raw error likewise
constexpr int c_iNoValue = 0xFFFF; ///< of neither enumeration

/// A row of the table of states or of errors.
struct stGoldenCode
{
    int iValue;
    int iRawCode; ///< -1: none
    QString strName;
    QString strEnglish;
    QString strChinese;
};

struct stGoldenKey
{
    quint16 wKey;
    QString strName;
    int iBytes; ///< 0: a text
    QString strField;
    QString strEnglish;
    QString strChinese;
};

struct stGoldenModel
{
    QString strModel;
    QString strDisplayName;
    QString strPpdName;
    int iVendorId;
    int iProductId;
};

/// The cells of the rows of the first table below a heading, without the marks of code.
inline QList<QStringList> GoldenRows(const QString& strHeading)
{
    const QString strText = QString::fromUtf8(ReadFile(QStringLiteral(VORA_GOLDEN_TABLE)));
    const QString strSection = strText.section(QStringLiteral("\n## ") + strHeading + QLatin1Char('\n'), 1)
                                   .section(QStringLiteral("\n## "), 0, 0);
    QList<QStringList> listRow;
    for (const QString& strLine :
         strSection.split(QLatin1Char('\n')).filter(QRegularExpression(QStringLiteral("^\\| ")))) {
        QStringList listCell = QString(strLine).remove(QLatin1Char('`')).split(QLatin1Char('|')).mid(1);
        listCell.removeLast();
        for (QString& strCell : listCell) {
            strCell = strCell.trimmed();
        }
        listRow.append(listCell);
    }
    return listRow.mid(1);
}

inline int GoldenNumber(const QString& strCell)
{
    bool bNumber = false;
    const int iNumber = strCell.toInt(&bNumber, 0);
    return bNumber ? iNumber : -1;
}

/// In the order of their values, which are not said to have no gap.
inline QList<stGoldenCode> GoldenCodes(const QString& strHeading)
{
    QList<stGoldenCode> listCode;
    for (const QStringList& row : GoldenRows(strHeading)) {
        listCode.append(
            {GoldenNumber(row.value(1)), GoldenNumber(row.value(0)), row.value(4), row.value(2), row.value(3)});
    }
    std::sort(listCode.begin(), listCode.end(),
              [](const stGoldenCode& left, const stGoldenCode& right) { return left.iValue < right.iValue; });
    return listCode;
}

inline QList<stGoldenCode> GoldenStates()
{
    return GoldenCodes(QStringLiteral("State codes"));
}

inline QList<stGoldenCode> GoldenErrors()
{
    return GoldenCodes(QStringLiteral("Error and warning codes"));
}

/// Those that a printer sends.
inline QList<stGoldenCode> Sent(const QList<stGoldenCode>& listCode)
{
    QList<stGoldenCode> listSent;
    std::copy_if(listCode.begin(), listCode.end(), std::back_inserter(listSent),
                 [](const stGoldenCode& code) { return code.iRawCode >= 0; });
    return listSent;
}

/// In the order of the keys.
inline QList<stGoldenKey> GoldenKeys()
{
    QList<stGoldenKey> listKey;
    for (const QStringList& row : GoldenRows(QStringLiteral("Supplies records"))) {
        listKey.append({static_cast<quint16>(GoldenNumber(row.value(0))), row.value(1),
                        std::max(GoldenNumber(row.value(2)), 0), row.value(3), row.value(4), row.value(5)});
    }
    return listKey;
}

/// The keys of numbers.
inline QList<stGoldenKey> GoldenNumberKeys()
{
    QList<stGoldenKey> listKey = GoldenKeys();
    listKey.erase(
        std::remove_if(listKey.begin(), listKey.end(), [](const stGoldenKey& key) { return key.iBytes == 0; }),
        listKey.end());
    return listKey;
}

inline QList<stGoldenModel> GoldenModels()
{
    QList<stGoldenModel> listModel;
    for (const QStringList& row : GoldenRows(QStringLiteral("Models"))) {
        listModel.append(
            {row.value(0), row.value(1), row.value(2), GoldenNumber(row.value(3)), GoldenNumber(row.value(4))});
    }
    return listModel;
}
