// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What logind says of the session, and what the screen saver says of itself.

#include "platform/sessionlock.h"

#include <QtCore/qvariant.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusextratypes.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbuspendingcall.h>
#include <QtDBus/qdbuspendingreply.h>

using namespace Qt::StringLiterals;

namespace
{

// The names are those of logind's own interfaces.
const QString logind = u"org.freedesktop.login1"_s;
const QString sessionInterface = u"org.freedesktop.login1.Session"_s;

// The session of the variable, or else the one that logind finds for the caller.
QDBusMessage askForSession()
{
    QDBusMessage question = QDBusMessage::createMethodCall(
        logind, u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"GetSession"_s);
    question << qEnvironmentVariable("XDG_SESSION_ID", u"auto"_s);
    return question;
}

} // namespace

class SessionLockSource : public QObject
{
    Q_OBJECT

public:
    explicit SessionLockSource(SessionLock *lock);

private Q_SLOTS:
    void onSaverChanged(bool active);
    void onSessionChanged(
        const QString &interface, const QVariantMap &changed, const QStringList &invalidated);

private:
    void watchSaver();
    void watchSession();
    void tell() { m_lock->setLocked(m_isSaverActive || m_isSessionLocked); }

    SessionLock *m_lock; // the owner
    bool m_isSaverActive = false;
    bool m_isSessionLocked = false;
};

SessionLockSource::SessionLockSource(SessionLock *lock)
    : m_lock(lock)
{
    watchSaver();
    watchSession();
}

// Whoever sends it: a screen saver may come later than the clock, and there are two usual paths.
// GNOME has an interface of its own.
void SessionLockSource::watchSaver()
{
    const QString interfaces[] = {u"org.freedesktop.ScreenSaver"_s, u"org.gnome.ScreenSaver"_s};
    for (const QString &interface : interfaces)
        QDBusConnection::sessionBus().connect(
            {}, {}, interface, u"ActiveChanged"_s, this, SLOT(onSaverChanged(bool)));
}

void SessionLockSource::watchSession()
{
    auto *const answer = new QDBusPendingCallWatcher(
        QDBusConnection::systemBus().asyncCall(askForSession()), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, answer] {
        answer->deleteLater();
        const QDBusPendingReply<QDBusObjectPath> session = *answer;
        if (!session.isError())
            QDBusConnection::systemBus().connect(logind, session.value().path(),
                u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, this,
                SLOT(onSessionChanged(QString, QVariantMap, QStringList)));
    });
}

void SessionLockSource::onSaverChanged(bool active)
{
    m_isSaverActive = active;
    tell();
}

void SessionLockSource::onSessionChanged(const QString &interface, const QVariantMap &changed,
    [[maybe_unused]] const QStringList &invalidated)
{
    const auto hint = changed.find(u"LockedHint"_s);
    if (interface != sessionInterface || hint == changed.end())
        return;
    m_isSessionLocked = hint->toBool();
    tell();
}

SessionLock::SessionLock(QObject *parent)
    : QObject(parent)
    , m_source(std::make_unique<SessionLockSource>(this))
{
}

SessionLock::~SessionLock() = default;

#include "sessionlock_linux.moc"
