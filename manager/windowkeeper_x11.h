// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qabstractnativeeventfilter.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>
#include <QtCore/qtimer.h>

#include <functional>

class QWindow;

/// Sets again what window managers take away from a window.
///
/// A window manager takes the states away from a window that is withdrawn, at some time after the
/// hide. So they are set before the show, for the manager to find, and again each time that the
/// window comes onto the screen after it: a late manager may carry out a show, the hide and the
/// next show after all three were asked for. One that takes the place of another may not understand
/// what that has left: "on all desktops" has been taken for the last one, where nobody sees the
/// clock.
class WindowKeeper : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Watches \a window, which owns it. \a apply sets it all, while \a context is there.
    WindowKeeper(QWindow *window, QObject *context, std::function<void()> apply);

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool isSeen() const;
    void prepareForShow() const;
    void apply() const;
    void applyForNewManager() const;

    QWindow *m_window; // the parent
    QPointer<QObject> m_context;
    std::function<void()> m_apply;
    bool m_dueWhenSeen = true;
    // Until then a map may be the late answer to a show, and afterwards it is the user's doing:
    // another desktop, what was set in the window manager's menu.
    QDeadlineTimer m_untilSettled;
    QTimer m_newManagerTimer;
};
