// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QStringList>

#include <optional>

/// A JSON object whose every failure names the key's path ("printers[1].model") and what was expected there.
/// All functions throw InputError. A key that is missing gives the default; without a default it is required.
class JsonReader
{
public:
    /// The path stands before every key and ends with a "." unless it is empty.
    JsonReader(const QJsonObject& object, const QString& strPath) : m_object(object), m_strPath(strPath) {}

    /// The first line that is not JSON is named; anything but an object is refused.
    static JsonReader FromBytes(const QByteArray& json, const QString& strSource);

    /// Every key must be one of these.
    void AllowOnly(const QStringList& listKey) const;

    bool Has(const QString& strKey) const { return m_object.contains(strKey); }
    QJsonValue Value(const QString& strKey) const { return m_object.value(strKey); }
    QJsonObject Object() const { return m_object; }

    QString Text(const QString& strKey, const std::optional<QString>& strDefault = {}) const;
    bool Flag(const QString& strKey, bool bDefault) const;
    double Number(const QString& strKey, double dMin, double dMax, std::optional<double> dDefault = {}) const;
    /// A whole number, or its hexadecimal text ("0x10").
    qint64 Whole(const QString& strKey, qint64 iMin, qint64 iMax, std::optional<qint64> iDefault = {}) const;
    /// Pairs of hexadecimal digits.
    QByteArray Hex(const QString& strKey, int iMinSize, int iMaxSize) const;
    JsonReader Child(const QString& strKey) const;
    /// A missing list is an empty one.
    QList<JsonReader> Children(const QString& strKey, int iMax) const;
    QList<QJsonValue> Items(const QString& strKey, int iMax) const;

    [[noreturn]] void Fail(const QString& strKey, const QString& strExpected) const;
    [[noreturn]] void FailItem(const QString& strKey, int iIndex, const QString& strExpected) const;

private:
    QJsonObject m_object;
    QString m_strPath;
};

/// The number that a JSON number or a hexadecimal text ("0x10") stands for, when it is a whole one.
std::optional<qint64> WholeNumber(const QJsonValue& value);
