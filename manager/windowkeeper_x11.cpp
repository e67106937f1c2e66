// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowkeeper_x11.h"

#include "manager/managedwindow_x11.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtGui/qwindow.h>

#include <utility>

namespace
{

bool isNewSurface(const QEvent *event)
{
    return event->type() == QEvent::PlatformSurface
        && static_cast<const QPlatformSurfaceEvent *>(event)->surfaceEventType()
        == QPlatformSurfaceEvent::SurfaceCreated;
}

} // namespace

WindowKeeper::WindowKeeper(QWindow *window, QObject *context, std::function<void()> apply)
    : QObject(window)
    , m_window(window)
    , m_context(context)
    , m_apply(std::move(apply))
{
    // Emitted before the window system is asked to show or hide the window.
    connect(window, &QWindow::visibleChanged, this, &WindowKeeper::onVisibleChanged);
    QCoreApplication::instance()->installNativeEventFilter(this);
    window->installEventFilter(this);
}

bool WindowKeeper::nativeEventFilter(
    const QByteArray &eventType, void *message, [[maybe_unused]] qintptr *result)
{
    if (eventType != "xcb_generic_event_t" || !m_window->handle())
        return false;
    const WId window = m_window->winId();
    if (ManagedWindow::isNewManager(message) || ManagedWindow::isUnmapOf(message, window))
        m_isApplyDue = m_isApplyDue || hasLostStates();
    else if (ManagedWindow::isWmStateChange(message, window) && m_isApplyDue
        && ManagedWindow::wmState(window) == ManagedWindow::WmState::Normal)
        apply();
    return false;
}

bool WindowKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (isNewSurface(event))
        prepareForShow();
    return QObject::eventFilter(watched, event);
}

void WindowKeeper::onVisibleChanged(bool visible)
{
    if (!m_window->handle())
        return; // a new surface comes first
    ManagedWindow::awaitManaged(m_window->winId(), !visible);
    if (visible)
        prepareForShow();
}

// A minimised window keeps its states. One on the taskbar, as its flags tell, has a desktop, where
// it is to stay, unless it has really been withdrawn.
bool WindowKeeper::hasLostStates() const
{
    const auto state = ManagedWindow::wmState(m_window->winId());
    return state == ManagedWindow::WmState::Withdrawn
        || (state == ManagedWindow::WmState::Normal
            && !m_window->flags().testFlag(Qt::WindowSystemMenuHint));
}

void WindowKeeper::prepareForShow()
{
    ManagedWindow::setFrameless(m_window->winId());
    if (!m_window->windowStates().testFlag(Qt::WindowMinimized))
        ManagedWindow::startShown(m_window->winId());
    apply();
    m_isApplyDue = true;
}

void WindowKeeper::apply()
{
    m_isApplyDue = false;
    if (m_context)
        m_apply();
}
