// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include "ToolError.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

#include <optional>

/// A JSON object of which every failure names the key's path ("printers[1].model"), what was expected and what was
/// found there. What reads a value throws ToolError when it is of another kind or out of its bounds. A key that is
/// missing gives the default; without a default it is required. Used by one thread at a time.
class JsonReader
{
public:
    /// The path stands before every key and ends with a "." unless it is empty. What is wrong ends with enFailure.
    JsonReader(const QJsonObject& object, const QString& strPath, enExitStatus enFailure = enExitData)
        : m_object(object), m_strPath(strPath), m_enFailure(enFailure)
    {
    }

    /// The object of a JSON text, which strSource names in messages. Throws ToolError for what is not JSON, naming the
    /// line, and for a list.
    static JsonReader FromBytes(const QByteArray& json, const QString& strSource);

    /// Throws ToolError when the object has any other key.
    void AllowOnly(const QStringList& listKey) const;

    // Never throw; the value of a missing key is undefined.
    bool Has(const QString& strKey) const { return m_object.contains(strKey); }
    QJsonValue Value(const QString& strKey) const { return m_object.value(strKey); }
    QJsonObject Object() const { return m_object; }

    QString Text(const QString& strKey, const std::optional<QString>& strDefault = {}) const;
    bool Flag(const QString& strKey, bool bDefault) const;
    /// A number from dMin to dMax, both included.
    double Number(const QString& strKey, double dMin, double dMax, std::optional<double> dDefault = {}) const;
    /// A whole number from iMin to iMax, both included, or its hexadecimal text ("0x10").
    qint64 Whole(const QString& strKey, qint64 iMin, qint64 iMax, std::optional<qint64> iDefault = {}) const;
    /// iMinSize to iMaxSize bytes as pairs of hexadecimal digits; required.
    QByteArray Hex(const QString& strKey, int iMinSize, int iMaxSize) const;
    /// The object of the key; required.
    JsonReader Child(const QString& strKey) const;
    // A list of at most iMax objects, or of values of any kind; a missing list is empty.
    QList<JsonReader> Children(const QString& strKey, int iMax) const;
    QList<QJsonValue> Items(const QString& strKey, int iMax) const;

    /// Throws ToolError: at the key strExpected was expected, and its value was found.
    [[noreturn]] void Fail(const QString& strKey, const QString& strExpected) const;
    /// The same for entry iIndex, from 0, of the key's list.
    [[noreturn]] void FailItem(const QString& strKey, int iIndex, const QString& strExpected) const;

private:
    [[noreturn]] void FailAt(const QString& strPath, const QString& strExpected, const QJsonValue& found) const;

    QJsonObject m_object;
    QString m_strPath;
    enExitStatus m_enFailure;
};

/// The whole number that a JSON number (below 9e15) or a hexadecimal text ("0x10") stands for; none for any other
/// value.
std::optional<qint64> WholeNumber(const QJsonValue& value);
