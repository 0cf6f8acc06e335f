// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Accessibility.h"

#include "QtCompat.h"

#include "Desktop.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>

namespace {

const QString c_strAccessible = u"org.a11y.atspi.Accessible"_s;
const QString c_strTable = u"org.a11y.atspi.Table"_s;
const QString c_strBus = u"org.a11y.Bus"_s;

QDBusConnection ConnectToBus()
{
    const QDBusMessage address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(c_strBus, u"/org/a11y/bus"_s, c_strBus, u"GetAddress"_s));
    const QString strAddress = address.arguments().value(0).toString();

    // As on a desktop whose bus knows its display. Without this property Qt 5.15 calls the accessibility bus before it
    // is connected in about every second start ("Error in contacting registry"), and the program stays hidden from it.
    const QString strProperty = u"AT_SPI_BUS"_s;
    Desktop::Run(u"xprop"_s, {u"-root"_s, u"-f"_s, strProperty, u"8s"_s, u"-set"_s, strProperty, strAddress});
    return QDBusConnection::connectToBus(strAddress, u"vora-accessibility"_s);
}

} // namespace

// Where QtDBus finds it.
static const QDBusArgument& operator>>(const QDBusArgument& argument, AccessibleNode& node)
{
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> node.strService >> path;
    argument.endStructure();
    node.strPath = path.path();
    return argument;
}

Accessibility::Accessibility() : m_bus(ConnectToBus()) {}

/// The answer's first value; none when there is no such object or method.
QVariant Accessibility::Ask(const AccessibleNode& node, const QString& strInterface, const QString& strMethod,
                            const QVariantList& listArgument) const
{
    if (node.strService.isEmpty()) {
        return {};
    }
    QDBusMessage call = QDBusMessage::createMethodCall(node.strService, node.strPath, strInterface, strMethod);
    call.setArguments(listArgument);
    const QDBusMessage reply = m_bus.call(call);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QVariant Accessibility::Property(const AccessibleNode& node, const QString& strInterface, const QString& strName) const
{
    const QVariant value = Ask(node, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {strInterface, strName});
    return value.value<QDBusVariant>().variant();
}

QString Accessibility::Name(const AccessibleNode& node) const
{
    return Property(node, c_strAccessible, u"Name"_s).toString();
}

QString Accessibility::Role(const AccessibleNode& node) const
{
    return Ask(node, c_strAccessible, u"GetRoleName"_s).toString();
}

QRect Accessibility::Extents(const AccessibleNode& node) const
{
    const quint32 dwOfTheScreen = 0;
    return qdbus_cast<QRect>(Ask(node, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {dwOfTheScreen}));
}

bool Accessibility::HasState(const AccessibleNode& node, int iState) const
{
    const auto listState = qdbus_cast<QList<unsigned>>(Ask(node, c_strAccessible, u"GetState"_s));
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

void Accessibility::Hear(const QString& strEvent, const QString& strMember, QObject* pReceiver, const char* pSlot)
{
    const QString strRegistry = u"org.a11y.atspi.Registry"_s;
    Ask({strRegistry, u"/org/a11y/atspi/registry"_s}, strRegistry, u"RegisterEvent"_s, {strEvent});
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

QList<AccessibleNode> Accessibility::Children(const AccessibleNode& node) const
{
    return qdbus_cast<QList<AccessibleNode>>(Ask(node, c_strAccessible, u"GetChildren"_s));
}

QList<AccessibleNode> Accessibility::Applications(const QString& strProgram) const
{
    QList<AccessibleNode> listFound = Children({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s});
    const auto isOther = [&](const AccessibleNode& application) { return Name(application) != strProgram; };
    listFound.erase(std::remove_if(listFound.begin(), listFound.end(), isOther), listFound.end());
    return listFound;
}

bool Accessibility::HasActiveWindow(const QString& strProgram) const
{
    const auto isActive = [this](const AccessibleNode& window) { return HasState(window, 1); }; // ATSPI_STATE_ACTIVE
    const QList<AccessibleNode> listApplication = Applications(strProgram);
    return std::any_of(listApplication.begin(), listApplication.end(), [&](const AccessibleNode& application) {
        const QList<AccessibleNode> listWindow = Children(application);
        return std::any_of(listWindow.begin(), listWindow.end(), isActive);
    });
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
    for (const AccessibleNode& application : Applications(strProgram)) {
        Collect(application, strRole, listFound);
    }
    return listFound;
}

QStringList Accessibility::Names(const QString& strProgram, const QString& strRole) const
{
    QStringList listName;
    for (const AccessibleNode& node : All(strProgram, strRole)) {
        listName.append(Name(node));
    }
    return listName;
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

/// Empty when there is none.
AccessibleNode Accessibility::Table(const QString& strProgram) const
{
    if (!m_hashTable.contains(strProgram)) {
        const std::optional<AccessibleNode> table = Find(strProgram, u"table"_s);
        if (!table) {
            return {};
        }
        m_hashTable.insert(strProgram, *table);
    }
    return m_hashTable.value(strProgram);
}

AccessibleNode Accessibility::CellNode(const QString& strProgram, int iRow, int iColumn) const
{
    return qdbus_cast<AccessibleNode>(Ask(Table(strProgram), c_strTable, u"GetAccessibleAt"_s, {iRow, iColumn}));
}

QList<AccessibleNode> Accessibility::ColumnHeaders(const QString& strProgram) const
{
    QList<AccessibleNode> listHeader;
    for (const AccessibleNode& child : Children(Table(strProgram))) {
        if (Role(child) == QLatin1String("column header")) {
            listHeader.append(child);
        }
    }
    return listHeader;
}

int Accessibility::RowCount(const QString& strProgram) const
{
    return Property(Table(strProgram), c_strTable, u"NRows"_s).toInt();
}
