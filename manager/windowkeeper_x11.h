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
/// So a show waits until the hide has been carried out, and a hide until the show has, each for a
/// second at most. The states are set before the show, for the manager to find, and once more when
/// it manages the window, since it may have been too busy to be waited for. A manager that replaces
/// another may misunderstand what that one has left: "on all desktops" has been taken for the last
/// desktop, where nobody sees the clock.
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
    [[nodiscard]] bool hasLostStates() const;
    void prepareForShow();
    void apply();

    QWindow *m_window; // the parent
    QPointer<QObject> m_context;
    std::function<void()> m_apply;
    bool m_isApplyDue = true; // at the next WM_STATE Normal
};
