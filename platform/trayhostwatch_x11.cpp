// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/trayhostwatch.h"

#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbusreply.h>
#include <QtDBus/qdbusservicewatcher.h>

using namespace Qt::StringLiterals;

// The names are those of the StatusNotifierItem protocol as all desktops use it.

namespace
{

const QString service = u"org.kde.StatusNotifierWatcher"_s;
const QString path = u"/StatusNotifierWatcher"_s;

constexpr int patienceMs = 500;

// Not by QDBusInterface, which knows only the properties that the service describes.
bool hasHost()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        service, path, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    question << service << u"IsStatusNotifierHostRegistered"_s;
    const QDBusReply<QVariant> answer
        = QDBusConnection::sessionBus().call(question, QDBus::Block, patienceMs);
    return answer.isValid() && answer.value().toBool();
}

} // namespace

TrayHostWatch::TrayHostWatch(QObject *parent)
    : QObject(parent)
    , m_hostKnown(hasHost())
{
    if (m_hostKnown)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    auto *const services
        = new QDBusServiceWatcher(service, bus, QDBusServiceWatcher::WatchForRegistration, this);
    connect(services, &QDBusServiceWatcher::serviceRegistered, this, &TrayHostWatch::lookForHost);
    // The service may be there before its host is.
    bus.connect(
        service, path, service, u"StatusNotifierHostRegistered"_s, this, SLOT(lookForHost()));
}

void TrayHostWatch::lookForHost()
{
    if (m_hostKnown || !hasHost())
        return;
    m_hostKnown = true;
    Q_EMIT hostAppeared();
}
