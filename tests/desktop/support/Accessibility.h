// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QList>
#include <QRect>
#include <QString>
#include <QStringList>

#include <optional>

/// One object of a program on the accessibility bus: a window, a widget, a cell.
struct AccessibleNode
{
    QString strService;
    QString strPath;
};

/// Reads a program's windows from outside, as a screen reader does. The program must start after this is made, with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1. The table is looked up once for each program, all else is asked anew at each
/// call.
class Accessibility
{
public:
    Accessibility();

    /// The name of a cell of the program's table; empty when there is none.
    QString Cell(const QString& strProgram, int iRow, int iColumn) const;

    /// A cell of the program's table; none when the table is hidden or has no such cell.
    std::optional<AccessibleNode> CellNode(const QString& strProgram, int iRow, int iColumn) const;

    /// The headers of the table's columns, from the left.
    QList<AccessibleNode> ColumnHeaders(const QString& strProgram) const;

    /// The rows of the program's table; 0 when there is no table.
    int RowCount(const QString& strProgram) const;

    /// The names of all objects with a role ("push button", "label", "menu item" ...).
    QStringList Names(const QString& strProgram, const QString& strRole) const;

    /// The same, of the objects within another, such as a window.
    QStringList NamesWithin(const AccessibleNode& parent, const QString& strRole) const;

    /// The first object with a role and, unless empty, a name.
    std::optional<AccessibleNode> Find(const QString& strProgram, const QString& strRole,
                                       const QString& strName = QString()) const;

    QString Name(const AccessibleNode& node) const;

    /// From now on calls the receiver's slot (const QDBusMessage&, whose service and path are the object's) whenever
    /// the keyboard comes to another object of any program, entries of menus included.
    void HearFocus(QObject* pReceiver, const char* pSlot);

    /// The same whenever an object's name changes, as a cell's does with its text.
    void HearNames(QObject* pReceiver, const char* pSlot);

    /// Whether the program takes one of its windows for the one with the keyboard.
    bool HasActiveWindow(const QString& strProgram) const;

    /// Where it is on the screen.
    QRect Extents(const AccessibleNode& node) const;

    /// Whether a check box is checked.
    bool IsChecked(const AccessibleNode& node) const;
    bool IsVisible(const AccessibleNode& node) const;

private:
    void Hear(const QString& strEvent, const QString& strMember, QObject* pReceiver, const char* pSlot);
    QList<AccessibleNode> Applications(const QString& strProgram) const;
    QList<AccessibleNode> Children(const AccessibleNode& node) const;
    QString Role(const AccessibleNode& node) const;
    bool HasState(const AccessibleNode& node, int iState) const;
    QVariant Property(const AccessibleNode& node, const QString& strInterface, const QString& strName) const;
    void Collect(const AccessibleNode& node, const QString& strRole, QList<AccessibleNode>& listFound) const;
    QList<AccessibleNode> All(const QString& strProgram, const QString& strRole) const;

    std::optional<AccessibleNode> Table(const QString& strProgram) const;

    QDBusConnection m_bus;
    mutable QHash<QString, AccessibleNode> m_hashTable;
};
