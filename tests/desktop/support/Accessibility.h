// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QRect>
#include <QStringList>
#include <QVariant>

#include <optional>

/// One object of a program on the accessibility bus: a window, a widget, a cell.
struct AccessibleNode
{
    QString strService;
    QString strPath;
};
Q_DECLARE_METATYPE(AccessibleNode)

/// Reads a program's windows from outside, as a screen reader does. The program must start after this is made, with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1. The table is looked up once for each program, all else is asked anew at each
/// call.
class Accessibility
{
public:
    Accessibility();

    /// The name of a cell of the program's table; empty when there is none.
    QString Cell(const QString& strProgram, int iRow, int iColumn) const
    {
        return Name(CellNode(strProgram, iRow, iColumn));
    }

    /// Where the cell is on the screen; empty when the table is hidden or has no such cell.
    QRect CellRect(const QString& strProgram, int iRow, int iColumn) const
    {
        return Extents(CellNode(strProgram, iRow, iColumn));
    }

    /// The headers of the table's columns, from the left.
    QList<AccessibleNode> ColumnHeaders(const QString& strProgram) const;

    /// The rows of the program's table; 0 when there is no table.
    int RowCount(const QString& strProgram) const;

    /// All objects with a role ("push button", "label", "menu item" ...).
    QList<AccessibleNode> All(const QString& strProgram, const QString& strRole) const;

    /// Their names.
    QStringList Names(const QString& strProgram, const QString& strRole) const;

    /// The first object with a role and, unless empty, a name.
    std::optional<AccessibleNode> Find(const QString& strProgram, const QString& strRole,
                                       const QString& strName = QString()) const;

    // Of an object, which may have gone meanwhile.
    QString Name(const AccessibleNode& node) const;
    QRect Extents(const AccessibleNode& node) const; ///< on the screen
    bool IsChecked(const AccessibleNode& node) const;
    bool IsVisible(const AccessibleNode& node) const;

    /// Whether the program takes one of its windows for the one with the keyboard.
    bool HasActiveWindow(const QString& strProgram) const;

    /// From now on calls the receiver's slot (const QDBusMessage&, whose service and path are the object's) whenever
    /// the keyboard comes to another object of any program, entries of menus included.
    void HearFocus(QObject* pReceiver, const char* pSlot);

    /// The same whenever an object's name changes, as a cell's does with its text.
    void HearNames(QObject* pReceiver, const char* pSlot);

private:
    void Hear(const QString& strEvent, const QString& strMember, QObject* pReceiver, const char* pSlot);
    QVariant Ask(const AccessibleNode& node, const QString& strInterface, const QString& strMethod,
                 const QVariantList& listArgument = {}) const;
    QVariant Property(const AccessibleNode& node, const QString& strInterface, const QString& strName) const;
    QString Role(const AccessibleNode& node) const;
    bool HasState(const AccessibleNode& node, int iState) const;
    QList<AccessibleNode> Children(const AccessibleNode& node) const;
    QList<AccessibleNode> Applications(const QString& strProgram) const;
    void Collect(const AccessibleNode& node, const QString& strRole, QList<AccessibleNode>& listFound) const;
    AccessibleNode Table(const QString& strProgram) const;
    AccessibleNode CellNode(const QString& strProgram, int iRow, int iColumn) const;

    QDBusConnection m_bus;
    mutable QHash<QString, AccessibleNode> m_hashTable;
};
