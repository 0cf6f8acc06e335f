// SPDX-FileCopyrightText: 2026 The Vora Printer Tool authors
// SPDX-License-Identifier: MIT

#include "Accessibility.h"

#include "Desktop.h"
#include "QtCompat.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>

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

namespace {

const QString c_strAccessible = u"org.a11y.atspi.Accessible"_s;
const QString c_strTable = u"org.a11y.atspi.Table"_s;
const QString c_strBus = u"org.a11y.Bus"_s;
const QString c_strConnection = u"vora-accessibility"_s;

/// The answer's first value; none when there is no such object or method.
QVariant Ask(const AccessibleNode& node, const QString& strInterface, const QString& strMethod,
             const QVariantList& listArgument = {})
{
    if (!node) {
        return {};
    }
    QDBusMessage call = QDBusMessage::createMethodCall(node.strService, node.strPath, strInterface, strMethod);
    call.setArguments(listArgument);
    const QDBusMessage reply = QDBusConnection(c_strConnection).call(call);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments().value(0) : QVariant();
}

QVariant Property(const AccessibleNode& node, const QString& strInterface, const QString& strName)
{
    const QVariant value = Ask(node, u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {strInterface, strName});
    return value.value<QDBusVariant>().variant();
}

QString Role(const AccessibleNode& node)
{
    return Ask(node, c_strAccessible, u"GetRoleName"_s).toString();
}

bool HasState(const AccessibleNode& node, int iState)
{
    const auto listState = qdbus_cast<QList<unsigned>>(Ask(node, c_strAccessible, u"GetState"_s));
    return (listState.value(iState / 32) >> (iState % 32) & 1U) != 0;
}

QList<AccessibleNode> Children(const AccessibleNode& node)
{
    return qdbus_cast<QList<AccessibleNode>>(Ask(node, c_strAccessible, u"GetChildren"_s));
}

/// The windows of all running copies of a program.
QList<AccessibleNode> Windows(const QString& strProgram)
{
    QList<AccessibleNode> listWindow;
    for (const auto& application : Children({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s})) {
        if (application.Name() == strProgram) {
            listWindow += Children(application);
        }
    }
    return listWindow;
}

void Collect(const QList<AccessibleNode>& listNode, const QString& strRole, QList<AccessibleNode>& listFound)
{
    for (const AccessibleNode& node : listNode) {
        const QString strNodeRole = Role(node);
        if (strNodeRole == strRole) {
            listFound.append(node);
        }
        if (strNodeRole != QLatin1String("table")) { // its cells are many, and have calls of their own
            Collect(Children(node), strRole, listFound);
        }
    }
}

/// An event is named by its class, its member and what it tells of.
void Hear(const QString& strEvent, const QString& strMember, Accessibility* pReceiver)
{
    const QString strRegistry = u"org.a11y.atspi.Registry"_s;
    Ask({strRegistry, u"/org/a11y/atspi/registry"_s}, strRegistry, u"RegisterEvent"_s, {strEvent});
    QDBusConnection(c_strConnection)
        .connect(QString(), QString(), u"org.a11y.atspi.Event.Object"_s, strMember,
                 {strEvent.section(QLatin1Char(':'), 2)}, QString(), pReceiver, SLOT(OnEvent(QDBusMessage)));
}

} // namespace

QString AccessibleNode::Name() const
{
    return Property(*this, c_strAccessible, u"Name"_s).toString();
}

QRect AccessibleNode::Extents() const
{
    const quint32 dwOfTheScreen = 0;
    return qdbus_cast<QRect>(Ask(*this, u"org.a11y.atspi.Component"_s, u"GetExtents"_s, {dwOfTheScreen}));
}

bool AccessibleNode::IsChecked() const
{
    return HasState(*this, 4); // ATSPI_STATE_CHECKED
}

bool AccessibleNode::IsVisible() const
{
    return HasState(*this, 30); // ATSPI_STATE_VISIBLE
}

Accessibility::Accessibility(const QString& strProgram) : m_strProgram(strProgram)
{
    const QDBusMessage address = QDBusConnection::sessionBus().call(
        QDBusMessage::createMethodCall(c_strBus, u"/org/a11y/bus"_s, c_strBus, u"GetAddress"_s));
    const QString strAddress = address.arguments().value(0).toString();

    // As on a desktop whose bus knows its display. Without this property Qt 5.15 calls the accessibility bus before it
    // is connected in about every second start ("Error in contacting registry"), and the program stays hidden from it.
    const QString strProperty = u"AT_SPI_BUS"_s;
    Desktop::Run(u"xprop"_s, {u"-root"_s, u"-f"_s, strProperty, u"8s"_s, u"-set"_s, strProperty, strAddress});
    QDBusConnection::connectToBus(strAddress, c_strConnection);
}

void Accessibility::HearFocus()
{
    Hear(u"object:state-changed:focused"_s, u"StateChanged"_s, this);
}

void Accessibility::HearNames()
{
    Hear(u"object:property-change:accessible-name"_s, u"PropertyChange"_s, this);
}

void Accessibility::OnEvent(const QDBusMessage& message)
{
    const QString strName = AccessibleNode{message.service(), message.path()}.Name();
    const bool bLost = message.member() == QLatin1String("StateChanged") && message.arguments().value(1).toInt() == 0;
    if (!bLost && !strName.isEmpty()) {
        m_listHeard.append(strName);
    }
}

bool Accessibility::HasActiveWindow() const
{
    const QList<AccessibleNode> listWindow = Windows(m_strProgram);
    return std::any_of(listWindow.begin(), listWindow.end(),
                       [](const AccessibleNode& window) { return HasState(window, 1); }); // ATSPI_STATE_ACTIVE
}

QList<AccessibleNode> Accessibility::All(const QString& strRole, const QString& strName) const
{
    QList<AccessibleNode> listFound;
    Collect(Windows(m_strProgram), strRole, listFound);
    const auto isOther = [&](const AccessibleNode& node) { return !strName.isEmpty() && node.Name() != strName; };
    listFound.erase(std::remove_if(listFound.begin(), listFound.end(), isOther), listFound.end());
    return listFound;
}

AccessibleNode Accessibility::Find(const QString& strRole, const QString& strName) const
{
    return All(strRole, strName).value(0);
}

QStringList Accessibility::Names(const QString& strRole) const
{
    QStringList listName;
    for (const AccessibleNode& node : All(strRole)) {
        listName.append(node.Name());
    }
    return listName;
}

AccessibleNode Accessibility::Table() const
{
    if (!m_table) {
        m_table = Find(u"table"_s);
    }
    return m_table;
}

AccessibleNode Accessibility::Cell(int iRow, int iColumn) const
{
    return qdbus_cast<AccessibleNode>(Ask(Table(), c_strTable, u"GetAccessibleAt"_s, {iRow, iColumn}));
}

QList<AccessibleNode> Accessibility::ColumnHeaders() const
{
    QList<AccessibleNode> listHeader = Children(Table());
    const auto isOther = [](const AccessibleNode& node) { return Role(node) != QLatin1String("column header"); };
    listHeader.erase(std::remove_if(listHeader.begin(), listHeader.end(), isOther), listHeader.end());
    return listHeader;
}

int Accessibility::RowCount() const
{
    return Property(Table(), c_strTable, u"NRows"_s).toInt();
}
