// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Accessibility.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>

namespace {

const QString c_strAccessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString c_strTable = QStringLiteral("org.a11y.atspi.Table");
const QString c_strBusName = QStringLiteral("vora-accessibility");

QDBusConnection ConnectToBus()
{
    const QDBusMessage address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress")));
    return QDBusConnection::connectToBus(address.arguments().value(0).toString(), c_strBusName);
}

AccessibleNode ReadNode(const QDBusArgument& argument)
{
    AccessibleNode node;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> node.strService >> path;
    argument.endStructure();
    node.strPath = path.path();
    return node;
}

} // namespace

Accessibility::Accessibility() : m_bus(ConnectToBus()) {}

QVariant Accessibility::Property(const AccessibleNode& node, const QString& strInterface, const QString& strName) const
{
    QDBusMessage call = QDBusMessage::createMethodCall(
        node.strService, node.strPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << strInterface << strName;
    return m_bus.call(call).arguments().value(0).value<QDBusVariant>().variant();
}

QString Accessibility::Name(const AccessibleNode& node) const
{
    return Property(node, c_strAccessible, QStringLiteral("Name")).toString();
}

QString Accessibility::Role(const AccessibleNode& node) const
{
    const QDBusMessage reply = m_bus.call(
        QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, QStringLiteral("GetRoleName")));
    return reply.arguments().value(0).toString();
}

QRect Accessibility::Extents(const AccessibleNode& node) const
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(node.strService, node.strPath, QStringLiteral("org.a11y.atspi.Component"),
                                       QStringLiteral("GetExtents"));
    call << quint32(0); // of the screen
    const QDBusMessage reply = m_bus.call(call);
    int iX = 0;
    int iY = 0;
    int iWidth = 0;
    int iHeight = 0;
    if (reply.type() == QDBusMessage::ReplyMessage) {
        const auto argument = reply.arguments().value(0).value<QDBusArgument>();
        argument.beginStructure();
        argument >> iX >> iY >> iWidth >> iHeight;
        argument.endStructure();
    }
    return {iX, iY, iWidth, iHeight};
}

bool Accessibility::IsChecked(const AccessibleNode& node) const
{
    const QDBusMessage reply = m_bus.call(
        QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, QStringLiteral("GetState")));
    constexpr unsigned uChecked = 1U << 4U; // ATSPI_STATE_CHECKED
    const QList<unsigned> listState = qdbus_cast<QList<unsigned>>(reply.arguments().value(0));
    return (listState.value(0) & uChecked) != 0;
}

QList<AccessibleNode> Accessibility::Children(const AccessibleNode& node) const
{
    QList<AccessibleNode> listChild;
    const QDBusMessage reply = m_bus.call(
        QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, QStringLiteral("GetChildren")));
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return listChild;
    }
    const auto argument = reply.arguments().value(0).value<QDBusArgument>();
    argument.beginArray();
    while (!argument.atEnd()) {
        listChild.append(ReadNode(argument));
    }
    argument.endArray();
    return listChild;
}

void Accessibility::Collect(const AccessibleNode& node, const QString& strRole, QList<AccessibleNode>& listFound) const
{
    for (const AccessibleNode& child : Children(node)) {
        const QString strChildRole = Role(child);
        if (strChildRole == strRole) {
            listFound.append(child);
        }
        if (strChildRole != QLatin1String("table")) { // its cells are many, and have calls of their own
            Collect(child, strRole, listFound);
        }
    }
}

QList<AccessibleNode> Accessibility::All(const QString& strProgram, const QString& strRole) const
{
    QList<AccessibleNode> listFound;
    const AccessibleNode registry{QStringLiteral("org.a11y.atspi.Registry"),
                                  QStringLiteral("/org/a11y/atspi/accessible/root")};
    for (const AccessibleNode& application : Children(registry)) {
        if (Name(application) == strProgram) {
            Collect(application, strRole, listFound);
        }
    }
    return listFound;
}

std::optional<AccessibleNode> Accessibility::Find(const QString& strProgram, const QString& strRole,
                                                  const QString& strName) const
{
    for (const AccessibleNode& node : All(strProgram, strRole)) {
        if (strName.isEmpty() || Name(node) == strName) {
            return node;
        }
    }
    return std::nullopt;
}

QStringList Accessibility::Names(const QString& strProgram, const QString& strRole) const
{
    QStringList listName;
    for (const AccessibleNode& node : All(strProgram, strRole)) {
        listName.append(Name(node));
    }
    return listName;
}

std::optional<AccessibleNode> Accessibility::Table(const QString& strProgram) const
{
    if (!m_hashTable.contains(strProgram)) {
        const std::optional<AccessibleNode> table = Find(strProgram, QStringLiteral("table"));
        if (!table) {
            return std::nullopt;
        }
        m_hashTable.insert(strProgram, *table);
    }
    return m_hashTable.value(strProgram);
}

std::optional<AccessibleNode> Accessibility::CellNode(const QString& strProgram, int iRow, int iColumn) const
{
    const std::optional<AccessibleNode> table = Table(strProgram);
    if (!table) {
        return std::nullopt;
    }
    QDBusMessage call = QDBusMessage::createMethodCall(table->strService, table->strPath, c_strTable,
                                                       QStringLiteral("GetAccessibleAt"));
    call << iRow << iColumn;
    const QDBusMessage reply = m_bus.call(call);
    if (reply.type() != QDBusMessage::ReplyMessage) {
        return std::nullopt;
    }
    return ReadNode(reply.arguments().value(0).value<QDBusArgument>());
}

QString Accessibility::Cell(const QString& strProgram, int iRow, int iColumn) const
{
    const std::optional<AccessibleNode> cell = CellNode(strProgram, iRow, iColumn);
    return cell ? Name(*cell) : QString();
}

QList<AccessibleNode> Accessibility::ColumnHeaders(const QString& strProgram) const
{
    QList<AccessibleNode> listHeader;
    const std::optional<AccessibleNode> table = Table(strProgram);
    if (table) {
        for (const AccessibleNode& child : Children(*table)) {
            if (Role(child) == QLatin1String("column header")) {
                listHeader.append(child);
            }
        }
    }
    return listHeader;
}

int Accessibility::RowCount(const QString& strProgram) const
{
    const std::optional<AccessibleNode> table = Table(strProgram);
    return table ? Property(*table, c_strTable, QStringLiteral("NRows")).toInt() : 0;
}
