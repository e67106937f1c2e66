// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/accessibleclock.h"

#include <QtGui/qaccessibleobject.h>
#include <QtQml/qqmlcontext.h>
#include <QtQml/qqmlproperty.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto faceName = "clockFace"_L1;

class AccessibleClock : public QAccessibleObject
{
public:
    using QAccessibleObject::QAccessibleObject;

    QAccessibleInterface *parent() const override
    {
        return QAccessible::queryAccessibleInterface(face()->window());
    }
    QAccessibleInterface *child(int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface *) const override { return -1; }

    QRect rect() const override
    {
        const QRectF scene = face()->mapRectToScene(face()->boundingRect());
        return scene.toAlignedRect().translated(face()->window()->position());
    }
    QAccessible::Role role() const override { return QAccessible::StaticText; }
    QAccessible::State state() const override
    {
        QAccessible::State state;
        state.readOnly = true;
        state.invisible = !face()->isVisible() || !face()->window()->isVisible();
        return state;
    }
    QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name ? timeAndDate() : QString();
    }

private:
    QQuickItem *face() const { return static_cast<QQuickItem *>(object()); }

    QString timeAndDate() const
    {
        const auto *manager = face()->window()->property("mgr").value<QObject *>();
        if (!manager)
            return {};
        QStringList parts{manager->property("timeText").toString()};
        if (isTwelveHours())
            parts += manager->property("amPmText").toString();
        parts += manager->property("dateText").toString();
        return parts.join(u' ');
    }

    bool isTwelveHours() const
    {
        const auto *config = face()->window()->property("cfg").value<QObject *>();
        return config && config->property("tweleveHours").toBool();
    }
};

QAccessibleInterface *makeAccessibleClock(const QString &, QObject *object)
{
    auto *const item = qobject_cast<QQuickItem *>(object);
    return item && item->objectName() == faceName && item->window() ? new AccessibleClock(item)
                                                                    : nullptr;
}

} // namespace

void offerAccessibleClock(const QObject &window)
{
    auto *const face = window.findChild<QQuickItem *>(faceName);
    if (!face)
        return;
    // In this order: with the role the item is made accessible, by the factory that came last.
    QAccessible::installFactory(makeAccessibleClock);
    QQmlProperty::write(
        face, u"Accessible.role"_s, QVariant(int(QAccessible::StaticText)), qmlContext(face));
}
