// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Accessibility.h"

#include "QtCompat.h"

#include "Desktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace {

const QString c_strAccessible = u"org.a11y.atspi.Accessible"_s;
const QString c_strTable = u"org.a11y.atspi.Table"_s;
const QString c_strBusName = u"vora-accessibility"_s;

QDBusConnection ConnectToBus()
{
    const QDBusMessage address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s));
    const QString strAddress = address.arguments().value(0).toString();

    // As on a desktop whose bus knows its display. Without this property Qt 5.15 calls the accessibility bus before it
    // is connected in about every second start ("Error in contacting registry"), and the program stays hidden from it.
    const QString strProperty = u"AT_SPI_BUS"_s;
    Desktop::Run(u"xprop"_s, {u"-root"_s, u"-f"_s, strProperty, u"8s"_s, u"-set"_s, strProperty, strAddress});
    return QDBusConnection::connectToBus(strAddress, c_strBusName);
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
    QDBusMessage call =
        QDBusMessage::createMethodCall(node.strService, node.strPath, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << strInterface << strName;
    return m_bus.call(call).arguments().value(0).value<QDBusVariant>().variant();
}

QString Accessibility::Name(const AccessibleNode& node) const
{
    return Property(node, c_strAccessible, u"Name"_s).toString();
}

QString Accessibility::Role(const AccessibleNode& node) const
{
    const QDBusMessage reply =
        m_bus.call(QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, u"GetRoleName"_s));
    return reply.arguments().value(0).toString();
}

void Accessibility::Hear(const QString& strEvent, const QString& strMember, QObject* pReceiver, const char* pSlot)
{
    QDBusMessage call = QDBusMessage::createMethodCall(u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/registry"_s,
                                                       u"org.a11y.atspi.Registry"_s, u"RegisterEvent"_s);
    call << strEvent;
    m_bus.call(call);
    m_bus.connect(QString(), QString(), u"org.a11y.atspi.Event.Object"_s, strMember,
                  {strEvent.section(QLatin1Char(':'), 2)}, QString(), pReceiver, pSlot);
}

void Accessibility::HearFocus(QObject* pReceiver, const char* pSlot)
{
    Hear(u"object:state-changed:focused"_s, u"StateChanged"_s, pReceiver, pSlot);
}

void Accessibility::HearNames(QObject* pReceiver, const char* pSlot)
{
    Hear(u"object:property-change:accessible-name"_s, u"PropertyChange"_s, pReceiver, pSlot);
}

QRect Accessibility::Extents(const AccessibleNode& node) const
{
    QDBusMessage call =
        QDBusMessage::createMethodCall(node.strService, node.strPath, u"org.a11y.atspi.Component"_s, u"GetExtents"_s);
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

bool Accessibility::HasState(const AccessibleNode& node, int iState) const
{
    const QDBusMessage reply =
        m_bus.call(QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, u"GetState"_s));
    const QList<unsigned> listState = qdbus_cast<QList<unsigned>>(reply.arguments().value(0));
    return (listState.value(iState / 32) >> (iState % 32) & 1U) != 0;
}

bool Accessibility::IsChecked(const AccessibleNode& node) const
{
    return HasState(node, 4); // ATSPI_STATE_CHECKED
}

bool Accessibility::IsVisible(const AccessibleNode& node) const
{
    return HasState(node, 30); // ATSPI_STATE_VISIBLE
}

QList<AccessibleNode> Accessibility::Children(const AccessibleNode& node) const
{
    QList<AccessibleNode> listChild;
    const QDBusMessage reply =
        m_bus.call(QDBusMessage::createMethodCall(node.strService, node.strPath, c_strAccessible, u"GetChildren"_s));
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

QList<AccessibleNode> Accessibility::Applications(const QString& strProgram) const
{
    const AccessibleNode registry{u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s};
    QList<AccessibleNode> listFound;
    for (const AccessibleNode& application : Children(registry)) {
        if (Name(application) == strProgram) {
            listFound.append(application);
        }
    }
    return listFound;
}

QList<AccessibleNode> Accessibility::All(const QString& strProgram, const QString& strRole) const
{
    QList<AccessibleNode> listFound;
    for (const AccessibleNode& application : Applications(strProgram)) {
        Collect(application, strRole, listFound);
    }
    return listFound;
}

bool Accessibility::HasActiveWindow(const QString& strProgram) const
{
    for (const AccessibleNode& application : Applications(strProgram)) {
        for (const AccessibleNode& window : Children(application)) {
            if (HasState(window, 1)) { // ATSPI_STATE_ACTIVE
                return true;
            }
        }
    }
    return false;
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

QStringList Accessibility::NamesWithin(const AccessibleNode& parent, const QString& strRole) const
{
    QList<AccessibleNode> listFound;
    Collect(parent, strRole, listFound);
    QStringList listName;
    for (const AccessibleNode& node : std::as_const(listFound)) {
        listName.append(Name(node));
    }
    return listName;
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
        const std::optional<AccessibleNode> table = Find(strProgram, u"table"_s);
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
    QDBusMessage call =
        QDBusMessage::createMethodCall(table->strService, table->strPath, c_strTable, u"GetAccessibleAt"_s);
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
    return table ? Property(*table, c_strTable, u"NRows"_s).toInt() : 0;
}
