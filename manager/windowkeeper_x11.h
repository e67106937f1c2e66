// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qabstractnativeeventfilter.h>
#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>

#include <functional>

class QWindow;

/// Sets again what window managers take away from a window.
///
/// A window manager removes the states of a window that is withdrawn, at some time after the hide.
/// So no show is requested before the hide has been carried out, nor a hide before the show, and
/// the states are set before the show, for the manager to find. They are set once more when it has
/// taken the window into its care: it may have been too busy to be waited for. A manager that
/// replaces another may misunderstand what that one has left: "on all desktops" has been taken for
/// the last desktop, where nobody sees the clock.
class WindowKeeper : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    /// Watches \a window, which owns it. \a apply sets it all, while \a context is there.
    WindowKeeper(QWindow *window, QObject *context, std::function<void()> apply);

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void onVisibleChanged(bool visible);
    void prepareForShow();
    void apply();

    QWindow *m_window; // the parent
    QPointer<QObject> m_context;
    std::function<void()> m_apply;
    bool m_isDue = true; // once the window is in a window manager's care
};
