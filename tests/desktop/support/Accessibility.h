// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QRect>
#include <QStringList>

class QDBusMessage;

/// One object of a program on the accessibility bus: a window, a widget, a cell. It may have gone meanwhile.
struct AccessibleNode
{
    QString strService;
    QString strPath;

    explicit operator bool() const { return !strService.isEmpty(); }
    QString Name() const;
    QRect Extents() const; ///< on the screen; empty when it is hidden
    bool IsChecked() const;
    bool IsVisible() const;
};
Q_DECLARE_METATYPE(AccessibleNode)

/// Reads a program's windows from outside, as a screen reader does. The program must start after this is made, with
/// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1. The table is looked up once, all else is asked anew at each call.
class Accessibility : public QObject
{
    Q_OBJECT

public:
    explicit Accessibility(const QString& strProgram);

    AccessibleNode Cell(int iRow, int iColumn) const; ///< of the program's table
    QList<AccessibleNode> ColumnHeaders() const;      ///< of the table, from the left
    int RowCount() const;                             ///< of the table; 0 when there is none

    /// All objects with a role ("push button", "label", "menu item" ...) and, unless empty, a name.
    QList<AccessibleNode> All(const QString& strRole, const QString& strName = QString()) const;
    AccessibleNode Find(const QString& strRole, const QString& strName = QString()) const; ///< the first of them
    QStringList Names(const QString& strRole) const;

    /// Whether the program takes one of its windows for the one with the keyboard.
    bool HasActiveWindow() const;

    // From now on adds the object's name to what is heard whenever the keyboard comes to another object of any program,
    // entries of menus included, or whenever an object's name changes, as a cell's does with its text. To be called
    // before the program starts: Qt 5 asks for listeners but once.
    void HearFocus();
    void HearNames();

    QStringList m_listHeard;

public slots:
    void OnEvent(const QDBusMessage& message);

private:
    AccessibleNode Table() const;

    QString m_strProgram;
    mutable AccessibleNode m_table;
};
