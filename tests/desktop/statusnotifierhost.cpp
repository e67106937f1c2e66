// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/statusnotifierhost.h"

#include <QtDBus/qdbusargument.h>
#include <QtDBus/qdbusinterface.h>
#include <QtDBus/qdbusmetatype.h>
#include <QtDBus/qdbusreply.h>

using namespace Qt::StringLiterals;

namespace
{

const auto watcherService = u"org.kde.StatusNotifierWatcher"_s;
const auto watcherPath = u"/StatusNotifierWatcher"_s;

struct MenuItem {
    int id = 0;
    QVariantMap properties;
    QList<MenuItem> children;
};

const QDBusArgument &operator>>(const QDBusArgument &argument, MenuItem &item)
{
    argument.beginStructure();
    argument >> item.id >> item.properties;
    argument.beginArray();
    while (!argument.atEnd()) {
        QDBusVariant child;
        argument >> child;
        MenuItem childItem;
        child.variant().value<QDBusArgument>() >> childItem;
        item.children += childItem;
    }
    argument.endArray();
    argument.endStructure();
    return argument; // NOLINT(bugprone-return-const-ref-from-parameter): as Qt asks for it
}

// A key that is underlined is marked in the text.
QString labelOf(const MenuItem &item)
{
    return item.properties.value(u"label"_s).toString().remove(u'_');
}

const MenuItem *find(const MenuItem &item, const QString &text)
{
    for (const MenuItem &child : item.children) {
        if (labelOf(child) == text)
            return &child;
        if (const MenuItem *const found = find(child, text))
            return found;
    }
    return nullptr;
}

const auto menuInterface = u"com.canonical.dbusmenu"_s;

QDBusMessage call(const QDBusConnection &bus, const QString &service, const QString &path,
    const QString &interface, const QString &method, const QVariantList &arguments)
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    return bus.call(message);
}

MenuItem menuOf(const QDBusConnection &bus, const QString &service, const QString &path)
{
    constexpr int root = 0;
    constexpr int allLevels = -1;
    const auto reply
        = call(bus, service, path, menuInterface, u"GetLayout"_s, {root, allLevels, QStringList()});
    MenuItem menu;
    if (reply.arguments().size() == 2)
        reply.arguments().at(1).value<QDBusArgument>() >> menu;
    return menu;
}

} // namespace

StatusNotifierHost::StatusNotifierHost()
    : m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"test host"_s))
{
    m_running = m_bus.registerObject(watcherPath, this,
                    QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties
                        | QDBusConnection::ExportAllSignals)
        && m_bus.registerService(watcherService);
}

StatusNotifierHost::~StatusNotifierHost()
{
    m_bus.unregisterService(watcherService);
    m_bus.unregisterObject(watcherPath);
    QDBusConnection::disconnectFromBus(u"test host"_s);
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString &item)
{
    m_items += item;
    Q_EMIT StatusNotifierItemRegistered(item);
}

QVariant StatusNotifierHost::property(const QString &name) const
{
    const auto reply = call(m_bus, m_items.constLast(), u"/StatusNotifierItem"_s,
        u"org.freedesktop.DBus.Properties"_s, u"Get"_s, {u"org.kde.StatusNotifierItem"_s, name});
    return reply.arguments().value(0).value<QDBusVariant>().variant();
}

QStringList StatusNotifierHost::menuTexts() const
{
    const MenuItem menu
        = menuOf(m_bus, m_items.constLast(), property(u"Menu"_s).value<QDBusObjectPath>().path());
    QStringList texts;
    for (const MenuItem &item : menu.children) {
        if (item.properties.value(u"type"_s) == u"separator"_s)
            texts += u"-"_s;
        else if (item.properties.value(u"visible"_s, true).toBool())
            texts += labelOf(item);
    }
    return texts;
}

bool StatusNotifierHost::choose(const QString &text) const
{
    const QString path = property(u"Menu"_s).value<QDBusObjectPath>().path();
    const MenuItem menu = menuOf(m_bus, m_items.constLast(), path);
    const MenuItem *const item = find(menu, text);
    if (!item)
        return false;
    const auto reply = call(m_bus, m_items.constLast(), path, menuInterface, u"Event"_s,
        {item->id, u"clicked"_s, QVariant::fromValue(QDBusVariant(0)), 0U});
    return reply.type() == QDBusMessage::ReplyMessage;
}
