// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbuscontext.h>

/// The panel of a desktop as tray icons see it on the session bus: one watcher with one host. Names
/// and meanings are those of the StatusNotifierItem protocol and of com.canonical.dbusmenu.
class StatusNotifierHost : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ isRunning)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)

public:
    StatusNotifierHost();
    Q_DISABLE_COPY_MOVE(StatusNotifierHost)
    ~StatusNotifierHost() override;

    bool isRunning() const { return m_running; }
    int protocolVersion() const { return 0; }
    /// The services of the icons, each with the path of its object.
    QStringList items() const { return m_items; }

    /// The texts of the items of the icon's menu that are not hidden; "-" for a separator.
    QStringList menuTexts() const;
    /// Chooses the item with \a text of the icon's menu.
    bool choose(const QString &text) const;
    /// A property of the icon.
    QVariant property(const QString &name) const;

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString &item);

Q_SIGNALS:
    void StatusNotifierItemRegistered(const QString &item);

private:
    QDBusConnection m_bus;
    bool m_running = false;
    QStringList m_items;
};
